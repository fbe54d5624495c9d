#include "platform/linux/DesktopScripting.h"

#include "platform/linux/AccessibilityKeys.h"
#include "platform/linux/KeystrokeService.h"
#include "platform/linux/RemoteDesktopPortal.h"
#include "platform/linux/SessionBus.h"

namespace platform
{
namespace
{

/// The process's own connection to the session bus; one that is not connected when there is no bus, so that
/// none is started for the purpose.
QDBusConnection sessionBus()
{
    return sessionbus::address().isEmpty() ? QDBusConnection(QString()) : QDBusConnection::sessionBus();
}

class DesktopScripting : public ScriptingService
{
public:
    DesktopScripting(const Workspace &workspace, std::function<bool()> canPressKeys)
        : m_service(workspace, m_queue, pressers(std::move(canPressKeys)))
    {
    }

    std::unique_ptr<Script> compile(const QString &source) override { return m_service.compile(source); }

private:
    std::vector<std::unique_ptr<KeyPresser>> pressers(std::function<bool()> canPressKeys)
    {
        const QDBusConnection bus = sessionBus();
        std::vector<std::unique_ptr<KeyPresser>> list;
        list.push_back(std::make_unique<RemoteDesktopPortal>(
            bus, m_queue, RestoreToken(RestoreToken::defaultFilePath())));
        list.push_back(std::make_unique<AccessibilityKeys>(bus, m_queue, std::move(canPressKeys)));
        return list;
    }

    EventLoopQueue m_queue;
    KeystrokeService m_service;
};

} // namespace

std::unique_ptr<ScriptingService> makeDesktopScripting(
    const Workspace &workspace, std::function<bool()> canPressKeys)
{
    return std::make_unique<DesktopScripting>(workspace, std::move(canPressKeys));
}

} // namespace platform
