#include "ui/history/ClipboardHistoryView.h"

#include "base/Notifications.h"
#include "ui/history/CategoryFilter.h"
#include "ui/language/DisplayName.h"
#include "ui/style/DisplayColor.h"

#include <algorithm>
#include <array>

namespace
{

/// The panel is still being shown when the state is reset, and one early claim for the focus can be lost.
constexpr std::array FocusClaims{
    std::chrono::milliseconds(50), std::chrono::milliseconds(150), std::chrono::milliseconds(300)};
/// A field takes the focus once it is there.
constexpr std::chrono::milliseconds FocusDelay{100};

constexpr QRgb Orange = 0xffff8c00;

} // namespace

ClipboardHistoryView::ClipboardHistoryView(const Surroundings &surroundings, ItemSelected onItemSelected)
    : m_surroundings(surroundings)
    , m_onItemSelected(std::move(onItemSelected))
    , m_search(surroundings.modelContext, surroundings.queue, surroundings.caseRule)
    , m_filteredItems(surroundings.modelContext, surroundings.clock)
    , m_categories(surroundings.modelContext)
    , m_matchingCategories(surroundings.modelContext)
{
    m_search.onAnswerChanged = [this](const auto &item) { m_filteredItems.reconsider(item); };
    m_filteredItems.onChanged = [this] { itemsChanged(); };
    m_categories.onChanged = [this] { categoriesChanged(); };
    connect(&surroundings.defaults, &UserDefaults::changed, this, &ClipboardHistoryView::preferencesChanged);
    m_panelWillShow =
        surroundings.notifications.addObserver(notification::panelWillShow(), [this] { resetState(); });
}

ClipboardHistoryView::~ClipboardHistoryView() = default;

bool ClipboardHistoryView::isHistoryEmpty() const
{
    return m_surroundings.modelContext.fetchCount<ClipboardItem>() == 0;
}

std::shared_ptr<ClipCategory> ClipboardHistoryView::selectedCategory() const
{
    return m_selectedFilterId ? m_categories.category(*m_selectedFilterId) : nullptr;
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
    Q_EMIT listChanged();
}

void ClipboardHistoryView::setSelectedIndex(int index)
{
    if (index == m_selectedIndex)
        return;
    m_selectedIndex = index;
    if (!m_editRefusal.isEmpty()) {
        m_editRefusal.clear();
        Q_EMIT editChanged();
    }
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
    Q_EMIT categorySearchChanged();
}

void ClipboardHistoryView::setCategorySearchText(const QString &text)
{
    if (text == m_categorySearchText)
        return;
    m_categorySearchText = text;
    filterMatchingCategories();
    m_categorySearchIndex =
        std::clamp(m_categorySearchIndex, 0, std::max(0, m_matchingCategories.rowCount() - 1));
    Q_EMIT categorySearchChanged();
}

void ClipboardHistoryView::setSelectedIds(std::set<QUuid> ids)
{
    if (ids == m_selectedIds)
        return;
    m_selectedIds = std::move(ids);
    Q_EMIT selectionChanged();
}

void ClipboardHistoryView::setEditText(const QString &text)
{
    if (text == m_editText)
        return;
    m_editText = text;
    Q_EMIT editTextChanged();
}

void ClipboardHistoryView::setNewItemText(const QString &text)
{
    if (text == m_newItemText)
        return;
    m_newItemText = text;
    Q_EMIT newItemTextChanged();
}

QColor ClipboardHistoryView::borderColor() const
{
    const auto color = Color::hex(m_surroundings.defaults.value(preference::BorderColorHex));
    return color ? displayColor(*color) : QColor::fromRgb(Orange);
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
        // The user may have opened or closed what it is meant for meanwhile.
        if (isThere(focus))
            setFocus(focus);
    }));
}

bool ClipboardHistoryView::isThere(Focus focus) const
{
    switch (focus) {
    case Focus::Search:
        return m_isSearchExpanded;
    case Focus::CategorySearch:
        return m_isCategorySearching;
    case Focus::Edit:
        return m_editingItemId.has_value();
    case Focus::Create:
        return m_isCreatingNew;
    case Focus::View:
    case Focus::Elsewhere:
        break;
    }
    return !keyState().hasTextField();
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

void ClipboardHistoryView::resetState()
{
    setSelectedIndex(0);
    setSearchExpanded(false);
    setSearchText(QString());
    setCategorySearching(false);
    setCategorySearchText(QString());
    setSelectedFilterId(std::nullopt);
    endMultiSelection();
    closeCombinePanel();
    m_search.forgetFoldedTexts();
    m_filteredItems.refreshAges();
    Q_EMIT wasReset();
    for (const auto delay : FocusClaims)
        m_surroundings.queue.asyncAfter(delay, m_lifetime.guard([this] { claimFocus(); }));
}

void ClipboardHistoryView::claimFocus()
{
    // A card that was left open has the user's text in it.
    if (m_editingItemId)
        setFocus(Focus::Edit);
    else if (m_isCreatingNew)
        setFocus(Focus::Create);
    else if (!isSearchFocused() && !isCategorySearchFocused())
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

void ClipboardHistoryView::filterMatchingCategories()
{
    if (m_categorySearchText.isEmpty()) {
        m_matchingCategories.setFilter(nullptr);
        return;
    }
    const text::SearchPattern pattern(m_categorySearchText, m_surroundings.caseRule);
    m_matchingCategories.setFilter([pattern](const ClipCategory &category) {
        return text::localizedCaseInsensitiveContains(displayName(category).toUtf8(), pattern);
    });
}

void ClipboardHistoryView::categoriesChanged()
{
    if (m_selectedFilterId)
        applyFilter();
}

void ClipboardHistoryView::itemsChanged()
{
    const int last = m_filteredItems.rowCount() - 1;
    if (m_selectedIndex > last)
        setSelectedIndex(std::max(0, last));
    Q_EMIT listChanged();
    if (m_editingItemId)
        Q_EMIT editChanged();
}
