#pragma once

#include "base/Clock.h"
#include "base/FileReader.h"
#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "base/NotificationCenter.h"
#include "base/UserDefaults.h"
#include "capture/ClipboardMonitor.h"
#include "platform/PlatformLoader.h"
#include "services/HotkeyService.h"
#include "services/PasteService.h"
#include "store/ModelContainer.h"

#include <QObject>

#include <vector>

class ClipboardHistoryView;
class FloatingPanel;

/// The application's controller and composition root: it makes every part once and hands each what it needs.
/// It shows and hides the panel, remembers which application was in front before, and pastes what the user
/// picks. Main thread only.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    AppDelegate();
    ~AppDelegate() override;

    /// Opens the store and puts every part to work.
    void applicationDidFinishLaunching();
    /// Stops capture and releases the hot key; what could not be saved before is tried once more.
    void applicationWillTerminate();

    /// Hides the panel when it is shown, shows it when it is hidden.
    void togglePanel();

private:
    void setupModelContainer();
    void setupStatusItem();
    void setupPanel();
    void startClipboardMonitoring();
    void setupHotkey();
    void requestAccessibilityIfNeeded();
    void addObservers();

    KeyCombo loadKeyCombo() const;
    void showPanel();
    void scheduleFocusRetries();
    void handleItemSelected(const ClipboardItem &item);
    void activateAndPaste(const std::shared_ptr<RunningApplication> &target);
    void clearAllHistory();
    void saveAgainLater();

    SystemClock m_clock;
    EventLoopQueue m_queue;
    ThreadedFileReader m_fileReader{m_queue};
    NotificationCenter m_notifications;
    UserDefaults m_defaults;

    std::unique_ptr<Pasteboard> m_pasteboard;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<HotKeyCenter> m_hotKeyCenter;
    std::unique_ptr<EventPoster> m_eventPoster;
    std::unique_ptr<ScriptingService> m_scripting;
    std::unique_ptr<Screens> m_screens;
    std::unique_ptr<StatusBar> m_statusBar;
    std::unique_ptr<UnifiedLog> m_unifiedLog;
    PasteService m_pasteService;

    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<ModelContainer> m_modelContainer;
    std::unique_ptr<ClipboardHistoryView> m_historyView;
    std::unique_ptr<FloatingPanel> m_panel;
    std::unique_ptr<ClipboardMonitor> m_clipboardMonitor;
    std::unique_ptr<HotkeyService> m_hotkeyService;
    std::shared_ptr<RunningApplication> m_previousApp;
    std::vector<std::unique_ptr<NotificationCenter::Observer>> m_observers;
    bool m_isSaveScheduled = false;
    Lifetime m_lifetime;
};
