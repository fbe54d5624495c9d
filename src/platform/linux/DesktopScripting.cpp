#include "platform/linux/DesktopScripting.h"

#include "platform/linux/AccessibilityKeys.h"
#include "platform/linux/BusConnection.h"
#include "platform/linux/KeystrokeService.h"
#include "platform/linux/RemoteDesktopPortal.h"
#include "platform/linux/SessionBus.h"

namespace platform
{
namespace
{

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
        // The portal wants to know the program before anything else is said on its connection.
        if (const QByteArray address = sessionbus::address(); !address.isEmpty())
            m_portalBus = BusConnection::open(address);
        std::vector<std::unique_ptr<KeyPresser>> list;
        list.push_back(std::make_unique<RemoteDesktopPortal>(
            m_portalBus ? m_portalBus->get() : QDBusConnection(QString()), m_queue,
            RestoreToken(RestoreToken::defaultFilePath())));
        list.push_back(
            std::make_unique<AccessibilityKeys>(sessionbus::connection(), m_queue, std::move(canPressKeys)));
        return list;
    }

    EventLoopQueue m_queue;
    std::unique_ptr<BusConnection> m_portalBus; ///< null without a session bus
    KeystrokeService m_service;
};

} // namespace

std::unique_ptr<ScriptingService> makeDesktopScripting(
    const Workspace &workspace, std::function<bool()> canPressKeys)
{
    return std::make_unique<DesktopScripting>(workspace, std::move(canPressKeys));
}

} // namespace platform
