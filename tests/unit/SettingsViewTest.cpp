#include "ui/settings/SettingsView.h"

#include "base/Notifications.h"
#include "fakes/FakeLocalEvents.h"
#include "fakes/FakeLoginItem.h"
#include "support/CapturedConsole.h"
#include "support/TemporaryStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

class Settings : public ::testing::Test
{
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("larkspool.conf")); }
    QString stored(const char *key) const
    {
        return UserDefaults(path()).string(QString::fromLatin1(key), QStringLiteral("nothing"));
    }
    std::unique_ptr<SettingsView> makeView()
    {
        return std::make_unique<SettingsView>(SettingsView::Surroundings{.defaults = defaults,
            .notifications = notifications,
            .events = events,
            .loginItem = loginItem,
            .modelContext = &store.context(),
            .onRecording = [](ShortcutRecorderView::Recording) {},
            .openPage = [](const QUrl &) {}});
    }
    static QVariantList values(const QVariantList &choices)
    {
        QVariantList list;
        for (const QVariant &choice : choices)
            list.append(choice.toMap().value(QStringLiteral("value")));
        return list;
    }
    static QStringList texts(const QVariantList &choices)
    {
        QStringList list;
        for (const QVariant &choice : choices)
            list.append(choice.toMap().value(QStringLiteral("text")).toString());
        return list;
    }

private:
    QTemporaryDir m_folder;

protected:
    TemporaryStore store;
    UserDefaults defaults{path()};
    NotificationCenter notifications;
    FakeLocalEvents events;
    FakeLoginItem loginItem;
};

TEST_F(Settings, OnAFirstStartShowTheDefaultsAndStoreNothing)
{
    const auto view = makeView();
    EXPECT_EQ(view->maxHistoryCount(), 500);
    EXPECT_FALSE(view->launchAtLogin());
    EXPECT_TRUE(view->showSourceApp());
    EXPECT_FALSE(view->playSoundOnCopy());
    EXPECT_TRUE(view->playSoundOnNavigate());
    EXPECT_EQ(view->borderColorHex(), QStringLiteral("#FF8C00"));
    EXPECT_EQ(view->categorySearchKey(), QStringLiteral("tab"));
    EXPECT_FALSE(defaults.data(preference::HotkeyCombo));
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(Settings, EachIsStoredUnderItsKey)
{
    const auto view = makeView();
    view->setMaxHistoryCount(10000);
    view->setLaunchAtLogin(true);
    view->setShowSourceApp(false);
    view->setPlaySoundOnCopy(true);
    view->setPlaySoundOnNavigate(false);
    view->setBorderColorHex(QStringLiteral("#FFFFFF"));
    view->setCategorySearchKey(QStringLiteral("slash"));
    EXPECT_EQ(stored("maxHistoryCount"), QStringLiteral("10000"));
    EXPECT_EQ(stored("launchAtLogin"), QStringLiteral("true"));
    EXPECT_EQ(stored("showSourceApp"), QStringLiteral("false"));
    EXPECT_EQ(stored("playSoundOnCopy"), QStringLiteral("true"));
    EXPECT_EQ(stored("playSoundOnNavigate"), QStringLiteral("false"));
    EXPECT_EQ(stored("borderColorHex"), QStringLiteral("#FFFFFF"));
    EXPECT_EQ(stored("categorySearchKey"), QStringLiteral("slash"));
}

TEST_F(Settings, OfferTheseChoicesInThisOrder)
{
    const auto view = makeView();
    EXPECT_EQ(values(view->borderColorOptions()),
        (QVariantList{QStringLiteral("#FF8C00"), QStringLiteral("#FF3B30"), QStringLiteral("#007AFF"),
            QStringLiteral("#34C759"), QStringLiteral("#AF52DE"), QStringLiteral("#FF2D55"),
            QStringLiteral("#FFCC00"), QStringLiteral("#FFFFFF")}));
    EXPECT_EQ(values(view->maxHistoryChoices()), (QVariantList{100, 250, 500, 1000, 10000}));
    EXPECT_EQ(texts(view->maxHistoryChoices()),
        (QStringList{QStringLiteral("100"), QStringLiteral("250"), QStringLiteral("500"),
            QStringLiteral("1000"), QStringLiteral("Unlimited")}));
    EXPECT_EQ(values(view->categorySearchChoices()),
        (QVariantList{QStringLiteral("tab"), QStringLiteral("slash")}));
    EXPECT_EQ(texts(view->categorySearchChoices()),
        (QStringList{QStringLiteral("Tab"), QStringLiteral("/ (Slash)")}));
}

TEST_F(Settings, TwoViewsSeeEachOthersChanges)
{
    const auto view = makeView();
    const auto other = makeView();
    int changes = 0;
    QObject::connect(other.get(), &SettingsView::changed, [&] { ++changes; });
    view->setMaxHistoryCount(250);
    EXPECT_EQ(other->maxHistoryCount(), 250);
    EXPECT_EQ(changes, 1);
}

TEST_F(Settings, LaunchAtLoginIsToldToTheDesktopAtEveryChangeAndNotBefore)
{
    loginItem.answersAtOnce = false;
    const auto view = makeView();
    view->setPlaySoundOnCopy(true);
    view->setLaunchAtLogin(false);
    EXPECT_EQ(loginItem.waitingCount(), 0U);
    view->setLaunchAtLogin(true);
    ASSERT_EQ(loginItem.waitingCount(), 1U);
    loginItem.answer();
    EXPECT_TRUE(loginItem.isRegistered);
    view->setLaunchAtLogin(false);
    ASSERT_EQ(loginItem.waitingCount(), 1U);
    loginItem.answer();
    EXPECT_FALSE(loginItem.isRegistered);
}

TEST_F(Settings, AFailureToLaunchAtLoginIsPrintedAndTheChoiceStays)
{
    loginItem.failure = Error{QStringLiteral("the folder is read-only")};
    const auto view = makeView();
    CapturedConsole console;
    view->setLaunchAtLogin(true);
    EXPECT_EQ(console.output(), "Failed to toggle launch at login: the folder is read-only\n");
    EXPECT_TRUE(view->launchAtLogin());
    EXPECT_EQ(stored("launchAtLogin"), QStringLiteral("true"));
}

TEST_F(Settings, AnAnswerAfterTheSettingsHaveClosedIsHeard)
{
    loginItem.answersAtOnce = false;
    loginItem.failure = Error{QStringLiteral("no")};
    makeView()->setLaunchAtLogin(true);
    CapturedConsole console;
    loginItem.answer();
    EXPECT_EQ(console.output(), "Failed to toggle launch at login: no\n");
}

TEST_F(Settings, ClearingTheHistoryIsAskedOfTheController)
{
    int asked = 0;
    const auto observer = notifications.addObserver(notification::clearAllHistory(), [&] { ++asked; });
    makeView()->clearAllHistory();
    EXPECT_EQ(asked, 1);
}

// The recorder

class Recorder : public Settings
{
protected:
    static constexpr quint16 K = 40;
    static constexpr quint16 Escape = 53;

    Recorder()
    {
        observer = notifications.addObserver(notification::reloadHotkey(), [this] { ++reloads; });
    }
    LocalEventFate press(quint16 key, quint32 modifiers)
    {
        return events.press({.keyCode = key, .position = key, .hotKeyModifiers = modifiers});
    }

    std::vector<ShortcutRecorderView::Recording> recordings;
    ShortcutRecorderView recorder{
        {QStringLiteral("Open Larkspool"), preference::HotkeyCombo, notification::reloadHotkey()},
        {defaults, notifications, events, [this](auto change) { recordings.push_back(change); }}};
    std::unique_ptr<NotificationCenter::Observer> observer;
    int reloads = 0;
};

TEST_F(Recorder, ShowsTheDefaultWithNothingStored)
{
    EXPECT_EQ(recorder.displayString(), QStringLiteral("⌘ ⇧ V"));
    EXPECT_EQ(recorder.currentCombo(), (KeyCombo{9, 768}));
}

TEST_F(Recorder, ShowsTheDefaultWithSomethingBrokenStored)
{
    defaults.setData(preference::HotkeyCombo, "{\"keyCode\":");
    recorder.loadCombo();
    EXPECT_EQ(recorder.currentCombo(), (KeyCombo{9, 768}));
}

TEST_F(Recorder, AskForKeysWhileRecording)
{
    recorder.startRecording();
    EXPECT_EQ(recorder.displayString(), QStringLiteral("Press keys..."));
    recorder.stopRecording();
    EXPECT_EQ(recorder.displayString(), QStringLiteral("⌘ ⇧ V"));
    using enum ShortcutRecorderView::Recording;
    EXPECT_EQ(recordings, (std::vector{Begins, Ends}));
    EXPECT_EQ(events.keyDownMonitorCount(), 0);
}

TEST_F(Recorder, AKeyWithModifiersIsStoredShownAndAnnouncedOnce)
{
    recorder.startRecording();
    EXPECT_EQ(press(K, CommandKey | ShiftKey), LocalEventFate::Consumed);
    EXPECT_EQ(defaults.data(preference::HotkeyCombo), "{\"keyCode\":40,\"modifiers\":768}");
    EXPECT_EQ(recorder.displayString(), QStringLiteral("⌘ ⇧ K"));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(reloads, 1);
    EXPECT_EQ(press(K, CommandKey), LocalEventFate::PassedOn);
}

TEST_F(Recorder, AKeyAloneGoesOnAndRecordingStays)
{
    recorder.startRecording();
    EXPECT_EQ(press(K, 0), LocalEventFate::PassedOn);
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_FALSE(defaults.data(preference::HotkeyCombo));
    EXPECT_EQ(reloads, 0);
}

TEST_F(Recorder, EscapeEndsItWithoutAWord)
{
    recorder.startRecording();
    EXPECT_EQ(press(Escape, 0), LocalEventFate::Consumed);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(recorder.currentCombo(), (KeyCombo{9, 768}));
    EXPECT_EQ(reloads, 0);
}

TEST_F(Recorder, EscapeWithAModifierIsACombination)
{
    recorder.startRecording();
    EXPECT_EQ(press(Escape, OptionKey), LocalEventFate::Consumed);
    EXPECT_EQ(recorder.currentCombo(), (KeyCombo{Escape, OptionKey}));
    EXPECT_EQ(reloads, 1);
}

TEST_F(Recorder, EachModifierCountsAndNoOther)
{
    for (const quint32 modifier : {CommandKey, ShiftKey, OptionKey, ControlKey}) {
        recorder.startRecording();
        press(K, modifier | 0x10000 | 1);
        EXPECT_EQ(recorder.currentCombo(), (KeyCombo{K, modifier}));
    }
}

TEST_F(Recorder, AKeyWithoutANameShowsItsModifiersOnly)
{
    recorder.startRecording();
    press(114, ControlKey);
    EXPECT_EQ(recorder.currentCombo(), (KeyCombo{114, ControlKey}));
    EXPECT_EQ(recorder.displayString(), QStringLiteral("⌃"));
}

TEST_F(Recorder, AKeyThatNoHotKeyCanHaveAndOneThatRepeatsAreNotTaken)
{
    recorder.startRecording();
    EXPECT_EQ(events.press({.keyCode = 0xffff, .hotKeyModifiers = CommandKey}), LocalEventFate::PassedOn);
    events.press({.keyCode = K, .isRepeat = true, .position = K, .hotKeyModifiers = CommandKey});
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_EQ(reloads, 0);
}

TEST_F(Recorder, BeginsAndEndsOnce)
{
    recorder.startRecording();
    recorder.startRecording();
    EXPECT_EQ(events.keyDownMonitorCount(), 1);
    recorder.stopRecording();
    recorder.stopRecording();
    EXPECT_EQ(recordings.size(), 2U);
}

} // namespace
