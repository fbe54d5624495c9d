#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "base/NotificationCenter.h"
#include "ui/history/CategoryListModel.h"
#include "ui/history/HistoryListModel.h"
#include "ui/history/HistorySearch.h"

#include <QObject>

#include <functional>
#include <set>

/// The content of the history panel: which entries it lists, which one is highlighted, what is open in it and
/// where its keyboard focus is. Main thread only.
class ClipboardHistoryView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application's controller")
    Q_PROPERTY(HistoryListModel *filteredItems READ filteredItems CONSTANT)
    Q_PROPERTY(CategoryListModel *categories READ categories CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectedIndexChanged)
    Q_PROPERTY(bool isSearchExpanded READ isSearchExpanded NOTIFY isSearchExpandedChanged)
    Q_PROPERTY(bool isCategorySearching READ isCategorySearching NOTIFY isCategorySearchingChanged)
    Q_PROPERTY(Focus focus READ focus NOTIFY focusChanged)

public:
    using ItemSelected = std::function<void(const std::shared_ptr<ClipboardItem> &)>;

    /// What in the panel has the keyboard focus.
    enum class Focus { Elsewhere, View, Search, CategorySearch };
    Q_ENUM(Focus)

    /// What happens around it; all of it must outlive it.
    struct Surroundings {
        ModelContext &modelContext;
        NotificationCenter &notifications;
        MainQueue &queue;
        const Clock &clock;
        text::CaseRule caseRule = text::CaseRule::Common;
    };
    /// `onItemSelected` may be empty.
    ClipboardHistoryView(const Surroundings &surroundings, ItemSelected onItemSelected);

    // The lists

    /// The entries under the chosen category that the search finds, pinned ones first.
    HistoryListModel *filteredItems() { return &m_filteredItems; }
    CategoryListModel *categories() { return &m_categories; }
    /// The category chosen as filter; null when none is chosen, or when it is no longer there.
    std::shared_ptr<ClipCategory> selectedCategory() const;
    /// The categories whose name contains the category search's text, in order; all when that is empty.
    std::vector<std::shared_ptr<ClipCategory>> matchingCategories() const;
    /// The listed entries among `selectedIds`, in the order of the list.
    std::vector<std::shared_ptr<ClipboardItem>> multiSelectedItems() const;

    // The state

    const QString &searchText() const { return m_searchText; }
    /// Highlights the first row. Emptied by the user, an open search field closes.
    void setSearchText(const QString &searchText);
    std::optional<QUuid> selectedFilterId() const { return m_selectedFilterId; }
    void setSelectedFilterId(std::optional<QUuid> id);
    /// The highlighted row; 0 when the list is empty.
    int selectedIndex() const { return m_selectedIndex; }
    void setSelectedIndex(int index);
    bool isSearchExpanded() const { return m_isSearchExpanded; }
    void setSearchExpanded(bool isExpanded);
    bool isCategorySearching() const { return m_isCategorySearching; }
    void setCategorySearching(bool isSearching);
    const QString &categorySearchText() const { return m_categorySearchText; }
    void setCategorySearchText(const QString &text) { m_categorySearchText = text; }
    int categorySearchIndex() const { return m_categorySearchIndex; }
    const std::set<QUuid> &selectedIds() const { return m_selectedIds; }
    void setSelectedIds(std::set<QUuid> ids) { m_selectedIds = std::move(ids); }
    bool isMultiSelectMode() const { return m_isMultiSelectMode; }
    void setMultiSelectMode(bool isOn) { m_isMultiSelectMode = isOn; }
    bool showCombinePanel() const { return m_showCombinePanel; }
    void setShowCombinePanel(bool isShown) { m_showCombinePanel = isShown; }

    Focus focus() const { return m_focus; }
    bool isViewFocused() const { return m_focus == Focus::View; }
    bool isSearchFocused() const { return m_focus == Focus::Search; }
    bool isCategorySearchFocused() const { return m_focus == Focus::CategorySearch; }
    /// Also told by the views, when the user moves the focus.
    Q_INVOKABLE void setFocus(ClipboardHistoryView::Focus focus);
    /// A view has lost the focus; nothing happens when another one has got it meanwhile.
    Q_INVOKABLE void endFocus(ClipboardHistoryView::Focus focus);

    // What the user does

    /// A key that no text field has taken; whether it was taken here. `key` is a Qt::Key, `modifiers` are
    /// Qt::KeyboardModifiers, `text` is what the key types.
    Q_INVOKABLE bool handleKey(int key, int modifiers, const QString &text);
    /// A click on a row: highlights and pastes it.
    Q_INVOKABLE void selectAndPaste(int row);
    /// A click on a category's chip: filters by it, or ends the filter when it is the chosen one, in which
    /// case the highlight stays.
    Q_INVOKABLE void clickChip(int row);
    /// The highlight a row down or up; whether there was one.
    bool moveSelection(int distance);
    /// The highlight of the category search, by the same rule.
    bool moveCategorySearch(int distance);
    /// The filter to the next category (+1) or the one before (-1); "all entries" lies between the last and
    /// the first.
    void navigateCategory(int direction);
    /// Opens the search field with the text of a key in it. Further keys that come before the field is
    /// there are added.
    void typeToSearch(const QString &text);
    void toggleSearch();
    /// One step back: the search, then the filter; whether there was one.
    bool stepBack();
    void pasteSelected();

    /// Back to the state in which the panel opens.
    void resetState();

Q_SIGNALS:
    void searchTextChanged();
    void selectedIndexChanged();
    void isSearchExpandedChanged();
    void isCategorySearchingChanged();
    void focusChanged();
    /// The list shows its beginning again.
    void wasReset();

private:
    void applyFilter();
    void categoriesChanged();
    void keepSelectionInRange();
    void setFocusLater(Focus focus);
    void claimFocus();

    Surroundings m_surroundings;
    ItemSelected m_onItemSelected;
    // Before the list, which asks it about every change.
    HistorySearch m_search;
    HistoryListModel m_filteredItems;
    CategoryListModel m_categories;

    QString m_searchText;
    QString m_typedText;
    std::optional<QUuid> m_selectedFilterId;
    int m_selectedIndex = 0;
    bool m_isSearchExpanded = false;
    bool m_isCategorySearching = false;
    QString m_categorySearchText;
    int m_categorySearchIndex = 0;
    std::set<QUuid> m_selectedIds;
    bool m_isMultiSelectMode = false;
    bool m_showCombinePanel = false;
    Focus m_focus = Focus::Elsewhere;
    std::unique_ptr<NotificationCenter::Observer> m_panelWillShow;
    Lifetime m_lifetime;
};
