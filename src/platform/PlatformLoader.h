#pragma once

#include "base/MainQueue.h"
#include "platform/Appearance.h"
#include "platform/EventPoster.h"
#include "platform/HotKeyCenter.h"
#include "platform/LocalEvents.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/ScriptingService.h"
#include "platform/SingleInstance.h"
#include "platform/StatusBar.h"
#include "platform/SystemSound.h"
#include "platform/UnifiedLog.h"
#include "platform/Workspace.h"

#include <memory>

/// Chooses a back end for each port by trying what the session really offers, never by its name. Each loader
/// always returns something: where nothing can be had, a back end that does nothing and has printed the
/// reason as one line.
namespace platform
{

std::unique_ptr<Pasteboard> loadPasteboard();
std::unique_ptr<Workspace> loadWorkspace();
std::unique_ptr<HotKeyCenter> loadHotKeyCenter(MainQueue &queue);
std::unique_ptr<EventPoster> loadEventPoster(MainQueue &queue, const Workspace &workspace);
std::unique_ptr<ScriptingService> loadScriptingService(const Workspace &workspace);
std::unique_ptr<SingleInstance> loadSingleInstance();
std::unique_ptr<StatusBar> loadStatusBar();
/// Needs a QGuiApplication, which must outlive it.
std::unique_ptr<LocalEvents> loadLocalEvents();
/// Needs a QCoreApplication. Prints nothing: a login item that cannot be had says so when it is asked.
std::unique_ptr<LoginItem> loadLoginItem(MainQueue &queue);
std::unique_ptr<Screens> loadScreens();
std::unique_ptr<UnifiedLog> loadUnifiedLog();
std::unique_ptr<Appearance> loadAppearance(MainQueue &queue);
std::unique_ptr<SystemSound> loadSystemSound();

} // namespace platform
