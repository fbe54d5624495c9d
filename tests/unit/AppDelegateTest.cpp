#include "app/AppDelegate.h"

#include "app/FloatingPanel.h"
#include "app/SettingsWindow.h"
#include "base/Notifications.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeEventPoster.h"
#include "fakes/FakeHotKeyCenter.h"
#include "fakes/FakeLocalEvents.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeScriptingService.h"
#include "fakes/FakeStatusBar.h"
#include "fakes/FakeSystemSound.h"
#include "fakes/FakeUnifiedLog.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "support/CapturedConsole.h"
#include "support/Waiting.h"
#include "ui/history/ClipboardHistoryView.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{

constexpr quint16 V = 9;
constexpr quint16 B = 11;
constexpr quint16 ReturnCode = 36;
constexpr quint32 CommandShift = CommandKey | ShiftKey;

/// The program on a desktop in memory.
class Controller : public ::testing::Test
{
protected:
    /// A port's fake, which the program owns and the test looks at.
    template<class Fake, class Port>
    Fake *give(std::unique_ptr<Port> &port)
    {
        auto fake = std::make_unique<Fake>();
        Fake *const raw = fake.get();
        port = std::move(fake);
        return raw;
    }

    void launch()
    {
        AppDelegate::Ports ports;
        appearance = give<FakeAppearance>(ports.appearance);
        pasteboard = give<FakePasteboard>(ports.pasteboard);
        workspace = give<FakeWorkspace>(ports.workspace);
        hotKeys = give<FakeHotKeyCenter>(ports.hotKeyCenter);
        poster = give<FakeEventPoster>(ports.eventPoster);
        poster->isTrusted = isTrusted;
        scripting = give<FakeScriptingService>(ports.scripting);
        events = give<FakeLocalEvents>(ports.localEvents);
        loginItem = give<FakeLoginItem>(ports.loginItem);
        give<FakeSystemSound>(ports.systemSound);
        screens = give<FakeScreens>(ports.screens);
        statusBar = give<FakeStatusBar>(ports.statusBar);
        ports.unifiedLog = std::make_unique<FakeUnifiedLog>();
        if (elsewhere)
            hotKeys->takeElsewhere(V, CommandShift);
        delegate = std::make_unique<AppDelegate>(queue, std::move(ports),
            AppDelegate::Paths{storePath.isEmpty() ? path("larkspool/larkspool.sqlite") : storePath,
                path("larkspool.conf"), path("larkspool_debug.log")});
        delegate->applicationDidFinishLaunching();
    }

    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    void writePreferences(const QByteArray &text) const
    {
        QFile file(path("larkspool.conf"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + text + '\n');
    }
    QStringList log() const
    {
        QFile file(path("larkspool_debug.log"));
        QStringList lines;
        if (file.open(QIODevice::ReadOnly)) {
            for (const QString &line :
                QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
                lines.append(line.section(QStringLiteral("] "), 1));
        }
        return lines;
    }
    void copy(const QByteArray &text)
    {
        pasteboard->copy({{PasteboardType::String, text}});
        queue.advanceBy(500ms);
    }
    /// The Return key in the panel.
    void pick() const { delegate->historyView()->paste(delegate->historyView()->selectedIndex()); }
    bool isShown() const { return delegate->panel()->isVisible(); }
    void openSettings() const { delegate->notifications().post(notification::openSettings()); }
    void pressHotKey() const { hotKeys->press(V, CommandShift); }

    ManualMainQueue queue;
    bool isTrusted = true;
    bool elsewhere = false;
    QString storePath;
    FakeAppearance *appearance = nullptr;
    FakePasteboard *pasteboard = nullptr;
    FakeWorkspace *workspace = nullptr;
    FakeHotKeyCenter *hotKeys = nullptr;
    FakeEventPoster *poster = nullptr;
    FakeScriptingService *scripting = nullptr;
    FakeLocalEvents *events = nullptr;
    FakeLoginItem *loginItem = nullptr;
    FakeScreens *screens = nullptr;
    FakeStatusBar *statusBar = nullptr;

private:
    QTemporaryDir m_folder;

protected:
    // Goes before the folder.
    std::unique_ptr<AppDelegate> delegate;
};

// Launch

TEST_F(Controller, AStartSeedsTheStoreAndSaysNothingElse)
{
    CapturedConsole console;
    launch();
    EXPECT_EQ(console.output(),
        "[Larkspool] Seeded 5 default categories\n[Larkspool] Seeded 10 default templates\n");
    EXPECT_FALSE(isShown());
}

TEST_F(Controller, TheStatusItemShowsAClipboardAndTogglesThePanel)
{
    launch();
    ASSERT_TRUE(statusBar->button().has_value());
    EXPECT_EQ(statusBar->button()->accessibilityDescription, QStringLiteral("Larkspool"));
    const QImage image = statusBar->button()->image(22, Qt::white);
    EXPECT_EQ(image.size(), QSize(22, 22));
    statusBar->click();
    EXPECT_TRUE(isShown());
    statusBar->click();
    EXPECT_FALSE(isShown());
}

TEST_F(Controller, TheDefaultHotKeyTogglesThePanel)
{
    launch();
    pressHotKey();
    EXPECT_TRUE(isShown());
    pressHotKey();
    EXPECT_FALSE(isShown());
}

TEST_F(Controller, AStoredHotKeyIsTaken)
{
    writePreferences(R"(hotkeyCombo={"keyCode":11,"modifiers":4352})");
    launch();
    EXPECT_EQ(hotKeys->registered(), (std::set<FakeHotKeyCenter::Combination>{{B, CommandKey | ControlKey}}));
}

TEST_F(Controller, AStoredHotKeyThatDoesNotDecodeIsTheDefault)
{
    for (const char *const stored : {"", "{", R"({"keyCode":9})", R"({"keyCode":"9","modifiers":768})",
             R"({"keyCode":-1,"modifiers":768})", R"({"keyCode":4294967296,"modifiers":768})",
             R"({"keyCode":9.5,"modifiers":768})", R"([9,768])", "9", "@Invalid()", "true"}) {
        writePreferences(QByteArray("hotkeyCombo=") + stored);
        launch();
        EXPECT_EQ(hotKeys->registered(), (std::set<FakeHotKeyCenter::Combination>{{V, CommandShift}}))
            << stored;
    }
}

TEST_F(Controller, AHotKeyThatSomebodyHoldsIsSaidAndEverythingElseWorks)
{
    elsewhere = true;
    CapturedConsole console;
    launch();
    EXPECT_NE(console.output().find("Failed to register hotkey: -9878\n"), std::string::npos);
    EXPECT_TRUE(hotKeys->registered().empty());
    copy("lark");
    statusBar->click();
    EXPECT_TRUE(isShown());
    EXPECT_EQ(delegate->historyView()->filteredItems()->rowCount(), 1);
}

TEST_F(Controller, AReloadedHotKeyReplacesTheOldOne)
{
    launch();
    writePreferences(R"(hotkeyCombo={"keyCode":11,"modifiers":768})");
    const std::set<FakeHotKeyCenter::Combination> replaced{{B, CommandShift}};
    EXPECT_TRUE(waitUntil([&] {
        delegate->notifications().post(notification::reloadHotkey());
        return hotKeys->registered() == replaced;
    }));
    hotKeys->press(B, CommandShift);
    EXPECT_TRUE(isShown());
}

// Settings

TEST_F(Controller, TheSettingsReplaceThePanelAfterAMoment)
{
    launch();
    pressHotKey();
    CapturedConsole console;
    openSettings();
    EXPECT_EQ(console.output(), "[Larkspool] openSettings called\n");
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(delegate->settingsWindow()->isVisible());
    queue.advanceBy(99ms);
    EXPECT_FALSE(delegate->settingsWindow()->isVisible());
    queue.advanceBy(1ms);
    EXPECT_EQ(console.output(), "[Larkspool] openSettings called\n[Larkspool] Showing settings window\n");
    const SettingsWindow *const window = delegate->settingsWindow();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->title(), QStringLiteral("Larkspool Settings"));
    EXPECT_EQ(window->geometry(), QRect(720, 340, 480, 400));
    EXPECT_TRUE(window->flags() & Qt::WindowStaysOnTopHint);
}

TEST_F(Controller, AVisibleSettingsWindowIsReused)
{
    launch();
    openSettings();
    queue.advanceBy(100ms);
    const SettingsWindow *const first = delegate->settingsWindow();
    openSettings();
    queue.advanceBy(100ms);
    EXPECT_EQ(delegate->settingsWindow(), first);
    EXPECT_TRUE(first->isVisible());
}

TEST_F(Controller, AClosedSettingsWindowIsReplaced)
{
    launch();
    for (int i = 0; i < 3; ++i) {
        openSettings();
        queue.advanceBy(100ms);
        const QPointer<SettingsWindow> window = delegate->settingsWindow();
        ASSERT_TRUE(window && window->isVisible());
        window->close();
        queue.advanceBy(1ms);
        EXPECT_FALSE(window);
        EXPECT_EQ(delegate->settingsWindow(), nullptr);
    }
}

TEST_F(Controller, SettingsThatAreAskedForAsTheyCloseAreThere)
{
    launch();
    openSettings();
    queue.advanceBy(100ms);
    delegate->settingsWindow()->close();
    openSettings();
    queue.advanceBy(100ms);
    ASSERT_NE(delegate->settingsWindow(), nullptr);
    EXPECT_TRUE(delegate->settingsWindow()->isVisible());
}

TEST_F(Controller, TheSettingsOpenWithoutAStore)
{
    CapturedConsole console;
    storePath = QStringLiteral("/dev/null/larkspool.sqlite");
    launch();
    openSettings();
    queue.advanceBy(100ms);
    EXPECT_TRUE(delegate->settingsWindow()->isVisible());
    EXPECT_EQ(delegate->settingsWindow()->view().categoryManager(), nullptr);
}

TEST_F(Controller, TheWindowsLookAsTheDesktopDoesWithoutAStoreToo)
{
    const CapturedConsole console;
    QFile occupied(path("larkspool"));
    ASSERT_TRUE(occupied.open(QIODevice::WriteOnly));
    launch();
    ASSERT_EQ(delegate->historyView(), nullptr);
    appearance->scheme = Appearance::ColorScheme::Dark;
    openSettings();
    queue.advanceBy(100ms);
    SettingsWindow &window = *delegate->settingsWindow();
    ASSERT_TRUE(waitUntil([&] { return window.isExposed(); }));
    const auto lightness = [&] { return window.grabWindow().pixelColor(240, 390).lightness(); };
    EXPECT_LT(lightness(), 64);
    appearance->scheme = Appearance::ColorScheme::Light;
    appearance->onChanged();
    EXPECT_GT(lightness(), 192);
}

TEST_F(Controller, TheHotKeyIsFreeWhileAnotherIsRecordedAndBackAfterwards)
{
    launch();
    openSettings();
    ShortcutRecorderView &recorder = *delegate->settingsWindow()->view().shortcutRecorder();
    recorder.startRecording();
    EXPECT_TRUE(hotKeys->registered().empty());
    recorder.stopRecording();
    EXPECT_EQ(hotKeys->registered(), (std::set<FakeHotKeyCenter::Combination>{{V, CommandShift}}));
}

TEST_F(Controller, ARecordedHotKeyWorksAtOnce)
{
    launch();
    openSettings();
    queue.advanceBy(100ms);
    delegate->settingsWindow()->view().shortcutRecorder()->startRecording();
    events->press({.keyCode = B, .position = B, .hotKeyModifiers = CommandShift});
    EXPECT_EQ(hotKeys->registered(), (std::set<FakeHotKeyCenter::Combination>{{B, CommandShift}}));
    hotKeys->press(B, CommandShift);
    EXPECT_TRUE(isShown());
}

TEST_F(Controller, ARefusedRecordingPrintsOneLineAndShowsWhatIsStored)
{
    launch();
    openSettings();
    hotKeys->takeElsewhere(B, CommandShift);
    ShortcutRecorderView &recorder = *delegate->settingsWindow()->view().shortcutRecorder();
    recorder.startRecording();
    CapturedConsole console;
    events->press({.keyCode = B, .position = B, .hotKeyModifiers = CommandShift});
    EXPECT_EQ(console.output(), "Failed to register hotkey: -9878\n");
    EXPECT_EQ(recorder.displayString(), QStringLiteral("⌘ ⇧ B"));
}

TEST_F(Controller, ClosingTheSettingsEndsARecording)
{
    launch();
    openSettings();
    queue.advanceBy(100ms);
    delegate->settingsWindow()->view().shortcutRecorder()->startRecording();
    delegate->settingsWindow()->close();
    queue.advanceBy(1ms);
    EXPECT_EQ(hotKeys->registered(), (std::set<FakeHotKeyCenter::Combination>{{V, CommandShift}}));
    EXPECT_EQ(events->keyDownMonitorCount(), 1);
}

TEST_F(Controller, KeysInTheSettingsAreNotThePanels)
{
    launch();
    copy("lark");
    delegate->historyView()->startEditing(0);
    openSettings();
    queue.advanceBy(100ms);
    ASSERT_TRUE(waitUntil([&] { return delegate->settingsWindow()->isActive(); }));
    EXPECT_EQ(events->press(ReturnCode), LocalEventFate::PassedOn);
    EXPECT_EQ(events->scroll(1), LocalEventFate::PassedOn);
    delegate->settingsWindow()->close();
    queue.advanceBy(1ms);
    EXPECT_EQ(events->press(ReturnCode), LocalEventFate::Consumed);
}

TEST_F(Controller, APreferenceThatIsSetIsSeenInThePanelAtOnce)
{
    launch();
    openSettings();
    delegate->settingsWindow()->view().setBorderColorHex(QStringLiteral("#FFFFFF"));
    EXPECT_EQ(delegate->historyView()->borderColor(), QColor(Qt::white));
}

TEST_F(Controller, ThePagesOpenInTheBrowser)
{
    launch();
    QList<QUrl> opened;
    delegate->openPage = [&](const QUrl &page) { opened.append(page); };
    openSettings();
    delegate->settingsWindow()->view().openWebsite();
    delegate->settingsWindow()->view().openPrivacyPolicy();
    ASSERT_EQ(opened.size(), 2);
    EXPECT_TRUE(opened[0].isLocalFile());
    EXPECT_TRUE(QFile::exists(opened[0].toLocalFile()));
    EXPECT_TRUE(opened[1].toLocalFile().endsWith(QStringLiteral("privacy.html")));
}

TEST_F(Controller, TheUserIsAskedForThePermissionOnceAndToldWhenItIsMissing)
{
    isTrusted = false;
    CapturedConsole console;
    launch();
    EXPECT_EQ(poster->promptCount(), 1);
    EXPECT_NE(console.output().find(
                  "[Larkspool] Accessibility permission not granted — paste simulation won't work until "
                  "enabled in System Settings → Privacy → Accessibility\n"),
        std::string::npos);
}

TEST_F(Controller, WhatIsOnTheClipboardAtLaunchIsNotTaken)
{
    launch();
    EXPECT_EQ(delegate->historyView()->filteredItems()->rowCount(), 0);
    copy("lark");
    EXPECT_EQ(delegate->historyView()->filteredItems()->rowCount(), 1);
}

TEST_F(Controller, WithoutAStoreThePanelAndTheHotKeyStillWork)
{
    CapturedConsole console;
    storePath = QStringLiteral("/dev/null/larkspool.sqlite");
    launch();
    EXPECT_NE(console.output().find("Failed to create ModelContainer: "), std::string::npos);
    EXPECT_EQ(delegate->historyView(), nullptr);
    copy("lark");
    pressHotKey();
    EXPECT_TRUE(isShown());
    queue.advanceBy(1s);
    delegate->notifications().post(notification::clearAllHistory());
    pressHotKey();
    EXPECT_FALSE(isShown());
}

TEST_F(Controller, TheEndReleasesTheHotKeyAndStopsTheMonitor)
{
    launch();
    delegate->applicationWillTerminate();
    EXPECT_TRUE(hotKeys->registered().empty());
    copy("lark");
    EXPECT_EQ(delegate->historyView()->filteredItems()->rowCount(), 0);
}

// Showing

TEST_F(Controller, ThePanelOpensInTheMiddleOfTheFreePartOfTheScreen)
{
    launch();
    screens->frame = QRect(1920, 40, 1280, 984);
    pressHotKey();
    EXPECT_EQ(delegate->panel()->size(), QSize(680, 640));
    EXPECT_EQ(delegate->panel()->position(), QPoint(1920 + (1280 - 680) / 2, 40 + (984 - 640) / 2));
}

TEST_F(Controller, WithoutAScreenThePanelStaysWhereItIs)
{
    launch();
    screens->frame = std::nullopt;
    delegate->panel()->setPosition(17, 4);
    pressHotKey();
    EXPECT_EQ(delegate->panel()->position(), QPoint(17, 4));
}

TEST_F(Controller, ShowingResetsTheHistoryView)
{
    launch();
    copy("lark");
    delegate->historyView()->setSearchText(QStringLiteral("wren"));
    pressHotKey();
    EXPECT_EQ(delegate->historyView()->searchText(), QString());
}

TEST_F(Controller, TheContentIsMadeFirstResponderThreeTimes)
{
    launch();
    pressHotKey();
    for (const auto step : {50ms, 100ms, 150ms}) {
        delegate->panel()->contentView()->setFocus(false);
        queue.advanceBy(step - 1ms);
        EXPECT_FALSE(delegate->panel()->contentView()->hasFocus());
        queue.advanceBy(1ms);
        EXPECT_TRUE(delegate->panel()->contentView()->hasFocus());
    }
}

// Pasting

TEST_F(Controller, APickedEntryIsPastedIntoTheApplicationThatWasInFront)
{
    launch();
    copy("lark");
    const auto editor =
        workspace->bringToFront(QStringLiteral("Editor"), QStringLiteral("org.example.Editor"), 42);
    pressHotKey();
    workspace->bringToFront(QStringLiteral("Larkspool"), QStringLiteral("org.larkspool.Larkspool"), 1);
    pick();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(editor->activationCount(), 1);
    EXPECT_EQ(log(),
        (QStringList{QStringLiteral("handleItemSelected: lark"), QStringLiteral("Copied to pasteboard"),
            QStringLiteral("Previous app: Editor, pid: 42")}));
    queue.advanceBy(149ms);
    EXPECT_TRUE(poster->posted().empty());
    queue.advanceBy(1ms);
    EXPECT_EQ(poster->posted().size(), 2U);
    EXPECT_EQ(log().mid(3),
        (QStringList{QStringLiteral("Target active: true, frontmost: Editor"),
            QStringLiteral("simulatePaste called"), QStringLiteral("AXIsProcessTrusted: true"),
            QStringLiteral("CGEventSource created: true"),
            QStringLiteral("Paste simulated via CGEvent SUCCESS")}));
}

TEST_F(Controller, WithoutAnApplicationInFrontTheEntryStaysOnThePasteboard)
{
    launch();
    copy("lark");
    copy("wren");
    workspace->leaveNobodyInFront();
    pressHotKey();
    delegate->historyView()->setSelectedIndex(1);
    pick();
    queue.advanceBy(1s);
    EXPECT_TRUE(poster->posted().empty());
    EXPECT_EQ(log(),
        (QStringList{QStringLiteral("handleItemSelected: lark"), QStringLiteral("Copied to pasteboard"),
            QStringLiteral("Previous app: nil, pid: -1"), QStringLiteral("No previous app to paste into")}));
    EXPECT_EQ(pasteboard->data(PasteboardType::String), QByteArray("lark"));
}

TEST_F(Controller, AnApplicationWithoutANameIsNil)
{
    launch();
    copy("lark");
    workspace->bringToFront(std::nullopt, std::nullopt, 42);
    pressHotKey();
    workspace->leaveNobodyInFront();
    pick();
    EXPECT_EQ(log().value(2), QStringLiteral("Previous app: nil, pid: 42"));
    workspace->leaveNobodyInFront();
    queue.advanceBy(150ms);
    EXPECT_EQ(log().value(3), QStringLiteral("Target active: false, frontmost: nil"));
}

TEST_F(Controller, TheLogShowsFiftyCharactersOfTheEntry)
{
    launch();
    copy(QByteArray("ü").repeated(60));
    pressHotKey();
    pick();
    EXPECT_EQ(log().value(0), QStringLiteral("handleItemSelected: ") + QStringLiteral("ü").repeated(50));
}

TEST_F(Controller, WithoutPermissionTheScriptIsTried)
{
    isTrusted = false;
    launch();
    copy("lark");
    workspace->bringToFront(QStringLiteral("Editor"), std::nullopt, 42);
    pressHotKey();
    pick();
    queue.advanceBy(150ms);
    EXPECT_EQ(log().mid(5),
        (QStringList{QStringLiteral("AXIsProcessTrusted: false"),
            QStringLiteral("Not trusted — trying AppleScript fallback"),
            QStringLiteral("Trying AppleScript paste"),
            QStringLiteral("Paste simulated via AppleScript SUCCESS")}));
    EXPECT_TRUE(poster->posted().empty());
}

TEST_F(Controller, AProgramThatEndsWithinTheDelayPostsNothing)
{
    launch();
    copy("lark");
    workspace->bringToFront(QStringLiteral("Editor"), std::nullopt, 42);
    pressHotKey();
    pick();
    delegate.reset();
    queue.advanceBy(1s);
    EXPECT_EQ(log().size(), 3);
}

TEST_F(Controller, ALogThatCannotBeWrittenIsDoneWithout)
{
    launch();
    ASSERT_TRUE(QDir().mkpath(path("larkspool_debug.log")));
    copy("lark");
    workspace->bringToFront(QStringLiteral("Editor"), std::nullopt, 42);
    pressHotKey();
    pick();
    queue.advanceBy(150ms);
    EXPECT_EQ(poster->posted().size(), 2U);
}

// Clearing

TEST_F(Controller, ClearingTakesPinnedEntriesTooAndSaysHowMany)
{
    launch();
    copy("a");
    copy("b");
    copy("c");
    delegate->historyView()->filteredItems()->record(1)->setPinned(true);
    CapturedConsole console;
    delegate->notifications().post(notification::clearAllHistory());
    EXPECT_EQ(console.output(), "[Larkspool] Cleared all history (3 items)\n");
    EXPECT_EQ(delegate->historyView()->filteredItems()->rowCount(), 0);
    EXPECT_EQ(delegate->historyView()->categories()->rowCount(), 5);
}

} // namespace
