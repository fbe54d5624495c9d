#include "platform/PlatformLoader.h"

#include "platform/null/NullBackends.h"

namespace platform
{

std::unique_ptr<Pasteboard> loadPasteboard(MainQueue &)
{
    return std::make_unique<NullPasteboard>();
}

std::unique_ptr<Workspace> loadWorkspace()
{
    return std::make_unique<NullWorkspace>();
}

std::unique_ptr<HotKeyCenter> loadHotKeyCenter()
{
    return std::make_unique<NullHotKeyCenter>();
}

std::unique_ptr<EventPoster> loadEventPoster(MainQueue &, Workspace &, Pasteboard &)
{
    return std::make_unique<NullEventPoster>();
}

std::unique_ptr<ScriptingService> loadScriptingService()
{
    return std::make_unique<NullScriptingService>(
        QStringLiteral("no service for pressing keys on this desktop"));
}

std::unique_ptr<Screens> loadScreens()
{
    return std::make_unique<NullScreens>();
}

std::unique_ptr<UnifiedLog> loadUnifiedLog()
{
    return std::make_unique<NullUnifiedLog>();
}

} // namespace platform
