#include "ui/history/ClipboardHistoryView.h"

#include "base/Notifications.h"
#include "ui/history/CategoryFilter.h"

#include <algorithm>
#include <array>

namespace
{

/// The panel is still being shown when the state is reset, and one early claim for the focus can be lost.
constexpr std::array FocusClaims{
    std::chrono::milliseconds(50), std::chrono::milliseconds(150), std::chrono::milliseconds(300)};
/// A field takes the focus once it is there.
constexpr std::chrono::milliseconds FocusDelay{100};

} // namespace

ClipboardHistoryView::ClipboardHistoryView(const Surroundings &surroundings, ItemSelected onItemSelected)
    : m_surroundings(surroundings)
    , m_onItemSelected(std::move(onItemSelected))
    , m_search(surroundings.modelContext, surroundings.queue, surroundings.caseRule)
    , m_filteredItems(surroundings.modelContext, surroundings.clock)
    , m_categories(surroundings.modelContext)
{
    m_search.onAnswerChanged = [this](const auto &item) { m_filteredItems.reconsider(item); };
    m_categories.onChanged = [this] { categoriesChanged(); };
    connect(&m_filteredItems, &QAbstractItemModel::rowsRemoved, this,
        &ClipboardHistoryView::keepSelectionInRange);
    m_panelWillShow =
        surroundings.notifications.addObserver(notification::panelWillShow(), [this] { resetState(); });
}

std::shared_ptr<ClipCategory> ClipboardHistoryView::selectedCategory() const
{
    return m_selectedFilterId ? m_categories.category(*m_selectedFilterId) : nullptr;
}

std::vector<std::shared_ptr<ClipCategory>> ClipboardHistoryView::matchingCategories() const
{
    std::vector<std::shared_ptr<ClipCategory>> matching;
    std::optional<text::SearchPattern> pattern;
    if (!m_categorySearchText.isEmpty())
        pattern.emplace(m_categorySearchText, m_surroundings.caseRule);
    for (const auto &category : m_categories.rows()) {
        if (!pattern || text::localizedCaseInsensitiveContains(category->name().toUtf8(), *pattern))
            matching.push_back(category);
    }
    return matching;
}

std::vector<std::shared_ptr<ClipboardItem>> ClipboardHistoryView::multiSelectedItems() const
{
    std::vector<std::shared_ptr<ClipboardItem>> selected;
    for (const auto &item : m_filteredItems.rows()) {
        if (m_selectedIds.contains(item->id()))
            selected.push_back(item);
    }
    return selected;
}

void ClipboardHistoryView::setSearchText(const QString &searchText)
{
    if (searchText == m_searchText)
        return;
    m_searchText = searchText;
    m_search.seek(searchText);
    applyFilter();
    setSelectedIndex(0);
    Q_EMIT searchTextChanged();
    if (searchText.isEmpty() && m_isSearchExpanded) {
        setSearchExpanded(false);
        setFocusLater(Focus::View);
    }
}

void ClipboardHistoryView::setSelectedFilterId(std::optional<QUuid> id)
{
    if (id == m_selectedFilterId)
        return;
    m_selectedFilterId = id;
    m_categories.setChosen(id);
    applyFilter();
}

void ClipboardHistoryView::setSelectedIndex(int index)
{
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    Q_EMIT selectedIndexChanged();
}

void ClipboardHistoryView::setSearchExpanded(bool isExpanded)
{
    if (isExpanded == m_isSearchExpanded)
        return;
    m_isSearchExpanded = isExpanded;
    m_typedText.clear();
    if (!isExpanded)
        endFocus(Focus::Search);
    Q_EMIT isSearchExpandedChanged();
}

void ClipboardHistoryView::setCategorySearching(bool isSearching)
{
    if (isSearching == m_isCategorySearching)
        return;
    m_isCategorySearching = isSearching;
    if (!isSearching)
        endFocus(Focus::CategorySearch);
    Q_EMIT isCategorySearchingChanged();
}

void ClipboardHistoryView::setFocus(Focus focus)
{
    if (focus == m_focus)
        return;
    m_focus = focus;
    Q_EMIT focusChanged();
}

void ClipboardHistoryView::endFocus(Focus focus)
{
    if (m_focus == focus)
        setFocus(Focus::Elsewhere);
}

void ClipboardHistoryView::setFocusLater(Focus focus)
{
    m_surroundings.queue.asyncAfter(FocusDelay, m_lifetime.guard([this, focus] {
        // The user may have opened or closed the field meanwhile.
        if ((focus == Focus::Search) == m_isSearchExpanded)
            setFocus(focus);
    }));
}

bool ClipboardHistoryView::moveSelection(int distance)
{
    const int index = m_selectedIndex + distance;
    if (index < 0 || index >= m_filteredItems.rowCount())
        return false;
    setSelectedIndex(index);
    return true;
}

bool ClipboardHistoryView::moveCategorySearch(int distance)
{
    const int index = m_categorySearchIndex + distance;
    if (index < 0 || index >= std::ssize(matchingCategories()))
        return false;
    m_categorySearchIndex = index;
    return true;
}

void ClipboardHistoryView::navigateCategory(int direction)
{
    const auto &categories = m_categories.rows();
    if (categories.empty())
        return;
    const auto count = std::ssize(categories);
    const qsizetype current = m_selectedFilterId ? m_categories.rowOf(*m_selectedFilterId) : -1;
    qsizetype next = direction < 0 ? count - 1 : 0;
    if (current >= 0)
        next = current + direction;
    const bool isCategory = next >= 0 && next < count;
    setSelectedFilterId(
        isCategory ? std::optional(categories[static_cast<size_t>(next)]->id()) : std::nullopt);
    setSelectedIndex(0);
}

void ClipboardHistoryView::selectAndPaste(int row)
{
    setSelectedIndex(row);
    pasteSelected();
}

void ClipboardHistoryView::clickChip(int row)
{
    const auto category = m_categories.record(row);
    if (!category)
        return;
    if (category->id() == m_selectedFilterId) {
        setSelectedFilterId(std::nullopt);
        return;
    }
    setSelectedFilterId(category->id());
    setSelectedIndex(0);
}

void ClipboardHistoryView::pasteSelected()
{
    const auto item = m_filteredItems.record(m_selectedIndex);
    if (item && m_onItemSelected)
        m_onItemSelected(item);
}

void ClipboardHistoryView::typeToSearch(const QString &text)
{
    setSearchExpanded(true);
    setFocus(Focus::Search);
    m_typedText += text;
    if (m_typedText != text)
        return;
    m_surroundings.queue.asyncAfter(FocusDelay, m_lifetime.guard([this] {
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

bool ClipboardHistoryView::stepBack()
{
    if (m_isSearchExpanded) {
        setSearchExpanded(false);
        setSearchText(QString());
        setFocusLater(Focus::View);
        return true;
    }
    if (m_selectedFilterId) {
        setSelectedFilterId(std::nullopt);
        setSelectedIndex(0);
        return true;
    }
    return false;
}

void ClipboardHistoryView::resetState()
{
    setSelectedIndex(0);
    setSearchExpanded(false);
    setSearchText(QString());
    setCategorySearching(false);
    m_categorySearchText.clear();
    setSelectedFilterId(std::nullopt);
    m_selectedIds.clear();
    m_isMultiSelectMode = false;
    m_showCombinePanel = false;
    m_search.forgetFoldedTexts();
    m_filteredItems.refreshAges();
    Q_EMIT wasReset();
    for (const auto delay : FocusClaims)
        m_surroundings.queue.asyncAfter(delay, m_lifetime.guard([this] { claimFocus(); }));
}

void ClipboardHistoryView::claimFocus()
{
    if (!isSearchFocused() && !isCategorySearchFocused())
        setFocus(Focus::View);
}

void ClipboardHistoryView::applyFilter()
{
    const auto category = selectedCategory();
    if (!category && m_searchText.isEmpty()) {
        m_filteredItems.setFilter(nullptr);
        return;
    }
    m_filteredItems.setFilter([this, category](const ClipboardItem &item) {
        return (!category || isUnder(item, *category)) && m_search.finds(item);
    });
}

void ClipboardHistoryView::categoriesChanged()
{
    if (m_selectedFilterId)
        applyFilter();
}

void ClipboardHistoryView::keepSelectionInRange()
{
    const int last = m_filteredItems.rowCount() - 1;
    if (m_selectedIndex > last)
        setSelectedIndex(std::max(0, last));
}
