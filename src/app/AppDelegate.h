#pragma once

#include "app/ActiveEvents.h"
#include "app/TextPaste.h"
#include "base/Clock.h"
#include "base/FileReader.h"
#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "base/NotificationCenter.h"
#include "base/UserDefaults.h"
#include "capture/ClipboardMonitor.h"
#include "platform/Appearance.h"
#include "platform/EventPoster.h"
#include "platform/HotKeyCenter.h"
#include "platform/LocalEvents.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/Screens.h"
#include "platform/ScriptingService.h"
#include "platform/StatusBar.h"
#include "platform/SystemSound.h"
#include "platform/UnifiedLog.h"
#include "platform/Workspace.h"
#include "services/HotkeyService.h"
#include "services/PasteService.h"
#include "store/ModelContainer.h"
#include "ui/settings/ShortcutRecorderView.h"

#include <QObject>

#include <vector>

class ClipboardHistoryView;
class FloatingPanel;
class QQmlEngine;
class QUrl;
class SettingsWindow;
class ThemeDriver;

/// The application's controller and composition root: it makes every part once and hands each what it needs.
/// It shows and hides the panel, remembers which application was in front before, and pastes what the user
/// picks. Main thread only.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    /// What the desktop does for it: a back end for each port, none of them null.
    struct Ports {
        std::unique_ptr<Appearance> appearance;
        std::unique_ptr<Pasteboard> pasteboard;
        std::unique_ptr<Workspace> workspace;
        std::unique_ptr<HotKeyCenter> hotKeyCenter;
        std::unique_ptr<EventPoster> eventPoster;
        std::unique_ptr<ScriptingService> scripting;
        std::unique_ptr<LocalEvents> localEvents;
        std::unique_ptr<LoginItem> loginItem;
        std::unique_ptr<Screens> screens;
        std::unique_ptr<StatusBar> statusBar;
        std::unique_ptr<SystemSound> systemSound;
        std::unique_ptr<UnifiedLog> unifiedLog;
    };
    /// Where it keeps what it keeps.
    struct Paths {
        QString store = ModelContainer::defaultFilePath();
        QString preferences = UserDefaults::defaultFilePath();
        QString log = PasteService::defaultLogFilePath();
    };
    /// The queue must outlive it.
    AppDelegate(MainQueue &queue, Ports ports, const Paths &paths);
    ~AppDelegate() override;

    /// Opens the store and puts every part to work.
    void applicationDidFinishLaunching();
    /// Stops capture and releases the hot key; what could not be saved before is tried once more.
    void applicationWillTerminate();

    /// Hides the panel when it is shown, shows it when it is hidden.
    void togglePanel();

    /// The panel, for whoever looks at the program from outside; null before launch.
    FloatingPanel *panel() const { return m_panel.get(); }
    /// The content of the panel; null without a store.
    ClipboardHistoryView *historyView() const { return m_historyView.get(); }
    /// The window of the settings; null when there is none.
    SettingsWindow *settingsWindow() const { return m_settingsWindow.get(); }
    NotificationCenter &notifications() { return m_notifications; }

    /// Opens a page about the program; the user's browser does unless somebody else wants to.
    std::function<void(const QUrl &)> openPage;

private:
    void setupModelContainer();
    void setupStatusItem();
    void setupPanel();
    void startClipboardMonitoring();
    void setupHotkey();
    void requestAccessibilityIfNeeded();
    void addObservers();

    QQmlEngine &engine();
    KeyCombo loadKeyCombo() const;
    void registerHotkey();
    void showPanel();
    void scheduleFocusRetries();
    void handleItemSelected(const ClipboardItem &item);
    void activateAndPaste(const std::shared_ptr<RunningApplication> &target);
    void openSettings();
    void makeSettingsWindow();
    void settingsWindowClosed();
    void recordingChanged(ShortcutRecorderView::Recording recording);
    void clearAllHistory();
    void saveAgainLater();

    SystemClock m_clock;
    MainQueue &m_queue;
    ThreadedFileReader m_fileReader;
    NotificationCenter m_notifications;
    QString m_storePath;
    UserDefaults m_defaults;
    Ports m_ports;
    PasteService m_pasteService;

    std::unique_ptr<StatusItem> m_statusItem;
    std::unique_ptr<ModelContainer> m_modelContainer;
    TextPaste m_textPaste;
    /// What the history view hears: not the keys that are pressed in the settings.
    ActiveEvents m_panelEvents;
    std::unique_ptr<ClipboardHistoryView> m_historyView;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<ThemeDriver> m_themeDriver;
    std::unique_ptr<FloatingPanel> m_panel;
    std::unique_ptr<ClipboardMonitor> m_clipboardMonitor;
    std::unique_ptr<HotkeyService> m_hotkeyService;
    std::unique_ptr<SettingsWindow> m_settingsWindow;
    /// The hot key is not there while another one is recorded.
    bool m_isHotkeySuspended = false;
    std::shared_ptr<RunningApplication> m_previousApp;
    std::vector<std::unique_ptr<NotificationCenter::Observer>> m_observers;
    bool m_isSaveScheduled = false;
    Lifetime m_lifetime;
};
