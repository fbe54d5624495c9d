#include "support/HistoryViewFixture.h"

#include "base/Notifications.h"

#include <QAbstractItemModelTester>

#include <random>

using namespace std::chrono_literals;

namespace
{

using Focus = ClipboardHistoryView::Focus;

class HistoryView : public HistoryViewFixture
{
protected:
    /// A letter that nothing else takes begins a search.
    void typeToSearch(ClipboardHistoryView &view, const QString &text) { press(view, Qt::Key_unknown, text); }
};

// Filters

TEST_F(HistoryView, ATypeCategoryShowsItsKindAndWhatIsAssignedToIt)
{
    const auto text = addCategory(QStringLiteral("Text"));
    const auto images = addCategory(QStringLiteral("Image"));
    const auto work = addCategory(QStringLiteral("Work"));
    const auto view = makeView();
    add({"assigned text", ClipboardItemType::Text, {}, images->id(), false});
    add({"image of work", ClipboardItemType::Image, {}, work->id(), false});
    add({"image", ClipboardItemType::Image, {}, {}, false});
    add("text");
    view->setSelectedFilterId(images->id());
    EXPECT_EQ(contents(*view), (QByteArrayList{"image", "assigned text"}));
    view->setSelectedFilterId(work->id());
    EXPECT_EQ(contents(*view), (QByteArrayList{"image of work"}));
    view->setSelectedFilterId(text->id());
    EXPECT_EQ(contents(*view), (QByteArrayList{"text"}));
    view->setSelectedFilterId(std::nullopt);
    EXPECT_EQ(contents(*view).size(), 4);
}

TEST_F(HistoryView, EveryTypeCategoryStandsForItsKindByItsExactName)
{
    struct Named {
        QString name;
        ClipboardItemType type;
    };
    const std::vector<Named> kinds{{QStringLiteral("Text"), ClipboardItemType::Text},
        {QStringLiteral("URL"), ClipboardItemType::Url}, {QStringLiteral("Image"), ClipboardItemType::Image},
        {QStringLiteral("File"), ClipboardItemType::File},
        {QStringLiteral("Rich Text"), ClipboardItemType::RichText}};
    const auto view = makeView();
    for (const Named &kind : kinds)
        add({kind.name.toUtf8(), kind.type, {}, {}, false});
    for (const Named &kind : kinds) {
        const auto exact = addCategory(kind.name);
        view->setSelectedFilterId(exact->id());
        EXPECT_EQ(contents(*view), QByteArrayList{kind.name.toUtf8()});
        const auto lower = addCategory(kind.name.toLower());
        view->setSelectedFilterId(lower->id());
        EXPECT_EQ(contents(*view), QByteArrayList());
    }
}

TEST_F(HistoryView, AFilterOnACategoryThatIsGoneShowsEverything)
{
    const auto work = addCategory(QStringLiteral("Work"));
    const auto view = makeView();
    add("a");
    view->setSelectedFilterId(work->id());
    EXPECT_EQ(contents(*view), QByteArrayList());
    m_store.context().remove(work);
    EXPECT_EQ(contents(*view), QByteArrayList{"a"});
    EXPECT_EQ(view->selectedCategory(), nullptr);
    view->setSearchText(QStringLiteral("b"));
    EXPECT_EQ(contents(*view), QByteArrayList());
}

TEST_F(HistoryView, AFilterFollowsTheNameOfItsCategory)
{
    const auto category = addCategory(QStringLiteral("Work"));
    const auto view = makeView();
    add({"image", ClipboardItemType::Image, {}, {}, false});
    view->setSelectedFilterId(category->id());
    EXPECT_EQ(contents(*view), QByteArrayList());
    category->setName(QStringLiteral("Image"));
    EXPECT_EQ(contents(*view), QByteArrayList{"image"});
}

TEST_F(HistoryView, TheSecondAndFourthOfFivePinnedComeFirst)
{
    const auto view = makeView();
    for (const auto *const content : {"5", "4", "3", "2", "1"})
        add({content, ClipboardItemType::Text, {}, {}, *content == '2' || *content == '4'});
    EXPECT_EQ(contents(*view), (QByteArrayList{"2", "4", "1", "3", "5"}));
    view->setSearchText(QStringLiteral("3"));
    EXPECT_EQ(contents(*view), QByteArrayList{"3"});
    view->setSearchText(QString());
    EXPECT_EQ(contents(*view), (QByteArrayList{"2", "4", "1", "3", "5"}));
}

// Search

TEST_F(HistoryView, ASearchLooksIntoTheContentAndTheApplicationsName)
{
    const auto view = makeView();
    add({"one", ClipboardItemType::Text, QStringLiteral("Text Editor"), {}, false});
    add({"an editor's word", ClipboardItemType::Text, QStringLiteral("Terminal"), {}, false});
    add("nothing");
    view->setSearchText(QStringLiteral("EDITOR"));
    EXPECT_EQ(contents(*view), (QByteArrayList{"an editor's word", "one"}));
}

TEST_F(HistoryView, ASearchOfBlanksSeeksBlanks)
{
    const auto view = makeView();
    add("two words");
    add("word");
    view->setSearchText(QStringLiteral(" "));
    EXPECT_EQ(contents(*view), QByteArrayList{"two words"});
}

TEST_F(HistoryView, ASearchGoesByTheUsersLanguage)
{
    const auto view = makeView(text::CaseRule::Turkic);
    add("ISPARTA");
    view->setSearchText(QStringLiteral("ısparta"));
    EXPECT_EQ(contents(*view), QByteArrayList{"ISPARTA"});
    view->setSearchText(QStringLiteral("isparta"));
    EXPECT_EQ(contents(*view), QByteArrayList());
}

TEST_F(HistoryView, ASearchAndAFilterBothApply)
{
    const auto urls = addCategory(QStringLiteral("URL"));
    const auto view = makeView();
    add({"https://lark.example", ClipboardItemType::Url, {}, {}, false});
    add({"https://wren.example", ClipboardItemType::Url, {}, {}, false});
    add("lark");
    view->setSelectedFilterId(urls->id());
    view->setSearchText(QStringLiteral("Lark"));
    EXPECT_EQ(contents(*view), QByteArrayList{"https://lark.example"});
}

TEST_F(HistoryView, TypingASearchHighlightsTheFirstRow)
{
    const auto view = makeView();
    for (int i = 0; i < 9; ++i)
        add("lark " + QByteArray::number(i));
    for (int i = 0; i < 7; ++i)
        press(*view, Qt::Key_Down);
    ASSERT_EQ(view->selectedIndex(), 7);
    view->setSearchText(QStringLiteral("lark"));
    EXPECT_EQ(view->selectedIndex(), 0);
}

TEST_F(HistoryView, ACopyThatComesDuringASearchIsListedIfItIsSought)
{
    const auto view = makeView();
    view->setSearchText(QStringLiteral("grün"));
    add("blau");
    const auto green = add("GRÜN");
    EXPECT_EQ(contents(*view), QByteArrayList{"GRÜN"});
    green->setContent("gelb");
    EXPECT_EQ(contents(*view), QByteArrayList());
    green->setContent("wieder grün");
    EXPECT_EQ(contents(*view), QByteArrayList{"wieder grün"});
    m_store.context().remove(green);
    EXPECT_EQ(contents(*view), QByteArrayList());
}

TEST_F(HistoryView, ViewsOfTheListAreToldOfEveryChangeOfAFilter)
{
    const auto texts = addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    const QAbstractItemModelTester items(
        view->filteredItems(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester categories(
        view->categories(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(3);
    for (int step = 0; step < 300; ++step) {
        if (step % 3 == 0)
            add("entry " + QByteArray::number(step));
        view->setSearchText(random() % 3 ? QString::number(random() % 20) : QString());
        view->setSelectedFilterId(random() % 2 ? std::optional(texts->id()) : std::nullopt);
        const int shown = view->filteredItems()->rowCount();
        ASSERT_EQ(shown, contents(*view).size());
    }
}

// Contents that are not in memory

TEST_F(HistoryView, ASearchFindsWhatIsDeepInALongText)
{
    const auto view = makeView();
    add(QByteArray(5'000'000, 'x') + " a lark at the end");
    add("short lark");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("LARK"));
    EXPECT_EQ(contents(*view), QByteArrayList{"short lark"});
    m_queue.advanceBy(1s);
    ASSERT_EQ(view->filteredItems()->rowCount(), 2);
    EXPECT_EQ(view->filteredItems()->record(1)->contentSize(), 5'000'018);
}

TEST_F(HistoryView, ASearchFindsTheBeginningOfALongTextAtOnce)
{
    const auto view = makeView();
    add("a lark, and " + QByteArray(5'000'000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
}

TEST_F(HistoryView, ALongTextIsReadAPieceInATurn)
{
    const auto view = makeView();
    add(QByteArray(5'000'000, 'x') + " lark");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    int turns = 0;
    while (view->filteredItems()->rowCount() == 0 && turns < 100) {
        m_queue.advanceBy(1ms);
        ++turns;
    }
    EXPECT_EQ(turns, 5);
}

TEST_F(HistoryView, ALongTextThatIsFoundStaysWhileTheSearchNarrows)
{
    const auto view = makeView();
    add(QByteArray(3'000'000, 'x') + " larkspur");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    m_queue.advanceBy(1s);
    ASSERT_EQ(view->filteredItems()->rowCount(), 1);
    view->setSearchText(QStringLiteral("larks"));
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
    view->setSearchText(QStringLiteral("larksx"));
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->filteredItems()->rowCount(), 0);
}

TEST_F(HistoryView, ALongTextThatGoesWhileItIsReadIsNoTrouble)
{
    const auto view = makeView();
    const auto first = add(QByteArray(3'000'000, 'x') + " lark");
    const auto second = add(QByteArray(3'000'000, 'y') + " lark");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    m_queue.advanceBy(1ms);
    m_store.context().remove(second);
    ASSERT_TRUE(m_store.context().save());
    m_queue.advanceBy(1s);
    ASSERT_EQ(view->filteredItems()->rowCount(), 1);
    EXPECT_EQ(view->filteredItems()->record(0), first);
}

TEST_F(HistoryView, ALongTextThatIsPinnedWhileItIsReadIsFoundStill)
{
    const auto view = makeView();
    const auto item = add(QByteArray(3'000'000, 'x') + " lark");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    m_queue.advanceBy(1ms);
    item->setPinned(true);
    ASSERT_TRUE(m_store.context().save());
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
}

TEST_F(HistoryView, ANewSearchEndsTheReadingForTheOldOne)
{
    const auto view = makeView();
    add(QByteArray(3'000'000, 'x') + " lark");
    ASSERT_TRUE(m_store.context().save());
    view->setSearchText(QStringLiteral("lark"));
    m_queue.advanceBy(1ms);
    view->setSearchText(QStringLiteral("wren"));
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->filteredItems()->rowCount(), 0);
    view->setSearchText(QString());
    EXPECT_EQ(view->filteredItems()->rowCount(), 1);
}

// The highlight

TEST_F(HistoryView, TheHighlightStopsAtBothEnds)
{
    const auto view = makeView();
    add("b");
    add("a");
    EXPECT_TRUE(press(*view, Qt::Key_Up));
    EXPECT_EQ(view->selectedIndex(), 0);
    press(*view, Qt::Key_Down);
    press(*view, Qt::Key_Down);
    EXPECT_EQ(view->selectedIndex(), 1);
}

TEST_F(HistoryView, ReturnPicksTheHighlightedEntry)
{
    const auto view = makeView();
    add("older");
    add("newer");
    press(*view, Qt::Key_Down);
    press(*view, Qt::Key_Return);
    EXPECT_EQ(m_picked, QByteArrayList{"older"});
}

TEST_F(HistoryView, WithoutEntriesTheKeysDoNothing)
{
    const auto view = makeView();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Left, Qt::Key_Right})
        press(*view, key);
    EXPECT_EQ(m_picked, QByteArrayList());
    EXPECT_EQ(view->selectedIndex(), 0);
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
}

TEST_F(HistoryView, AHighlightBeyondAShrunkenListComesBackIntoIt)
{
    const auto view = makeView();
    const auto b = add("b");
    const auto a = add("a");
    press(*view, Qt::Key_Down);
    m_store.context().remove(b);
    EXPECT_EQ(view->selectedIndex(), 0);
    press(*view, Qt::Key_Return);
    EXPECT_EQ(m_picked, QByteArrayList{"a"});
    m_store.context().remove(a);
    EXPECT_EQ(view->selectedIndex(), 0);
    press(*view, Qt::Key_Return);
    EXPECT_EQ(m_picked.size(), 1);
}

TEST_F(HistoryView, TheHighlightOfTheCategorySearchStopsAtBothEnds)
{
    addCategory(QStringLiteral("Text"));
    addCategory(QStringLiteral("Rich Text"));
    addCategory(QStringLiteral("URL"));
    const auto view = makeView();
    view->setCategorySearching(true);
    view->setCategorySearchText(QStringLiteral("TEXT"));
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down})
        press(*view, key);
    EXPECT_EQ(view->categorySearchIndex(), 1);
    EXPECT_EQ(m_sound.clickCount, 1);
}

// Categories

TEST_F(HistoryView, TheCategorySearchOffersCategoriesByName)
{
    addCategory(QStringLiteral("Text"));
    addCategory(QStringLiteral("URL"));
    addCategory(QStringLiteral("Rich Text"));
    const auto view = makeView();
    const auto names = [&] {
        QStringList list;
        for (const auto &category : view->matchingCategories()->rows())
            list.append(category->name());
        return list;
    };
    EXPECT_EQ(
        names(), (QStringList{QStringLiteral("Text"), QStringLiteral("URL"), QStringLiteral("Rich Text")}));
    view->setCategorySearchText(QStringLiteral("tex"));
    EXPECT_EQ(names(), (QStringList{QStringLiteral("Text"), QStringLiteral("Rich Text")}));
}

TEST_F(HistoryView, TheCategoriesGoRoundThroughAllEntriesBothWays)
{
    const auto a = addCategory(QStringLiteral("a"));
    const auto b = addCategory(QStringLiteral("b"));
    const auto view = makeView();
    using Id = std::optional<QUuid>;
    for (const Id &expected : {Id(a->id()), Id(b->id()), Id(), Id(a->id())}) {
        press(*view, Qt::Key_Right);
        EXPECT_EQ(view->selectedFilterId(), expected);
    }
    for (const Id &expected : {Id(), Id(b->id()), Id(a->id()), Id()}) {
        press(*view, Qt::Key_Left);
        EXPECT_EQ(view->selectedFilterId(), expected);
    }
}

TEST_F(HistoryView, AnotherCategoryHighlightsTheFirstRow)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    add("b");
    add("a");
    press(*view, Qt::Key_Down);
    press(*view, Qt::Key_Right);
    EXPECT_EQ(view->selectedIndex(), 0);
}

TEST_F(HistoryView, AClickOnAChipFiltersByItAndASecondOneEndsThat)
{
    const auto category = addCategory(QStringLiteral("Text"));
    addCategory(QStringLiteral("URL"));
    const auto view = makeView();
    add("b");
    add("a");
    press(*view, Qt::Key_Down);
    view->clickChip(0);
    EXPECT_EQ(view->selectedFilterId(), category->id());
    EXPECT_EQ(view->selectedIndex(), 0);
    press(*view, Qt::Key_Down);
    view->clickChip(0);
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
    EXPECT_EQ(view->selectedIndex(), 1);
    view->clickChip(7);
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
}

TEST_F(HistoryView, TheChosenCategoryIsMarked)
{
    addCategory(QStringLiteral("a"));
    addCategory(QStringLiteral("b"));
    const auto view = makeView();
    const auto isChosen = [&](int row) {
        return view->categories()->index(row).data(CategoryListModel::IsChosen).toBool();
    };
    press(*view, Qt::Key_Left);
    EXPECT_FALSE(isChosen(0));
    EXPECT_TRUE(isChosen(1));
    press(*view, Qt::Key_Left);
    EXPECT_TRUE(isChosen(0));
    EXPECT_FALSE(isChosen(1));
}

TEST_F(HistoryView, SelectedEntriesComeInTheOrderOfTheList)
{
    const auto view = makeView();
    const auto c = add("c");
    add("b");
    const auto a = add("a");
    view->setSelectedIds({c->id(), a->id(), QUuid::createUuid()});
    const auto selected = view->multiSelectedItems();
    ASSERT_EQ(selected.size(), 2U);
    EXPECT_EQ(selected[0], a);
    EXPECT_EQ(selected[1], c);
}

// Opening

TEST_F(HistoryView, ShowingThePanelPutsEverythingBack)
{
    const auto category = addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    const auto b = add("lark b");
    add("lark a");
    typeToSearch(*view, QStringLiteral("l"));
    m_queue.advanceBy(100ms);
    view->setSelectedFilterId(category->id());
    view->setCategorySearching(true);
    view->setCategorySearchText(QStringLiteral("x"));
    view->setSelectedIds({b->id()});
    press(*view, Qt::Key_Return);
    view->setSelectedIndex(1);
    m_notifications.post(notification::panelWillShow());
    EXPECT_EQ(view->selectedIndex(), 0);
    EXPECT_EQ(view->searchText(), QString());
    EXPECT_FALSE(view->isSearchExpanded());
    EXPECT_FALSE(view->isCategorySearching());
    EXPECT_EQ(view->categorySearchText(), QString());
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
    EXPECT_TRUE(view->selectedIds().empty());
    EXPECT_FALSE(view->isMultiSelectMode());
    EXPECT_FALSE(view->showCombinePanel());
    EXPECT_EQ(contents(*view).size(), 2);
}

TEST_F(HistoryView, TheListClaimsTheFocusThreeTimes)
{
    const auto view = makeView();
    view->setFocus(Focus::Elsewhere);
    m_notifications.post(notification::panelWillShow());
    EXPECT_FALSE(view->isViewFocused());
    for (const auto step : {50ms, 100ms, 150ms}) {
        view->setFocus(Focus::Elsewhere);
        m_queue.advanceBy(step - 1ms);
        EXPECT_FALSE(view->isViewFocused());
        m_queue.advanceBy(1ms);
        EXPECT_TRUE(view->isViewFocused());
    }
    view->setFocus(Focus::Elsewhere);
    m_queue.advanceBy(1s);
    EXPECT_FALSE(view->isViewFocused());
}

TEST_F(HistoryView, AClaimLeavesAFocusedSearchFieldAlone)
{
    for (const Focus field : {Focus::Search, Focus::CategorySearch}) {
        const auto view = makeView();
        m_notifications.post(notification::panelWillShow());
        view->setFocus(field);
        m_queue.advanceBy(1s);
        EXPECT_EQ(view->focus(), field);
    }
}

TEST_F(HistoryView, AViewThatIsGoneClaimsNothing)
{
    auto view = makeView();
    m_notifications.post(notification::panelWillShow());
    typeToSearch(*view, QStringLiteral("a"));
    view.reset();
    m_queue.advanceBy(1s);
    m_notifications.post(notification::panelWillShow());
}

// Typing

TEST_F(HistoryView, TypingOpensTheSearchWithTheKeysText)
{
    const auto view = makeView();
    EXPECT_TRUE(press(*view, Qt::Key_L, QStringLiteral("l")));
    EXPECT_TRUE(view->isSearchExpanded());
    EXPECT_TRUE(view->isSearchFocused());
    EXPECT_EQ(view->searchText(), QString());
    m_queue.advanceBy(100ms);
    EXPECT_EQ(view->searchText(), QStringLiteral("l"));
}

TEST_F(HistoryView, KeysThatComeBeforeTheFieldIsThereAreNotLost)
{
    const auto view = makeView();
    press(*view, Qt::Key_L, QStringLiteral("l"));
    m_queue.advanceBy(40ms);
    EXPECT_TRUE(press(*view, Qt::Key_A, QStringLiteral("a")));
    m_queue.advanceBy(60ms);
    EXPECT_EQ(view->searchText(), QStringLiteral("la"));
    EXPECT_FALSE(press(*view, Qt::Key_R, QStringLiteral("r"))) << "the field's own";
}

TEST_F(HistoryView, OnlyLettersDigitsSignsAndBlanksBeginASearch)
{
    struct Typed {
        QString text;
        bool begins;
    };
    const std::vector<Typed> keys{{QStringLiteral("a"), true}, {QStringLiteral("7"), true},
        {QStringLiteral("/"), true}, {QStringLiteral(" "), true}, {QStringLiteral("ж"), true},
        {QStringLiteral("漢"), true}, {QStringLiteral("\u0301"), true}, {QString(), false},
        {QStringLiteral("\b"), false}, {QStringLiteral("\x7f"), false}, {QStringLiteral("+"), false}};
    for (const Typed &typed : keys) {
        const auto view = makeView();
        EXPECT_EQ(press(*view, Qt::Key_unknown, typed.text), typed.begins) << typed.text.toStdString();
        EXPECT_EQ(view->isSearchExpanded(), typed.begins);
    }
}

TEST_F(HistoryView, AKeyWithCommandBeginsNoSearch)
{
    const auto view = makeView();
    EXPECT_FALSE(press(*view, Qt::Key_A, QStringLiteral("a"), Qt::ControlModifier));
    EXPECT_FALSE(press(*view, Qt::Key_A, QStringLiteral("a"), Qt::MetaModifier));
    EXPECT_FALSE(view->isSearchExpanded());
}

TEST_F(HistoryView, CommandFOpensAndClosesTheSearch)
{
    const auto view = makeView();
    EXPECT_TRUE(press(*view, Qt::Key_F, QStringLiteral("\x06"), Qt::ControlModifier));
    EXPECT_TRUE(view->isSearchExpanded());
    EXPECT_FALSE(view->isSearchFocused());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isSearchFocused());
    view->setSearchText(QStringLiteral("lark"));
    EXPECT_TRUE(press(*view, Qt::Key_F, QStringLiteral("f"), Qt::MetaModifier));
    EXPECT_FALSE(view->isSearchExpanded());
    EXPECT_EQ(view->searchText(), QString());
    EXPECT_FALSE(press(*view, Qt::Key_F, QStringLiteral("\x06"), Qt::ControlModifier | Qt::ShiftModifier));
}

TEST_F(HistoryView, DeletingTheLastCharacterClosesTheSearch)
{
    const auto view = makeView();
    typeToSearch(*view, QStringLiteral("l"));
    m_queue.advanceBy(100ms);
    view->setSearchText(QString());
    EXPECT_FALSE(view->isSearchExpanded());
    EXPECT_FALSE(view->isSearchFocused());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isViewFocused());
}

TEST_F(HistoryView, EscapeGoesBackFromTheSearchThenFromTheFilterThenFromThePanel)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    press(*view, Qt::Key_Right);
    typeToSearch(*view, QStringLiteral("l"));
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(press(*view, Qt::Key_Escape));
    EXPECT_FALSE(view->isSearchExpanded());
    EXPECT_EQ(view->searchText(), QString());
    EXPECT_NE(view->selectedFilterId(), std::nullopt);
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isViewFocused());
    EXPECT_TRUE(press(*view, Qt::Key_Escape));
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
    EXPECT_FALSE(press(*view, Qt::Key_Escape));
}

TEST_F(HistoryView, EscapeBeforeTheFieldIsThereTypesNothing)
{
    const auto view = makeView();
    press(*view, Qt::Key_L, QStringLiteral("l"));
    press(*view, Qt::Key_Escape);
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->searchText(), QString());
    EXPECT_FALSE(view->isSearchExpanded());
}

TEST_F(HistoryView, AFieldThatIsOpenedAgainAtOnceKeepsTheFocus)
{
    const auto view = makeView();
    typeToSearch(*view, QStringLiteral("l"));
    m_queue.advanceBy(100ms);
    press(*view, Qt::Key_Escape);
    m_queue.advanceBy(80ms);
    m_notifications.post(notification::panelWillShow());
    typeToSearch(*view, QStringLiteral("w"));
    m_queue.advanceBy(1s);
    EXPECT_TRUE(view->isSearchFocused());
    EXPECT_EQ(view->searchText(), QStringLiteral("w"));
}

TEST_F(HistoryView, AFieldThatIsClosedAgainAtOnceGetsNoFocus)
{
    const auto view = makeView();
    press(*view, Qt::Key_F, QString(), Qt::ControlModifier);
    press(*view, Qt::Key_F, QString(), Qt::ControlModifier);
    m_queue.advanceBy(1s);
    EXPECT_FALSE(view->isSearchFocused());
}

TEST_F(HistoryView, TheArrowsMoveTheCursorOfAnOpenSearch)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    press(*view, Qt::Key_F, QString(), Qt::ControlModifier);
    EXPECT_FALSE(press(*view, Qt::Key_Left));
    EXPECT_FALSE(press(*view, Qt::Key_Right));
    EXPECT_EQ(view->selectedFilterId(), std::nullopt);
}

} // namespace
