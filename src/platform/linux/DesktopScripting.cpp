#include "platform/linux/DesktopScripting.h"

#include "platform/linux/AccessibilityKeys.h"
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
        const QDBusConnection bus = sessionbus::connection();
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
