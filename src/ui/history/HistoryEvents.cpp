#include "ui/history/ClipboardHistoryView.h"

#include "ui/style/ReadingDirection.h"

#include <array>

using historykeys::Action;

namespace
{

/// Precise scrolling moves the highlight after more than so many points.
constexpr double ScrollThreshold = 20.0;
/// A field takes the focus, and a first text, once it is there.
constexpr std::chrono::milliseconds FieldDelay{100};

historykeys::CategorySearchKey categorySearchKey(const UserDefaults &defaults)
{
    using historykeys::CategorySearchKey;
    const QString key = defaults.value(preference::CategorySearchKey);
    if (key == QLatin1String("tab"))
        return CategorySearchKey::Tab;
    return key == QLatin1String("slash") ? CategorySearchKey::Slash : CategorySearchKey::Neither;
}

} // namespace

void ClipboardHistoryView::appear()
{
    resetState();
    m_scrollMonitor = m_surroundings.events.addScrollMonitor(
        [this](const LocalScrollEvent &event) { return scroll(event); });
    m_keyMonitor = m_surroundings.events.addKeyDownMonitor(
        [this](const LocalKeyEvent &event) { return keyDown(event); });
}

void ClipboardHistoryView::disappear()
{
    m_scrollMonitor.reset();
    m_keyMonitor.reset();
}

historykeys::State ClipboardHistoryView::keyState() const
{
    return {.isEditing = m_editingItemId.has_value(),
        .isCreating = m_isCreatingNew,
        .isCombining = showCombinePanel(),
        .isCategorySearching = m_isCategorySearching,
        .isSearchExpanded = m_isSearchExpanded,
        .hasSearchText = !m_searchText.isEmpty(),
        .hasFilter = hasFilter(),
        .selectedCount = selectedCount(),
        .categorySearchKey = categorySearchKey(m_surroundings.defaults)};
}

LocalEventFate ClipboardHistoryView::keyDown(const LocalKeyEvent &event)
{
    const Action action = historykeys::monitorAction(event, keyState());
    if (action == Action::Pass)
        return LocalEventFate::PassedOn;
    m_surroundings.queue.async(m_lifetime.guard([this, action] { perform(action, QString()); }));
    return LocalEventFate::Consumed;
}

bool ClipboardHistoryView::handleKey(int key, int modifiers, const QString &text)
{
    const int readKey = inReadingDirection<int>(key, Qt::Key_Left, Qt::Key_Right);
    const historykeys::Press press = historykeys::pressOf(readKey, modifiers, text);
    // A letter that comes before the search field is there belongs to the search as well.
    const bool isFieldComing = !m_typedText.isEmpty();
    if (isFieldComing && press.startsSearch && !press.hasCommandOrControl) {
        m_typedText += text;
        return true;
    }
    const Action action = historykeys::viewAction(press, keyState());
    perform(action, text);
    return action != Action::Pass;
}

void ClipboardHistoryView::perform(Action action, const QString &text)
{
    switch (action) {
    case Action::Pass:
        return;
    case Action::SwapFilterForCategorySearch:
        return swapFilterForCategorySearch();
    case Action::ChooseCategory:
        return chooseCategory(m_categorySearchIndex);
    case Action::Combine:
        return openCombinePanel();
    case Action::Paste:
        return pasteItem(highlightedItem());
    case Action::CloseCombinePanel:
        return closeCombinePanel();
    case Action::ClearSelection:
        return endMultiSelection();
    case Action::CloseCategorySearch:
    case Action::ToggleCategorySearch:
        return toggleCategorySearch();
    case Action::CloseSearch:
        return closeSearch();
    case Action::ClearFilter:
        setSelectedFilterId(std::nullopt);
        return setSelectedIndex(0);
    case Action::ToggleSearch:
        return toggleSearch();
    case Action::TypeToSearch:
        return typeToSearch(text);
    default:
        performMove(action);
        return performEditing(action);
    }
}

void ClipboardHistoryView::performMove(Action action)
{
    switch (action) {
    case Action::MoveDown:
        return moveSelection(1, Sound::Click);
    case Action::MoveUp:
        return moveSelection(-1, Sound::Click);
    case Action::ExtendDown:
        return extendSelection(1);
    case Action::ExtendUp:
        return extendSelection(-1);
    case Action::MoveCategorySearchDown:
        return moveCategorySearch(1);
    case Action::MoveCategorySearchUp:
        return moveCategorySearch(-1);
    case Action::PreviousCategory:
        navigateCategory(-1);
        return click();
    case Action::NextCategory:
        navigateCategory(1);
        return click();
    default:
        return;
    }
}

void ClipboardHistoryView::performEditing(Action action)
{
    switch (action) {
    case Action::SaveEdit:
        return saveEdit();
    case Action::SaveNewItem:
        return saveNewItem();
    case Action::CancelEdit:
        return cancelEdit();
    case Action::CancelCreate:
        return cancelCreate();
    case Action::EditItem:
        return startEditing(m_selectedIndex);
    case Action::CreateItem:
        return startCreatingNew();
    default:
        return;
    }
}

void ClipboardHistoryView::click()
{
    if (m_surroundings.defaults.value(preference::PlaySoundOnNavigate))
        m_surroundings.sound.playNavigationClick();
}

void ClipboardHistoryView::moveSelection(int distance, Sound sound)
{
    const int index = m_selectedIndex + distance;
    if (index < 0 || index >= m_filteredItems.rowCount())
        return;
    setSelectedIndex(index);
    if (sound == Sound::Click)
        click();
}

void ClipboardHistoryView::moveCategorySearch(int distance)
{
    const int index = m_categorySearchIndex + distance;
    if (index < 0 || index >= m_matchingCategories.rowCount())
        return;
    m_categorySearchIndex = index;
    Q_EMIT categorySearchChanged();
    click();
}

void ClipboardHistoryView::extendSelection(int distance)
{
    const auto start = highlightedItem();
    if (!start)
        return;
    std::set<QUuid> ids = m_selectedIds;
    ids.insert(start->id());
    const auto end = m_filteredItems.record(m_selectedIndex + distance);
    if (end) {
        ids.insert(end->id());
        setSelectedIndex(m_selectedIndex + distance);
        m_isMultiSelectMode = true;
        click();
    }
    setSelectedIds(std::move(ids));
}

LocalEventFate ClipboardHistoryView::scroll(const LocalScrollEvent &event)
{
    int distance = 0;
    if (!event.hasPreciseScrollingDeltas) {
        distance = event.scrollingDeltaY > 0 ? -1 : event.scrollingDeltaY < 0 ? 1 : 0;
    } else {
        m_scrollAccumulator += event.scrollingDeltaY;
        if (m_scrollAccumulator > ScrollThreshold)
            distance = -1;
        else if (m_scrollAccumulator < -ScrollThreshold)
            distance = 1;
        if (distance != 0)
            m_scrollAccumulator = 0;
    }
    if (distance != 0)
        moveSelection(distance, Sound::None);
    return LocalEventFate::Consumed;
}

void ClipboardHistoryView::typeToSearch(const QString &text)
{
    setSearchExpanded(true);
    setFocus(Focus::Search);
    m_typedText = text;
    m_surroundings.queue.asyncAfter(FieldDelay, m_lifetime.guard([this] {
        if (!m_typedText.isEmpty())
            setSearchText(std::exchange(m_typedText, QString()));
    }));
}

void ClipboardHistoryView::toggleSearch()
{
    setSearchExpanded(!m_isSearchExpanded);
    if (m_isSearchExpanded)
        setFocusLater(Focus::Search);
    else
        setSearchText(QString());
}

void ClipboardHistoryView::closeSearch()
{
    setSearchExpanded(false);
    setSearchText(QString());
    setFocusLater(Focus::View);
}

void ClipboardHistoryView::toggleCategorySearch()
{
    setCategorySearching(!m_isCategorySearching);
    if (!m_isCategorySearching) {
        setCategorySearchText(QString());
        setFocusLater(Focus::View);
        return;
    }
    m_categorySearchIndex = 0;
    Q_EMIT categorySearchChanged();
    setFocusLater(Focus::CategorySearch);
}

void ClipboardHistoryView::swapFilterForCategorySearch()
{
    setSelectedFilterId(std::nullopt);
    setCategorySearching(true);
    setSearchExpanded(false);
    setFocusLater(Focus::CategorySearch);
}
