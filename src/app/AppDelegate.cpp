#include "app/AppDelegate.h"

#include "app/FloatingPanel.h"
#include "app/MemoryPolicy.h"
#include "app/SettingsWindow.h"
#include "base/Console.h"
#include "base/Notifications.h"
#include "base/Text.h"
#include "store/Seeding.h"
#include "ui/history/ClipboardHistoryView.h"
#include "ui/history/HistoryModule.h"
#include "ui/history/RowPictures.h"
#include "ui/settings/SettingsModule.h"
#include "ui/style/SymbolProvider.h"
#include "ui/style/Symbols.h"
#include "ui/style/ThemeDriver.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <array>

namespace
{

/// What a target needs between becoming active and taking a key.
constexpr std::chrono::milliseconds PasteDelay{150};
/// A switch to this application may take a moment; until then a claim for the focus is lost.
constexpr std::array FocusRetries{
    std::chrono::milliseconds(50), std::chrono::milliseconds(150), std::chrono::milliseconds(300)};
/// The switch to this application comes first.
constexpr std::chrono::milliseconds SettingsDelay{100};
/// After a failed save, when nothing else leads to one: a disk may have got room again.
constexpr std::chrono::milliseconds SaveRetryDelay{5000};

constexpr qint64 LoggedContentLength = 50;

QString nameOf(const std::shared_ptr<RunningApplication> &application)
{
    return (application ? application->localizedName() : std::nullopt).value_or(QStringLiteral("nil"));
}

} // namespace

AppDelegate::AppDelegate(MainQueue &queue, Ports ports, const Paths &paths)
    : m_queue(queue)
    , m_fileReader(queue)
    , m_storePath(paths.store)
    , m_defaults(paths.preferences)
    , m_ports(std::move(ports))
    , m_pasteService(*m_ports.eventPoster, *m_ports.scripting, *m_ports.unifiedLog, m_clock, paths.log)
    , m_textPaste(*m_ports.pasteboard)
    , m_panelEvents(
          *m_ports.localEvents, [this] { return !m_settingsWindow || !m_settingsWindow->isActive(); })
{
    openPage = [](const QUrl &page) {
        if (!page.isValid() || !QDesktopServices::openUrl(page))
            consoleLine(QStringLiteral("[Larkspool] The page could not be opened"));
    };
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    m_defaults.watch();
    setupModelContainer();
    setupStatusItem();
    setupPanel();
    startClipboardMonitoring();
    setupHotkey();
    requestAccessibilityIfNeeded();
    addObservers();
}

void AppDelegate::applicationWillTerminate()
{
    m_clipboardMonitor.reset();
    if (m_hotkeyService)
        m_hotkeyService->unregister();
    if (m_modelContainer)
        (void)m_modelContainer->mainContext().save();
}

void AppDelegate::setupModelContainer()
{
    auto container = ModelContainer::open(m_storePath);
    if (!container) {
        consoleLine(QStringLiteral("Failed to create ModelContainer: ") + container.error().description);
        return;
    }
    m_modelContainer = std::move(container).value();
    m_modelContainer->mainContext().onSaveFailed = [this] { saveAgainLater(); };
    seedDefaultCategories(m_modelContainer.get());
    seedDefaultTemplates(m_modelContainer.get());
}

void AppDelegate::setupStatusItem()
{
    const auto image = [](int pixels, const QColor &color) {
        return symbol::image(QStringLiteral("clipboard.fill"), QSize(pixels, pixels), color);
    };
    m_statusItem =
        m_ports.statusBar->statusItem({QStringLiteral("Larkspool"), image}, [this] { togglePanel(); });
}

void AppDelegate::setupPanel()
{
    m_panel = std::make_unique<FloatingPanel>(m_queue);
    if (!m_modelContainer)
        return;
    m_historyView = std::make_unique<ClipboardHistoryView>(
        ClipboardHistoryView::Surroundings{.modelContext = m_modelContainer->mainContext(),
            .pasteboard = *m_ports.pasteboard,
            .notifications = m_notifications,
            .defaults = m_defaults,
            .events = m_panelEvents,
            .sound = *m_ports.systemSound,
            .queue = m_queue,
            .clock = m_clock,
            .caseRule = text::caseRule(QLocale())},
        [this](const std::shared_ptr<ClipboardItem> &item) { handleItemSelected(*item); });
    installRowPictures(engine(), *m_historyView->filteredItems(), m_storePath);
    QQmlComponent content(
        &engine(), QUrl(QStringLiteral("qrc:/qt/qml/Larkspool/History/ClipboardHistory.qml")));
    std::unique_ptr<QQuickItem> rootView;
    // The toolkit would not survive the attempt otherwise.
    if (content.isReady()) {
        rootView.reset(qobject_cast<QQuickItem *>(content.createWithInitialProperties(
            {{QStringLiteral("view"), QVariant::fromValue(m_historyView.get())}})));
    }
    if (!rootView) {
        consoleLine(QStringLiteral("[Larkspool] The panel has no content: ") + content.errorString());
        return;
    }
    auto hostingView = std::make_unique<TransparentHostingView>(m_queue);
    hostingView->setRootView(std::move(rootView));
    m_panel->setContentView(std::move(hostingView));
    m_historyView->appear();
}

void AppDelegate::startClipboardMonitoring()
{
    if (!m_modelContainer)
        return;
    m_clipboardMonitor = std::make_unique<ClipboardMonitor>(
        *m_modelContainer, *m_ports.pasteboard, *m_ports.workspace, m_fileReader, m_queue, m_clock);
    m_clipboardMonitor->startMonitoring();
}

void AppDelegate::setupHotkey()
{
    m_hotkeyService = std::make_unique<HotkeyService>(*m_ports.hotKeyCenter);
    registerHotkey();
}

void AppDelegate::registerHotkey()
{
    m_isHotkeySuspended = false;
    m_hotkeyService->registerHotkey(loadKeyCombo(), [this] { togglePanel(); });
}

void AppDelegate::requestAccessibilityIfNeeded()
{
    if (m_ports.eventPoster->isProcessTrustedWithPrompt())
        return;
    consoleLine(
        QStringLiteral("[Larkspool] Accessibility permission not granted — paste simulation won't work "
                       "until enabled in System Settings → Privacy → Accessibility"));
}

void AppDelegate::addObservers()
{
    m_observers.push_back(
        m_notifications.addObserver(notification::openSettings(), [this] { openSettings(); }));
    m_observers.push_back(
        m_notifications.addObserver(notification::reloadHotkey(), [this] { registerHotkey(); }));
    m_observers.push_back(
        m_notifications.addObserver(notification::clearAllHistory(), [this] { clearAllHistory(); }));
}

QQmlEngine &AppDelegate::engine()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlEngine>();
        // What the panel's Qt.quit() comes to; nobody else listens.
        QObject::connect(m_engine.get(), &QQmlEngine::quit, qApp, &QCoreApplication::quit);
        registerHistoryModule();
        registerSettingsModule();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        installSymbols(*m_engine);
        m_themeDriver = std::make_unique<ThemeDriver>(*m_engine, *m_ports.appearance);
    }
    return *m_engine;
}

KeyCombo AppDelegate::loadKeyCombo() const
{
    const auto stored = m_defaults.data(preference::HotkeyCombo);
    const auto combo = stored ? KeyCombo::decoded(*stored) : std::nullopt;
    return combo.value_or(KeyCombo::standard());
}

void AppDelegate::togglePanel()
{
    if (m_panel->isVisible())
        m_panel->orderOut();
    else
        showPanel();
}

void AppDelegate::showPanel()
{
    m_previousApp = m_ports.workspace->frontmostApplication();
    if (const auto frame = m_ports.screens->visibleFrame())
        m_panel->centerIn(*frame);
    m_notifications.post(notification::panelWillShow());
    m_panel->makeKeyAndOrderFront();
    scheduleFocusRetries();
}

void AppDelegate::scheduleFocusRetries()
{
    for (const auto delay : FocusRetries) {
        m_queue.asyncAfter(delay, m_lifetime.guard([this] {
            if (m_panel->isVisible())
                m_panel->makeContentFirstResponder();
        }));
    }
}

void AppDelegate::handleItemSelected(const ClipboardItem &item)
{
    m_pasteService.log(
        QStringLiteral("handleItemSelected: ") + text::prefix(item.contentHead(), LoggedContentLength));
    item.copyToPasteboard(*m_ports.pasteboard);
    m_pasteService.log(QStringLiteral("Copied to pasteboard"));
    m_panel->orderOut();
    const qint64 processIdentifier = m_previousApp ? m_previousApp->processIdentifier() : -1;
    m_pasteService.log(
        QStringLiteral("Previous app: %1, pid: %2").arg(nameOf(m_previousApp)).arg(processIdentifier));
    if (m_previousApp)
        activateAndPaste(m_previousApp);
    else
        m_pasteService.log(QStringLiteral("No previous app to paste into"));
}

void AppDelegate::activateAndPaste(const std::shared_ptr<RunningApplication> &target)
{
    target->activate();
    m_queue.asyncAfter(PasteDelay, m_lifetime.guard([this, target] {
        m_pasteService.log(QStringLiteral("Target active: %1, frontmost: %2")
                               .arg(target->isActive() ? QStringLiteral("true") : QStringLiteral("false"),
                                   nameOf(m_ports.workspace->frontmostApplication())));
        m_pasteService.simulatePaste();
    }));
}

void AppDelegate::openSettings()
{
    consoleLine(QStringLiteral("[Larkspool] openSettings called"));
    m_panel->orderOut();
    if (!m_settingsWindow || !m_settingsWindow->isVisible())
        makeSettingsWindow();
    m_queue.asyncAfter(SettingsDelay, m_lifetime.guard([this] {
        consoleLine(QStringLiteral("[Larkspool] Showing settings window"));
        if (m_settingsWindow)
            m_settingsWindow->makeKeyAndOrderFront();
    }));
}

void AppDelegate::makeSettingsWindow()
{
    auto view = std::make_unique<SettingsView>(SettingsView::Surroundings{.defaults = m_defaults,
        .notifications = m_notifications,
        .events = *m_ports.localEvents,
        .loginItem = *m_ports.loginItem,
        .modelContext = m_modelContainer ? &m_modelContainer->mainContext() : nullptr,
        .onRecording = [this](auto recording) { recordingChanged(recording); },
        .openPage = openPage});
    m_settingsWindow = std::make_unique<SettingsWindow>(engine(), std::move(view));
    connect(m_settingsWindow.get(), &SettingsWindow::closed, this, &AppDelegate::settingsWindowClosed);
    if (const auto frame = m_ports.screens->visibleFrame())
        m_settingsWindow->centerIn(*frame);
}

void AppDelegate::settingsWindowClosed()
{
    // It is on the stack now. What it has needed is given back: it is made anew the next time.
    m_queue.async(m_lifetime.guard([this, closed = m_settingsWindow.get()] {
        if (m_settingsWindow.get() != closed || closed->isVisible())
            return;
        m_settingsWindow.reset();
        m_engine->collectGarbage();
        m_engine->trimComponentCache();
        giveFreeMemoryBack();
    }));
}

void AppDelegate::recordingChanged(ShortcutRecorderView::Recording recording)
{
    if (recording == ShortcutRecorderView::Recording::Begins) {
        m_isHotkeySuspended = true;
        m_hotkeyService->unregister();
    } else if (m_isHotkeySuspended) {
        registerHotkey();
    }
}

void AppDelegate::clearAllHistory()
{
    if (!m_modelContainer)
        return;
    ModelContext &context = m_modelContainer->mainContext();
    const auto items = context.fetch<ClipboardItem>();
    for (const auto &item : items)
        context.remove(item);
    (void)context.save();
    consoleLine(QStringLiteral("[Larkspool] Cleared all history (%1 items)").arg(items.size()));
}

void AppDelegate::saveAgainLater()
{
    if (m_isSaveScheduled)
        return;
    m_isSaveScheduled = true;
    m_queue.asyncAfter(SaveRetryDelay, m_lifetime.guard([this] {
        m_isSaveScheduled = false;
        if (m_modelContainer)
            (void)m_modelContainer->mainContext().save();
    }));
}
