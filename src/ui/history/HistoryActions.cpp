#include "base/Notifications.h"
#include "base/Text.h"
#include "capture/Url.h"
#include "ui/history/CategoryFilter.h"
#include "ui/history/ClipboardHistoryView.h"
#include "ui/language/DisplayName.h"

#include <QLocale>

#include <algorithm>

namespace
{

/// A text editor takes so much within a fifth of a second; more of it would hold the panel up.
constexpr qint64 LargestEdit = 256 * 1024;

} // namespace

void ClipboardHistoryView::pasteItem(const std::shared_ptr<ClipboardItem> &item)
{
    if (!item)
        return;
    if (m_onItemSelected)
        m_onItemSelected(item);
    else
        item->copyToPasteboard(m_surroundings.pasteboard);
}

void ClipboardHistoryView::select(int row, int modifiers)
{
    const auto item = m_filteredItems.record(row);
    if (!item)
        return;
    setSelectedIndex(row);
    if (!(Qt::KeyboardModifiers(modifiers) & (Qt::ControlModifier | Qt::MetaModifier))) {
        endMultiSelection();
        return;
    }
    std::set<QUuid> ids = m_selectedIds;
    if (ids.erase(item->id()) == 0)
        ids.insert(item->id());
    m_isMultiSelectMode = !ids.empty();
    setSelectedIds(std::move(ids));
}

void ClipboardHistoryView::paste(int row)
{
    if (selectedCount() >= 2)
        openCombinePanel();
    else
        pasteItem(m_filteredItems.record(row));
}

bool ClipboardHistoryView::isPinned(int row) const
{
    const auto item = m_filteredItems.record(row);
    return item && item->isPinned();
}

bool ClipboardHistoryView::isMultiSelected(int row) const
{
    const auto item = m_filteredItems.record(row);
    return item && m_selectedIds.contains(item->id());
}

void ClipboardHistoryView::endMultiSelection()
{
    setSelectedIds({});
    m_isMultiSelectMode = false;
}

void ClipboardHistoryView::openCombinePanel()
{
    if (m_combinePanel)
        return;
    m_combinePanel = std::make_unique<CombinePanel>(
        CombinePanel::Surroundings{m_surroundings.modelContext, m_surroundings.events, m_surroundings.queue},
        multiSelectedItems(), [this](const QString &text) { pasteCombined(text.toUtf8()); },
        [this] {
            closeCombinePanel();
            endMultiSelection();
        });
    m_combinePanel->appear();
    Q_EMIT combinePanelChanged();
}

void ClipboardHistoryView::closeCombinePanel()
{
    if (!m_combinePanel)
        return;
    // Views let go of it before it goes.
    const auto closed = std::move(m_combinePanel);
    Q_EMIT combinePanelChanged();
}

void ClipboardHistoryView::pasteCombined(const QByteArray &text)
{
    const auto item = std::make_shared<ClipboardItem>(
        text, ClipboardItemType::Text, std::nullopt, std::nullopt, std::nullopt, false, m_surroundings.clock);
    store(item);
    m_surroundings.pasteboard.clearContents();
    m_surroundings.pasteboard.setString(text);
    if (m_onItemSelected)
        m_onItemSelected(item);
    closeCombinePanel();
    endMultiSelection();
}

void ClipboardHistoryView::store(const std::shared_ptr<ClipboardItem> &item)
{
    m_surroundings.modelContext.insert(item);
    save();
}

void ClipboardHistoryView::save()
{
    // What cannot be saved now stays visible, and is saved with the next change.
    (void)m_surroundings.modelContext.save();
}

void ClipboardHistoryView::togglePin(int row)
{
    if (const auto item = m_filteredItems.record(row)) {
        item->setPinned(!item->isPinned());
        save();
    }
}

void ClipboardHistoryView::deleteItem(int row)
{
    if (const auto item = m_filteredItems.record(row)) {
        m_surroundings.modelContext.remove(item);
        save();
    }
}

void ClipboardHistoryView::assignCategory(int row, int categoryRow)
{
    const auto item = m_filteredItems.record(row);
    const auto category = m_categories.record(categoryRow);
    if (!item || (categoryRow >= 0 && !category))
        return;
    item->setCategoryId(category ? std::optional(category->id()) : std::nullopt);
    save();
}

int ClipboardHistoryView::assignedCategory(int row) const
{
    const auto item = m_filteredItems.record(row);
    return item && item->categoryId() ? static_cast<int>(m_categories.rowOf(*item->categoryId())) : -1;
}

QStringList ClipboardHistoryView::categoryNames() const
{
    QStringList names;
    for (const auto &category : m_categories.rows())
        names.append(displayName(*category));
    return names;
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

void ClipboardHistoryView::chooseCategory(int matchingRow)
{
    const auto category = m_matchingCategories.record(matchingRow);
    if (!category)
        return;
    setSelectedFilterId(category->id());
    setCategorySearching(false);
    setCategorySearchText(QString());
    setSearchExpanded(true);
    setSelectedIndex(0);
    setFocusLater(Focus::Search);
}

void ClipboardHistoryView::startEditing(int row)
{
    const auto item = m_filteredItems.record(row);
    if (!item)
        return;
    m_editRefusal.clear();
    if (item->contentSize() > LargestEdit) {
        m_editRefusal = tr("This entry is too large to be edited here (%1).")
                            .arg(QLocale().formattedDataSize(item->contentSize()));
        Q_EMIT editChanged();
        return;
    }
    m_editingItemId = item->id();
    setEditText(item->content());
    Q_EMIT editChanged();
    setFocusLater(Focus::Edit);
}

int ClipboardHistoryView::editingIndex() const
{
    if (!m_editingItemId)
        return -1;
    const auto &items = m_filteredItems.rows();
    const auto found =
        std::ranges::find_if(items, [this](const auto &item) { return item->id() == *m_editingItemId; });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

void ClipboardHistoryView::saveEdit()
{
    if (!m_editingItemId)
        return;
    const auto found = m_surroundings.modelContext.fetch<ClipboardItem>(
        {.predicate = [this](const ClipboardItem &item) { return item.id() == *m_editingItemId; },
            .leading = nullptr,
            .limit = 1});
    if (!found.empty()) {
        const QByteArray content = m_editText.toUtf8();
        found.front()->setContent(content);
        found.front()->setCharacterCount(text::characterCount(content));
        save();
    }
    cancelEdit();
}

void ClipboardHistoryView::cancelEdit()
{
    m_editingItemId.reset();
    setEditText(QString());
    endFocus(Focus::Edit);
    Q_EMIT editChanged();
    setFocusLater(Focus::View);
}

void ClipboardHistoryView::startCreatingNew()
{
    m_isCreatingNew = true;
    setNewItemText(QString());
    Q_EMIT editChanged();
    setFocusLater(Focus::Create);
}

void ClipboardHistoryView::cancelCreate()
{
    m_isCreatingNew = false;
    setNewItemText(QString());
    endFocus(Focus::Create);
    Q_EMIT editChanged();
    setFocusLater(Focus::View);
}

void ClipboardHistoryView::saveNewItem()
{
    const QByteArray typed = m_newItemText.toUtf8();
    const QByteArray content = text::trimmed(typed).toByteArray();
    if (!content.isEmpty()) {
        const auto type = url::hasSchemeAndHost(content) ? ClipboardItemType::Url : ClipboardItemType::Text;
        const auto item = std::make_shared<ClipboardItem>(
            content, type, std::nullopt, std::nullopt, std::nullopt, false, m_surroundings.clock);
        for (const auto &category : m_categories.rows()) {
            if (typeOfCategory(category->name()) == type) {
                item->setCategoryId(category->id());
                break;
            }
        }
        store(item);
    }
    cancelCreate();
}

void ClipboardHistoryView::clearAllHistory()
{
    const auto items = m_surroundings.modelContext.fetch<ClipboardItem>(
        {.predicate = [](const ClipboardItem &item) { return !item.isPinned(); },
            .leading = nullptr,
            .limit = std::nullopt});
    for (const auto &item : items)
        m_surroundings.modelContext.remove(item);
    save();
}

void ClipboardHistoryView::openSettings()
{
    m_surroundings.notifications.post(notification::openSettings());
}
