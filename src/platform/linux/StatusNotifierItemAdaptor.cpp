#include "platform/linux/StatusNotifierItemAdaptor.h"

#include "platform/linux/ActivationToken.h"
#include "platform/linux/StatusItemColor.h"

namespace
{

/// What panels are high, so that few have to scale.
constexpr int PixmapSizes[] = {16, 22, 24, 32, 48, 64};

} // namespace

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(
    QObject *parent, StatusItemButton button, std::function<void()> action)
    : QDBusAbstractAdaptor(parent)
    , m_button(std::move(button))
    , m_action(std::move(action))
{
    registerStatusNotifierTypes();
}

StatusNotifierPixmaps StatusNotifierItemAdaptor::iconPixmap() const
{
    StatusNotifierPixmaps pixmaps;
    for (const int size : PixmapSizes) {
        const QImage image = m_button.image(size, StatusItemColor);
        if (!image.isNull())
            pixmaps.append(StatusNotifierPixmap::of(image));
    }
    return pixmaps;
}

void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString &token)
{
    offerActivationToken(token);
}

void StatusNotifierItemAdaptor::Activate(int, int)
{
    act();
}

void StatusNotifierItemAdaptor::SecondaryActivate(int, int)
{
    act();
}

void StatusNotifierItemAdaptor::ContextMenu(int, int)
{
    act();
}

void StatusNotifierItemAdaptor::Scroll(int, const QString &) {}

/// Later: the tray gets its answer first, and the action may destroy the item.
void StatusNotifierItemAdaptor::act()
{
    QMetaObject::invokeMethod(
        this,
        [action = m_action] {
            action();
            offerActivationToken({});
        },
        Qt::QueuedConnection);
}
