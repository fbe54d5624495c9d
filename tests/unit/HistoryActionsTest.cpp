#include "support/HistoryViewFixture.h"

#include "base/Notifications.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{

using Focus = ClipboardHistoryView::Focus;

constexpr quint16 ReturnCode = 36;
constexpr quint16 DeleteCode = 51;
constexpr quint16 EscapeCode = 53;
constexpr quint16 DownCode = 125;
constexpr quint16 UpCode = 126;

class HistoryActions : public HistoryViewFixture
{
protected:
    /// A key as the application gets it: the monitor first, then its deferred work.
    LocalEventFate pressKey(quint16 code, EventModifier modifiers = EventModifier::None)
    {
        const LocalEventFate fate = m_events.press(code, modifiers);
        m_queue.drain();
        return fate;
    }
    std::vector<std::shared_ptr<ClipboardItem>> addSome(int count)
    {
        std::vector<std::shared_ptr<ClipboardItem>> items;
        for (int i = count; i > 0; --i)
            items.insert(items.begin(), add(QByteArray::number(i)));
        return items;
    }
};

// Clicks

TEST_F(HistoryActions, APlainClickSelectsAndPastes)
{
    const auto view = makeView();
    addSome(3);
    view->select(1, Qt::NoModifier);
    view->paste(1);
    EXPECT_EQ(view->selectedIndex(), 1);
    EXPECT_EQ(m_picked, QByteArrayList{"2"});
}

TEST_F(HistoryActions, ACommandClickWithoutASelectionPastesTheRow)
{
    const auto view = makeView();
    const auto items = addSome(3);
    view->select(2, Qt::ControlModifier);
    EXPECT_EQ(view->selectedIds(), (std::set<QUuid>{items[2]->id()}));
    EXPECT_TRUE(view->isMultiSelectMode());
    view->paste(2);
    EXPECT_EQ(m_picked, QByteArrayList{"3"});
}

TEST_F(HistoryActions, ACommandClickOnASecondRowOpensTheCombinePanel)
{
    const auto view = makeView();
    addSome(3);
    view->select(0, Qt::MetaModifier);
    view->select(2, Qt::MetaModifier);
    view->paste(2);
    EXPECT_TRUE(view->showCombinePanel());
    EXPECT_TRUE(m_picked.isEmpty());
}

TEST_F(HistoryActions, ACommandClickOnTheOnlySelectedRowEndsTheSelectionAndPastesIt)
{
    const auto view = makeView();
    addSome(2);
    view->select(1, Qt::ControlModifier);
    view->select(1, Qt::ControlModifier);
    EXPECT_TRUE(view->selectedIds().empty());
    EXPECT_FALSE(view->isMultiSelectMode());
    view->paste(1);
    EXPECT_EQ(m_picked, QByteArrayList{"2"});
}

TEST_F(HistoryActions, APlainClickEndsAMultiSelection)
{
    const auto view = makeView();
    addSome(3);
    view->select(0, Qt::ControlModifier);
    view->select(1, Qt::ControlModifier);
    view->select(2, Qt::NoModifier);
    EXPECT_TRUE(view->selectedIds().empty());
    EXPECT_FALSE(view->isMultiSelectMode());
}

TEST_F(HistoryActions, WithoutAControllerAPasteCopies)
{
    auto view = makeViewWithoutController();
    add("lark");
    view->paste(0);
    ASSERT_TRUE(m_pasteboard.advance());
    EXPECT_EQ(m_pasteboard.data(PasteboardType::String), QByteArray("lark"));
}

// Multi-selection by keys

TEST_F(HistoryActions, ShiftDownTakesBothRows)
{
    const auto view = makeView();
    const auto items = addSome(3);
    EXPECT_EQ(pressKey(DownCode, EventModifier::Shift), LocalEventFate::Consumed);
    EXPECT_EQ(view->selectedIndex(), 1);
    EXPECT_EQ(view->selectedIds(), (std::set<QUuid>{items[0]->id(), items[1]->id()}));
    EXPECT_TRUE(view->isMultiSelectMode());
    EXPECT_EQ(m_sound.clickCount, 1);
}

TEST_F(HistoryActions, ShiftDownAtTheLastRowTakesItAloneAndIsSilent)
{
    const auto view = makeView();
    const auto items = addSome(1);
    pressKey(DownCode, EventModifier::Shift);
    EXPECT_EQ(view->selectedIds(), (std::set<QUuid>{items[0]->id()}));
    EXPECT_FALSE(view->isMultiSelectMode());
    EXPECT_EQ(m_sound.clickCount, 0);
}

TEST_F(HistoryActions, TurningBackTakesNoRowOut)
{
    const auto view = makeView();
    const auto items = addSome(3);
    pressKey(DownCode, EventModifier::Shift);
    pressKey(DownCode, EventModifier::Shift);
    pressKey(UpCode, EventModifier::Shift);
    EXPECT_EQ(view->selectedIndex(), 1);
    EXPECT_EQ(view->selectedCount(), 3);
}

TEST_F(HistoryActions, ShiftDownInAnEmptyListDoesNothing)
{
    const auto view = makeView();
    pressKey(DownCode, EventModifier::Shift);
    EXPECT_EQ(view->selectedCount(), 0);
}

TEST_F(HistoryActions, TheMonitorDefersWhatItDoes)
{
    const auto view = makeView();
    addSome(2);
    EXPECT_EQ(m_events.press(DownCode, EventModifier::Shift), LocalEventFate::Consumed);
    EXPECT_EQ(view->selectedIndex(), 0);
    m_queue.drain();
    EXPECT_EQ(view->selectedIndex(), 1);
}

TEST_F(HistoryActions, ReturnWithOneSelectedEntryPastesTheHighlightedOne)
{
    const auto view = makeView();
    const auto items = addSome(3);
    view->setSelectedIds({items[2]->id()});
    press(*view, Qt::Key_Return);
    EXPECT_EQ(m_picked, QByteArrayList{"1"});
}

// Combining

TEST_F(HistoryActions, ReturnWithTwoSelectedEntriesCombinesThemInTheOrderOfTheList)
{
    addTemplate(QStringLiteral("New Line"), QStringLiteral("\n"));
    const auto view = makeView();
    const auto items = addSome(3);
    view->setSelectedIds({items[2]->id(), items[0]->id()});
    press(*view, Qt::Key_Return);
    ASSERT_TRUE(view->showCombinePanel());
    EXPECT_EQ(view->combinePanel()->itemTexts(), (QStringList{QStringLiteral("1"), QStringLiteral("3")}));
    pressKey(ReturnCode);
    EXPECT_FALSE(view->showCombinePanel());
    EXPECT_EQ(m_picked, QByteArrayList{"1\n3"});
    ASSERT_TRUE(m_pasteboard.advance());
    EXPECT_EQ(m_pasteboard.data(PasteboardType::String), QByteArray("1\n3"));
    EXPECT_TRUE(view->selectedIds().empty());
    const auto newest = view->filteredItems()->record(0);
    EXPECT_EQ(newest->contentUtf8(), "1\n3");
    EXPECT_EQ(newest->type(), ClipboardItemType::Text);
    EXPECT_EQ(newest->sourceAppName(), std::nullopt);
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(HistoryActions, EscapeInTheCombinePanelEndsTheSelectionAsWell)
{
    const auto view = makeView();
    const auto items = addSome(2);
    view->setSelectedIds({items[0]->id(), items[1]->id()});
    press(*view, Qt::Key_Return);
    EXPECT_EQ(pressKey(EscapeCode), LocalEventFate::Consumed);
    EXPECT_FALSE(view->showCombinePanel());
    EXPECT_TRUE(view->selectedIds().empty());
    EXPECT_TRUE(m_picked.isEmpty());
}

TEST_F(HistoryActions, TheNextShowingFindsTheCombinePanelClosed)
{
    const auto view = makeView();
    const auto items = addSome(2);
    view->setSelectedIds({items[0]->id(), items[1]->id()});
    press(*view, Qt::Key_Return);
    m_notifications.post(notification::panelWillShow());
    EXPECT_FALSE(view->showCombinePanel());
}

// Editing

TEST_F(HistoryActions, AnEditIsStoredAsItIsTyped)
{
    const auto view = makeView();
    const auto item = add("lark");
    press(*view, Qt::Key_E, QString(), Qt::ControlModifier);
    ASSERT_EQ(view->editingItemId(), item->id());
    EXPECT_EQ(view->editingIndex(), 0);
    EXPECT_EQ(view->editText(), QStringLiteral("lark"));
    m_queue.advanceBy(100ms);
    EXPECT_EQ(view->focus(), Focus::Edit);
    view->setEditText(QStringLiteral("  zwei Lerchen, grün\n"));
    EXPECT_EQ(pressKey(ReturnCode, EventModifier::Shift), LocalEventFate::PassedOn);
    EXPECT_EQ(pressKey(ReturnCode), LocalEventFate::Consumed);
    EXPECT_EQ(item->content(), QStringLiteral("  zwei Lerchen, grün\n"));
    EXPECT_EQ(item->characterCount(), 21);
    EXPECT_EQ(view->editingItemId(), std::nullopt);
    EXPECT_EQ(view->editText(), QString());
    EXPECT_FALSE(m_store.context().hasChanges());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isViewFocused());
}

TEST_F(HistoryActions, AnEditMayEmptyTheText)
{
    const auto view = makeView();
    const auto item = add("lark");
    view->startEditing(0);
    view->setEditText(QString());
    view->saveEdit();
    EXPECT_EQ(item->content(), QString());
    EXPECT_EQ(item->characterCount(), 0);
}

TEST_F(HistoryActions, ACancelledEditChangesNothing)
{
    const auto view = makeView();
    const auto item = add("lark");
    view->startEditing(0);
    view->setEditText(QStringLiteral("wren"));
    EXPECT_EQ(pressKey(EscapeCode), LocalEventFate::Consumed);
    EXPECT_EQ(item->content(), QStringLiteral("lark"));
    EXPECT_EQ(view->editingItemId(), std::nullopt);
}

TEST_F(HistoryActions, AnEntryThatIsFilteredOutIsSavedAllTheSame)
{
    const auto view = makeView();
    const auto item = add("lark");
    view->startEditing(0);
    view->setSearchText(QStringLiteral("nothing"));
    EXPECT_EQ(view->editingIndex(), -1);
    view->setEditText(QStringLiteral("wren"));
    view->saveEdit();
    EXPECT_EQ(item->content(), QStringLiteral("wren"));
}

TEST_F(HistoryActions, AnEditOfAnEntryThatIsGoneIsForgotten)
{
    const auto view = makeView();
    const auto item = add("lark");
    view->startEditing(0);
    m_store.context().remove(item);
    view->setEditText(QStringLiteral("wren"));
    view->saveEdit();
    EXPECT_EQ(view->editingItemId(), std::nullopt);
    EXPECT_EQ(m_store.context().fetchCount<ClipboardItem>(), 0);
}

TEST_F(HistoryActions, AnOpenEditStaysWhenThePanelIsShownAgain)
{
    const auto view = makeView();
    add("lark");
    view->startEditing(0);
    view->setEditText(QStringLiteral("half written"));
    m_notifications.post(notification::panelWillShow());
    m_queue.advanceBy(1s);
    EXPECT_EQ(view->editText(), QStringLiteral("half written"));
    EXPECT_EQ(view->focus(), Focus::Edit);
}

TEST_F(HistoryActions, AHugeTextIsNotEditedAndTheReasonIsSaid)
{
    const auto view = makeView();
    add("small");
    add(QByteArray(50'000'000, 'x'));
    ASSERT_TRUE(m_store.context().save());
    view->startEditing(0);
    EXPECT_EQ(view->editingItemId(), std::nullopt);
    EXPECT_TRUE(view->editRefusal().contains(QStringLiteral("too large")))
        << view->editRefusal().toStdString();
    press(*view, Qt::Key_Down);
    EXPECT_EQ(view->editRefusal(), QString());
}

TEST_F(HistoryActions, EscapeClosesTheCardFirstAndTheSelectionNext)
{
    const auto view = makeView();
    const auto items = addSome(2);
    view->setSelectedIds({items[0]->id()});
    view->startEditing(0);
    pressKey(EscapeCode);
    EXPECT_EQ(view->selectedCount(), 1);
    EXPECT_TRUE(press(*view, Qt::Key_Escape));
    EXPECT_EQ(view->selectedCount(), 0);
}

// New entries

TEST_F(HistoryActions, ANewEntryIsTrimmedTypedAndPutUnderItsCategory)
{
    struct Typed {
        QString text;
        QByteArray content;
        ClipboardItemType type;
    };
    const auto texts = addCategory(QStringLiteral("Text"));
    const auto urls = addCategory(QStringLiteral("URL"));
    const auto view = makeView();
    for (const Typed &typed : {Typed{QStringLiteral(" \n lark \n"), "lark", ClipboardItemType::Text},
             Typed{QStringLiteral("https://example.org/a"), "https://example.org/a", ClipboardItemType::Url},
             Typed{QStringLiteral("example.org"), "example.org", ClipboardItemType::Text},
             Typed{QStringLiteral("mailto:ann@example.org"), "mailto:ann@example.org",
                 ClipboardItemType::Text}}) {
        press(*view, Qt::Key_N, QString(), Qt::ControlModifier);
        ASSERT_TRUE(view->isCreatingNew());
        EXPECT_EQ(view->newItemText(), QString());
        view->setNewItemText(typed.text);
        EXPECT_EQ(pressKey(ReturnCode), LocalEventFate::Consumed);
        EXPECT_FALSE(view->isCreatingNew());
        const auto made = view->filteredItems()->record(0);
        EXPECT_EQ(made->contentUtf8(), typed.content);
        EXPECT_EQ(made->type(), typed.type);
        EXPECT_EQ(made->categoryId(), typed.type == ClipboardItemType::Url ? urls->id() : texts->id());
        EXPECT_FALSE(m_store.context().hasChanges());
    }
}

TEST_F(HistoryActions, BlanksAloneMakeNoEntry)
{
    const auto view = makeView();
    view->startCreatingNew();
    view->setNewItemText(QStringLiteral(" \n\t "));
    view->saveNewItem();
    EXPECT_EQ(m_store.context().fetchCount<ClipboardItem>(), 0);
    EXPECT_FALSE(view->isCreatingNew());
}

TEST_F(HistoryActions, WithoutItsCategoryANewEntryHasNone)
{
    const auto view = makeView();
    view->startCreatingNew();
    view->setNewItemText(QStringLiteral("lark"));
    view->saveNewItem();
    EXPECT_EQ(view->filteredItems()->record(0)->categoryId(), std::nullopt);
}

TEST_F(HistoryActions, ACancelledNewEntryIsForgotten)
{
    const auto view = makeView();
    view->startCreatingNew();
    m_queue.advanceBy(100ms);
    EXPECT_EQ(view->focus(), Focus::Create);
    view->setNewItemText(QStringLiteral("lark"));
    pressKey(EscapeCode);
    EXPECT_FALSE(view->isCreatingNew());
    EXPECT_EQ(view->newItemText(), QString());
    EXPECT_EQ(m_store.context().fetchCount<ClipboardItem>(), 0);
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isViewFocused());
}

// Pins, categories, deletion

TEST_F(HistoryActions, APinMovesAnEntryToTheTopAndIsSaved)
{
    const auto view = makeView();
    addSome(3);
    view->togglePin(2);
    EXPECT_EQ(contents(*view), (QByteArrayList{"3", "1", "2"}));
    EXPECT_TRUE(view->isPinned(0));
    EXPECT_FALSE(m_store.context().hasChanges());
    view->togglePin(0);
    EXPECT_EQ(contents(*view), (QByteArrayList{"1", "2", "3"}));
}

TEST_F(HistoryActions, ADeletedEntryIsGone)
{
    const auto view = makeView();
    addSome(3);
    view->deleteItem(1);
    EXPECT_EQ(contents(*view), (QByteArrayList{"1", "3"}));
    EXPECT_FALSE(m_store.context().hasChanges());
    view->deleteItem(9);
    EXPECT_EQ(contents(*view).size(), 2);
}

TEST_F(HistoryActions, ACategoryIsAssignedAndTakenAway)
{
    addCategory(QStringLiteral("Work"));
    const auto home = addCategory(QStringLiteral("Home"));
    const auto view = makeView();
    const auto item = add("lark");
    EXPECT_EQ(view->categoryNames(), (QStringList{QStringLiteral("Work"), QStringLiteral("Home")}));
    EXPECT_EQ(view->assignedCategory(0), -1);
    view->assignCategory(0, 1);
    EXPECT_EQ(item->categoryId(), home->id());
    EXPECT_EQ(view->assignedCategory(0), 1);
    view->assignCategory(0, 7);
    EXPECT_EQ(item->categoryId(), home->id());
    view->assignCategory(0, -1);
    EXPECT_EQ(item->categoryId(), std::nullopt);
}

TEST_F(HistoryActions, ClearingLeavesExactlyThePinnedEntries)
{
    const auto view = makeView();
    const auto items = addSome(13);
    for (const size_t pinned : {1U, 5U, 12U})
        items[pinned]->setPinned(true);
    view->clearAllHistory();
    EXPECT_EQ(contents(*view), (QByteArrayList{"2", "6", "13"}));
    EXPECT_FALSE(m_store.context().hasChanges());
}

TEST_F(HistoryActions, SettingsAreAskedFor)
{
    int asked = 0;
    const auto observer = m_notifications.addObserver(notification::openSettings(), [&asked] { ++asked; });
    makeView()->openSettings();
    EXPECT_EQ(asked, 1);
}

// Category search

TEST_F(HistoryActions, TabOpensTheCategorySearchAndReturnChooses)
{
    addCategory(QStringLiteral("Text"));
    const auto urls = addCategory(QStringLiteral("URL"));
    const auto view = makeView();
    addSome(2);
    press(*view, Qt::Key_Tab, QStringLiteral("\t"));
    EXPECT_TRUE(view->isCategorySearching());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isCategorySearchFocused());
    press(*view, Qt::Key_Down);
    EXPECT_EQ(view->categorySearchIndex(), 1);
    EXPECT_EQ(m_sound.clickCount, 1);
    press(*view, Qt::Key_Return);
    EXPECT_EQ(view->selectedFilterId(), urls->id());
    EXPECT_FALSE(view->isCategorySearching());
    EXPECT_TRUE(view->isSearchExpanded());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isSearchFocused());
}

TEST_F(HistoryActions, TheSlashPreferenceChangesTheKey)
{
    setPreference("categorySearchKey", "slash");
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    EXPECT_FALSE(press(*view, Qt::Key_Tab, QStringLiteral("\t")));
    EXPECT_FALSE(view->isCategorySearching());
    EXPECT_TRUE(press(*view, Qt::Key_Slash, QStringLiteral("/")));
    EXPECT_TRUE(view->isCategorySearching());
}

TEST_F(HistoryActions, WithTabASlashBeginsASearch)
{
    const auto view = makeView();
    press(*view, Qt::Key_Slash, QStringLiteral("/"));
    m_queue.advanceBy(100ms);
    EXPECT_EQ(view->searchText(), QStringLiteral("/"));
}

TEST_F(HistoryActions, DeleteInAnEmptySearchOfAFilterGoesBackToTheCategorySearch)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    press(*view, Qt::Key_Tab, QStringLiteral("\t"));
    press(*view, Qt::Key_Return);
    ASSERT_TRUE(view->hasFilter());
    EXPECT_EQ(pressKey(DeleteCode), LocalEventFate::Consumed);
    EXPECT_FALSE(view->hasFilter());
    EXPECT_TRUE(view->isCategorySearching());
    EXPECT_FALSE(view->isSearchExpanded());
    m_queue.advanceBy(100ms);
    EXPECT_TRUE(view->isCategorySearchFocused());
}

TEST_F(HistoryActions, ReturnWithoutAMatchingCategoryChoosesNothing)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    press(*view, Qt::Key_Tab, QStringLiteral("\t"));
    view->setCategorySearchText(QStringLiteral("zzz"));
    EXPECT_TRUE(press(*view, Qt::Key_Return));
    EXPECT_TRUE(view->isCategorySearching());
    EXPECT_FALSE(view->hasFilter());
}

// Scrolling

TEST_F(HistoryActions, AWheelMovesTheHighlightByOne)
{
    const auto view = makeView();
    addSome(3);
    EXPECT_EQ(m_events.scroll(-1, false), LocalEventFate::Consumed);
    EXPECT_EQ(view->selectedIndex(), 1);
    m_events.scroll(-5, false);
    EXPECT_EQ(view->selectedIndex(), 2);
    m_events.scroll(-1, false);
    EXPECT_EQ(view->selectedIndex(), 2);
    m_events.scroll(0, false);
    m_events.scroll(1, false);
    EXPECT_EQ(view->selectedIndex(), 1);
    EXPECT_EQ(m_sound.clickCount, 0);
}

TEST_F(HistoryActions, PreciseScrollingMovesItAfterMoreThanTwentyPoints)
{
    const auto view = makeView();
    addSome(3);
    m_events.scroll(-15, true);
    EXPECT_EQ(view->selectedIndex(), 0);
    m_events.scroll(-5, true);
    EXPECT_EQ(view->selectedIndex(), 0) << "exactly twenty";
    m_events.scroll(-0.5, true);
    EXPECT_EQ(view->selectedIndex(), 1);
    m_events.scroll(-20, true);
    EXPECT_EQ(view->selectedIndex(), 1) << "the count has begun anew";
    m_events.scroll(19, true);
    EXPECT_EQ(view->selectedIndex(), 1) << "the remainder is kept: -1";
    m_events.scroll(22, true);
    EXPECT_EQ(view->selectedIndex(), 0);
}

// Sound, border and end

TEST_F(HistoryActions, MovesClickAndRefusedOnesAreSilent)
{
    addCategory(QStringLiteral("Text"));
    const auto view = makeView();
    addSome(2);
    press(*view, Qt::Key_Up);
    EXPECT_EQ(m_sound.clickCount, 0);
    press(*view, Qt::Key_Down);
    press(*view, Qt::Key_Down);
    EXPECT_EQ(m_sound.clickCount, 1);
    press(*view, Qt::Key_Right);
    EXPECT_EQ(m_sound.clickCount, 2);
}

TEST_F(HistoryActions, WithoutThePreferenceNothingClicks)
{
    setPreference("playSoundOnNavigate", "false");
    const auto view = makeView();
    addSome(2);
    press(*view, Qt::Key_Down);
    EXPECT_EQ(m_sound.clickCount, 0);
}

TEST_F(HistoryActions, TheBorderIsThePreferredColourOrOrange)
{
    const auto view = makeView();
    EXPECT_EQ(view->borderColor(), QColor(0xff, 0x8c, 0x00));
    setPreference("borderColorHex", "#34C759");
    EXPECT_EQ(view->borderColor(), QColor(0x34, 0xc7, 0x59));
    setPreference("borderColorHex", "blue");
    EXPECT_EQ(view->borderColor(), QColor(0xff, 0x8c, 0x00));
}

TEST_F(HistoryActions, AViewThatHasDisappearedHearsNoKeys)
{
    const auto view = makeView();
    addSome(2);
    view->disappear();
    EXPECT_EQ(m_events.press(DownCode, EventModifier::Shift), LocalEventFate::PassedOn);
    EXPECT_EQ(m_events.scroll(-1, false), LocalEventFate::PassedOn);
}

} // namespace
