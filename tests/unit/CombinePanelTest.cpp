#include "ui/history/CombinePanel.h"

#include "fakes/FakeLocalEvents.h"
#include "fakes/ManualMainQueue.h"
#include "store/Seeding.h"
#include "support/CapturedConsole.h"
#include "support/TemporaryStore.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace
{

constexpr quint16 Return = 36;
constexpr quint16 Escape = 53;
constexpr quint16 Left = 123;
constexpr quint16 Right = 124;
constexpr quint16 LastKeyCode = 127;

const QString Joined = QStringLiteral("eggs\noat milk\ntwo lemons");

class CombinePanelTest : public ::testing::Test
{
protected:
    std::shared_ptr<ClipboardItem> item(
        const QByteArray &content, ClipboardItemType type = ClipboardItemType::Text)
    {
        auto made =
            std::make_shared<ClipboardItem>(content, type, std::nullopt, std::nullopt, std::nullopt, false);
        m_store.context().insert(made);
        return made;
    }
    /// A template that joins by the separator.
    std::shared_ptr<PasteTemplate> addTemplate(const QString &name, const QString &separator)
    {
        const auto order = m_store.context().fetchCount<PasteTemplate>();
        auto made = std::make_shared<PasteTemplate>(
            name, separator, QString(), QString(), QString(), QString(), order, false);
        m_store.context().insert(made);
        return made;
    }
    /// Templates "0", "1" and so on, which join by their names.
    void addTemplates(int count)
    {
        for (int i = 0; i < count; ++i)
            addTemplate(QString::number(i), QString::number(i));
    }

    CombinePanel::Items threeItems() { return {item("eggs"), item(" oat milk\n"), item("\ntwo lemons")}; }

    /// The panel, not shown yet.
    CombinePanel &make(const CombinePanel::Items &items)
    {
        m_panel = std::make_unique<CombinePanel>(
            CombinePanel::Surroundings{m_store.context(), m_events, m_queue}, items,
            [this](const QString &text) {
                m_pasted.append(text);
                if (m_onCallback)
                    m_onCallback();
            },
            [this] {
                ++m_cancelCount;
                if (m_onCallback)
                    m_onCallback();
            });
        return *m_panel;
    }
    CombinePanel &show(const CombinePanel::Items &items)
    {
        make(items).appear();
        return *m_panel;
    }
    CombinePanel &show() { return show(threeItems()); }

    /// Presses the key and lets what it has started happen.
    LocalEventFate press(quint16 keyCode, EventModifier modifiers = EventModifier::None)
    {
        const LocalEventFate fate = m_events.press(keyCode, modifiers);
        m_queue.drain();
        return fate;
    }

    TemporaryStore m_store;
    ManualMainQueue m_queue;
    FakeLocalEvents m_events;
    QStringList m_pasted;
    int m_cancelCount = 0;
    std::function<void()> m_onCallback;
    std::unique_ptr<CombinePanel> m_panel;
};

// Before it is shown

TEST_F(CombinePanelTest, StartsWithoutAChoiceAPreviewAndAMonitor)
{
    addTemplates(2);
    const CombinePanel &panel = make(threeItems());
    EXPECT_EQ(panel.selectedTemplateIndex(), -1);
    EXPECT_EQ(panel.preview(), QString());
    EXPECT_FALSE(panel.isShown());
    EXPECT_EQ(m_events.keyDownMonitorCount(), 0);
}

TEST_F(CombinePanelTest, ItsTitleCountsTheEntries)
{
    EXPECT_EQ(make(threeItems()).title(), QStringLiteral("Combine 3 items"));
    EXPECT_EQ(make(CombinePanel::Items(500, item("a"))).title(), QStringLiteral("Combine 500 items"));
}

// The texts

TEST_F(CombinePanelTest, TheTextsAreInTheOrderOfTheEntries)
{
    const CombinePanel &panel = make({item("file:///Users/a/My%20File.txt", ClipboardItemType::File),
        item("\n\n trimmed \n"), item("/home/ann/harbour.png", ClipboardItemType::Image),
        item(" https://example.org ", ClipboardItemType::Url), item("\trich ", ClipboardItemType::RichText)});
    EXPECT_EQ(panel.itemTexts(),
        (QStringList{QStringLiteral("My File.txt"), QStringLiteral("trimmed"), QStringLiteral("harbour.png"),
            QStringLiteral("https://example.org"), QStringLiteral("rich")}));
}

TEST_F(CombinePanelTest, AnEntryThatIsChosenTwiceContributesTwice)
{
    const auto twice = item("a");
    EXPECT_EQ(show({twice, twice}).preview(), QStringLiteral("a\na"));
}

TEST_F(CombinePanelTest, ALongContentIsReadFromTheStoreAndPastedWhole)
{
    const auto entry = item("  " + QByteArray(100'000, 'x') + "END\n");
    ASSERT_TRUE(m_store.context().save());
    ASSERT_FALSE(entry->isContentResident());
    show({entry, item("b")});
    press(Return);
    EXPECT_EQ(m_pasted, QStringList{QString(100'000, QLatin1Char('x')) + QStringLiteral("END\nb")});
}

TEST_F(CombinePanelTest, AnEntryThatGoesWhileThePanelIsOpenIsPastedAllTheSame)
{
    const auto entry = item(QByteArray(100'000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    show({entry, item("b")});
    m_store.context().remove(entry);
    ASSERT_TRUE(m_store.context().save());
    addTemplate(QStringLiteral("Plus"), QStringLiteral("+"));
    m_panel->setSelectedTemplateIndex(0);
    EXPECT_EQ(m_panel->preview(), QString(100'000, QLatin1Char('x')) + QStringLiteral("+b"));
}

// The template that applies

TEST_F(CombinePanelTest, NewLineIsTheDefaultWhereverItStands)
{
    addTemplates(2);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    const CombinePanel &panel = show();
    EXPECT_EQ(panel.defaultTemplateIndex(), 2);
    EXPECT_EQ(panel.effectiveTemplateIndex(), 2);
    EXPECT_EQ(panel.selectedTemplate()->name(), QStringLiteral("New Line"));
    EXPECT_EQ(panel.selectedTemplateIndex(), -1);
    EXPECT_EQ(panel.preview(), Joined);
}

TEST_F(CombinePanelTest, TheFirstOfTwoNewLinesIsTheDefault)
{
    addTemplates(1);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("|"));
    addTemplate(QStringLiteral("New Line"), QStringLiteral("#"));
    EXPECT_EQ(show().preview(), QStringLiteral("eggs|oat milk|two lemons"));
}

TEST_F(CombinePanelTest, WithoutANewLineTheFirstTemplateIsTheDefault)
{
    for (const char *const name : {"Comma", "new line", "New Line ", "NewLine", "New  Line"})
        addTemplate(QString::fromLatin1(name), QString::fromLatin1(name));
    const CombinePanel &panel = show();
    EXPECT_EQ(panel.defaultTemplateIndex(), 0);
    EXPECT_EQ(panel.selectedTemplate()->name(), QStringLiteral("Comma"));
}

TEST_F(CombinePanelTest, AnyNegativeChoiceIsNone)
{
    addTemplates(2);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    CombinePanel &panel = show();
    panel.setSelectedTemplateIndex(0);
    panel.setSelectedTemplateIndex(-7);
    EXPECT_EQ(panel.effectiveTemplateIndex(), 2);
    EXPECT_EQ(panel.preview(), Joined);
}

TEST_F(CombinePanelTest, AChoiceThatIsNotThereIsNoTemplate)
{
    addTemplates(2);
    CombinePanel &panel = show();
    panel.setSelectedTemplateIndex(2);
    EXPECT_EQ(panel.selectedTemplate(), nullptr);
    EXPECT_EQ(panel.preview(), Joined);
}

TEST_F(CombinePanelTest, WithoutTemplatesTheTextsAreJoinedByLineFeeds)
{
    const CombinePanel &panel = show();
    EXPECT_EQ(panel.selectedTemplate(), nullptr);
    EXPECT_EQ(panel.defaultTemplateIndex(), 0);
    EXPECT_EQ(panel.preview(), Joined);
}

// The preview

TEST_F(CombinePanelTest, TheTemplateCombinesTheTexts)
{
    m_store.context().insert(std::make_shared<PasteTemplate>(QStringLiteral("JSON"), QStringLiteral(", "),
        QStringLiteral("\""), QStringLiteral("\""), QStringLiteral("["), QStringLiteral("]"), 0, false));
    EXPECT_EQ(show().preview(), QStringLiteral("[\"eggs\", \"oat milk\", \"two lemons\"]"));
}

TEST_F(CombinePanelTest, NumberedIsNumberedHereAndNotByTheTemplate)
{
    m_store.context().insert(std::make_shared<PasteTemplate>(QStringLiteral("Numbered"), QStringLiteral("; "),
        QStringLiteral("<"), QStringLiteral(">"), QStringLiteral("["), QStringLiteral("]"), 0, false));
    EXPECT_EQ(show().preview(), QStringLiteral("1. eggs\n2. oat milk\n3. two lemons"));
}

TEST_F(CombinePanelTest, OnlyTheExactNameIsNumbered)
{
    addTemplate(QStringLiteral("numbered"), QStringLiteral("+"));
    EXPECT_EQ(show().preview(), QStringLiteral("eggs+oat milk+two lemons"));
}

TEST_F(CombinePanelTest, EveryTemplateOfAFreshStoreCombines)
{
    {
        const CapturedConsole console;
        seedDefaultTemplates(&m_store.container());
    }
    CombinePanel &panel = show({item("a"), item("b")});
    QStringList previews{panel.preview()};
    for (int index = 0; index < panel.templates()->rowCount(); ++index) {
        panel.setSelectedTemplateIndex(index);
        previews.append(panel.preview());
    }
    EXPECT_EQ(previews,
        (QStringList{QStringLiteral("a\nb"), QStringLiteral("a, b"), QStringLiteral("a\nb"),
            QStringLiteral("a b"), QStringLiteral("a\tb"), QStringLiteral("\"a\", \"b\""),
            QStringLiteral("'a', 'b'"), QStringLiteral("[\"a\", \"b\"]"), QStringLiteral("- a\n- b"),
            QStringLiteral("1. a\n2. b"), QStringLiteral("('a', 'b')")}));
}

TEST_F(CombinePanelTest, AChoiceMakesThePreviewAnewAndTheSameChoiceDoesNot)
{
    addTemplates(2);
    CombinePanel &panel = show();
    const QSignalSpy previews(&panel, &CombinePanel::previewChanged);
    panel.setSelectedTemplateIndex(1);
    EXPECT_EQ(panel.preview(), QStringLiteral("eggs1oat milk1two lemons"));
    panel.setSelectedTemplateIndex(1);
    EXPECT_EQ(previews.count(), 1);
}

TEST_F(CombinePanelTest, ThePreviewStaysWhenTemplatesComeAndGo)
{
    addTemplates(1);
    CombinePanel &panel = show();
    const QString before = panel.preview();
    const auto newLine = addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    EXPECT_EQ(panel.effectiveTemplateIndex(), 1);
    EXPECT_EQ(panel.preview(), before);
    press(Return);
    EXPECT_EQ(m_pasted, QStringList{before});
    m_store.context().remove(newLine);
    EXPECT_EQ(panel.effectiveTemplateIndex(), 0);
}

TEST_F(CombinePanelTest, ViewsLearnWhichTemplateIsHighlightedWhenTheTemplatesChange)
{
    addTemplates(1);
    const CombinePanel &panel = show();
    const QSignalSpy highlights(&panel, &CombinePanel::effectiveTemplateIndexChanged);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    EXPECT_EQ(highlights.count(), 1);
}

TEST_F(CombinePanelTest, ViewsGetTheBeginningOfALongPreviewAndTheWholeIsPasted)
{
    const QString text(3 * CombinePanel::LongestBeginning, QLatin1Char('x'));
    const CombinePanel &panel = show({item(text.toUtf8()), item("END")});
    EXPECT_EQ(panel.previewBeginning(), text.left(CombinePanel::LongestBeginning));
    EXPECT_TRUE(panel.isPreviewShortened());
    press(Return);
    EXPECT_EQ(m_pasted, QStringList{text + QStringLiteral("\nEND")});
}

TEST_F(CombinePanelTest, ViewsGetNoMoreLinesThanTheyLayOutInAFrame)
{
    const CombinePanel &panel = show(CombinePanel::Items(500, item("a")));
    EXPECT_EQ(panel.previewBeginning().count(QLatin1Char('\n')), CombinePanel::MostLineFeeds);
    EXPECT_TRUE(panel.isPreviewShortened());
    EXPECT_EQ(panel.preview().count(QLatin1Char('\n')), 499);
}

TEST_F(CombinePanelTest, ViewsGetAShortPreviewWhole)
{
    const CombinePanel &panel = show();
    EXPECT_EQ(panel.previewBeginning(), Joined);
    EXPECT_FALSE(panel.isPreviewShortened());
}

// Keys

TEST_F(CombinePanelTest, OfAllKeysFourAreConsumed)
{
    addTemplates(3);
    for (int code = 0; code <= LastKeyCode; ++code) {
        CombinePanel &panel = show();
        const bool isOurs = code == Return || code == Escape || code == Left || code == Right;
        EXPECT_EQ(
            press(static_cast<quint16>(code)), isOurs ? LocalEventFate::Consumed : LocalEventFate::PassedOn)
            << code;
        const int expected = code == Right ? 1 : code == Left ? 2 : -1;
        EXPECT_EQ(panel.selectedTemplateIndex(), expected) << code;
    }
    EXPECT_EQ(m_pasted.size(), 1);
    EXPECT_EQ(m_cancelCount, 1);
}

TEST_F(CombinePanelTest, ModifiersAreNotLookedAt)
{
    addTemplates(3);
    for (int held = 0; held < 8; ++held) {
        const auto modifiers = static_cast<EventModifier>(held);
        CombinePanel &panel = show();
        m_pasted.clear();
        m_cancelCount = 0;
        for (const quint16 code : {Right, Right, Left, Return, Escape})
            EXPECT_EQ(press(code, modifiers), LocalEventFate::Consumed);
        EXPECT_EQ(panel.selectedTemplateIndex(), 1) << held;
        EXPECT_EQ(m_pasted, QStringList{QStringLiteral("eggs1oat milk1two lemons")}) << held;
        EXPECT_EQ(m_cancelCount, 1) << held;
        EXPECT_EQ(press(0, modifiers), LocalEventFate::PassedOn);
    }
}

TEST_F(CombinePanelTest, WhatAKeyDoesHappensOnTheNextTurn)
{
    addTemplates(3);
    const CombinePanel &panel = show();
    for (const quint16 code : {Right, Return, Escape})
        EXPECT_EQ(m_events.press(code), LocalEventFate::Consumed);
    EXPECT_EQ(panel.selectedTemplateIndex(), -1);
    EXPECT_EQ(m_pasted, QStringList());
    EXPECT_EQ(m_cancelCount, 0);
    m_queue.drain();
    EXPECT_EQ(panel.selectedTemplateIndex(), 1);
    EXPECT_EQ(m_pasted, QStringList{QStringLiteral("eggs1oat milk1two lemons")});
    EXPECT_EQ(m_cancelCount, 1);
}

TEST_F(CombinePanelTest, KeysThatComeFastEachCount)
{
    addTemplates(5);
    const CombinePanel &panel = show();
    for (int i = 0; i < 3; ++i)
        m_events.press(Right);
    m_queue.drain();
    EXPECT_EQ(panel.selectedTemplateIndex(), 3);
}

TEST_F(CombinePanelTest, RightGoesFromTheDefaultThroughAllToTheFirst)
{
    addTemplates(2);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    addTemplate(QStringLiteral("3"), QStringLiteral("3"));
    const CombinePanel &panel = show();
    std::vector<int> indices;
    for (int i = 0; i < 4; ++i) {
        press(Right);
        indices.push_back(panel.selectedTemplateIndex());
    }
    EXPECT_EQ(indices, (std::vector{3, 0, 1, 2}));
}

TEST_F(CombinePanelTest, LeftGoesFromTheDefaultThroughAllToTheLast)
{
    addTemplates(1);
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    addTemplate(QStringLiteral("2"), QStringLiteral("2"));
    const CombinePanel &panel = show();
    std::vector<int> indices;
    for (int i = 0; i < 4; ++i) {
        press(Left);
        indices.push_back(panel.selectedTemplateIndex());
    }
    EXPECT_EQ(indices, (std::vector{0, 2, 1, 0}));
}

TEST_F(CombinePanelTest, ArrowsStayAtTheOnlyTemplate)
{
    addTemplates(1);
    const CombinePanel &panel = show();
    press(Right);
    EXPECT_EQ(panel.selectedTemplateIndex(), 0);
    press(Left);
    EXPECT_EQ(panel.selectedTemplateIndex(), 0);
}

TEST_F(CombinePanelTest, ArrowsStepThroughTheTemplatesAsTheyAreNow)
{
    addTemplates(2);
    const CombinePanel &panel = show();
    press(Right);
    addTemplates(1);
    press(Right);
    EXPECT_EQ(panel.selectedTemplateIndex(), 2);
    press(Right);
    EXPECT_EQ(panel.selectedTemplateIndex(), 0);
}

TEST_F(CombinePanelTest, WithoutTemplatesArrowsAreConsumedAndDoNothingAndReturnPastes)
{
    const CombinePanel &panel = show();
    EXPECT_EQ(press(Left), LocalEventFate::Consumed);
    EXPECT_EQ(press(Right), LocalEventFate::Consumed);
    EXPECT_EQ(panel.selectedTemplateIndex(), -1);
    press(Return);
    EXPECT_EQ(m_pasted, QStringList{Joined});
}

// The life of the panel

TEST_F(CombinePanelTest, KeysAreHeardOnlyWhileItIsShown)
{
    CombinePanel &panel = make(threeItems());
    EXPECT_EQ(press(Return), LocalEventFate::PassedOn);
    panel.appear();
    EXPECT_EQ(m_events.keyDownMonitorCount(), 1);
    panel.disappear();
    EXPECT_FALSE(panel.isShown());
    EXPECT_EQ(m_events.keyDownMonitorCount(), 0);
    EXPECT_EQ(press(Return), LocalEventFate::PassedOn);
    EXPECT_EQ(m_pasted, QStringList());
}

TEST_F(CombinePanelTest, AppearingTwiceListensOnce)
{
    CombinePanel &panel = show();
    const QSignalSpy previews(&panel, &CombinePanel::previewChanged);
    panel.appear();
    EXPECT_EQ(previews.count(), 0);
    press(Return);
    EXPECT_EQ(m_pasted.size(), 1);
}

TEST_F(CombinePanelTest, ItsEndEndsTheMonitor)
{
    show();
    m_panel.reset();
    EXPECT_EQ(m_events.keyDownMonitorCount(), 0);
}

TEST_F(CombinePanelTest, AKeyOfAPanelThatHasGoneMeanwhileDoesNothing)
{
    show();
    m_events.press(Return);
    m_panel.reset();
    m_queue.drain();
    EXPECT_EQ(m_pasted, QStringList());
}

TEST_F(CombinePanelTest, ASecondReturnDoesNotPasteAgainWhenTheFirstHasClosedThePanel)
{
    show();
    m_onCallback = [this] { m_panel->disappear(); };
    m_events.press(Return);
    m_events.press(Return);
    m_queue.drain();
    EXPECT_EQ(m_pasted, QStringList{Joined});
}

TEST_F(CombinePanelTest, ACallbackMayEndThePanel)
{
    m_onCallback = [this] { m_panel.reset(); };
    show();
    press(Return);
    EXPECT_EQ(m_pasted, QStringList{Joined});
    show();
    press(Escape);
    EXPECT_EQ(m_cancelCount, 1);
    show().paste();
    EXPECT_EQ(m_pasted, (QStringList{Joined, Joined}));
    show().cancel();
    EXPECT_EQ(m_cancelCount, 2);
    EXPECT_EQ(m_panel, nullptr);
}

TEST_F(CombinePanelTest, ThePanelNeedsNoCallbacks)
{
    CombinePanel panel({m_store.context(), m_events, m_queue}, {item("a"), item("b")}, nullptr, nullptr);
    panel.appear();
    EXPECT_EQ(press(Return), LocalEventFate::Consumed);
    EXPECT_EQ(press(Escape), LocalEventFate::Consumed);
    EXPECT_EQ(panel.preview(), QStringLiteral("a\nb"));
}

} // namespace
