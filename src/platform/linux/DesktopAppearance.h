#pragma once

#include "base/MainQueue.h"
#include "platform/Appearance.h"

#include <QObject>

#include <memory>

class AppearancePortal;
class QDBusConnection;

/// The look as the desktop portal tells it, and where that has no preference for dark or light, as the
/// toolkit's palette is: dark when its windows are.
class DesktopAppearance : public QObject, public Appearance
{
public:
    /// On a connection to the session bus, which need not be connected. There is a QGuiApplication; it and
    /// the queue must outlive it.
    DesktopAppearance(const QDBusConnection &connection, MainQueue &queue);
    ~DesktopAppearance() override;

    ColorScheme colorScheme() const override { return m_colorScheme; }
    bool hasAnimations() const override { return m_hasAnimations; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();

    std::unique_ptr<AppearancePortal> m_portal;
    ColorScheme m_colorScheme;
    bool m_hasAnimations = true;
};

namespace platform
{

/// On the process's own connection to the session bus, if there is a bus. The queue must outlive it. Never
/// null.
std::unique_ptr<Appearance> makeDesktopAppearance(MainQueue &queue);

} // namespace platform
