#include "platform/linux/DesktopAppearance.h"

#include "platform/linux/AppearancePortal.h"
#include "platform/linux/SessionBus.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace
{

Appearance::ColorScheme paletteScheme()
{
    const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
    return isDark ? Appearance::ColorScheme::Dark : Appearance::ColorScheme::Light;
}

} // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection &connection, MainQueue &queue)
    : m_portal(std::make_unique<AppearancePortal>(connection, queue))
    , m_colorScheme(paletteScheme())
{
    // The toolkit has no signal for its palette.
    QCoreApplication::instance()->installEventFilter(this);
    m_portal->onChanged = [this] { update(); };
    m_portal->follow();
}

DesktopAppearance::~DesktopAppearance() = default;

bool DesktopAppearance::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        update();
    return false;
}

void DesktopAppearance::update()
{
    const AppearanceSettings &settings = m_portal->settings();
    const ColorScheme colorScheme = settings.colorScheme().value_or(paletteScheme());
    const bool hasAnimations = settings.hasAnimations();
    if (colorScheme == m_colorScheme && hasAnimations == m_hasAnimations)
        return;
    m_colorScheme = colorScheme;
    m_hasAnimations = hasAnimations;
    if (onChanged)
        onChanged();
}

std::unique_ptr<Appearance> platform::makeDesktopAppearance(MainQueue &queue)
{
    return std::make_unique<DesktopAppearance>(sessionbus::connection(), queue);
}
