#pragma once

#include "base/Lifetime.h"
#include "base/MainQueue.h"
#include "base/NotificationCenter.h"
#include "base/UserDefaults.h"
#include "platform/LocalEvents.h"
#include "platform/Pasteboard.h"
#include "platform/SystemSound.h"
#include "ui/history/CategoryListModel.h"
#include "ui/history/CombinePanel.h"
#include "ui/history/HistoryKeys.h"
#include "ui/history/HistoryListModel.h"
#include "ui/history/HistorySearch.h"

#include <QColor>
#include <QObject>

#include <functional>
#include <set>

/// The content of the history panel: which entries it lists, which one is highlighted, what is open in it,
/// where its keyboard focus is, and what the user's keys, clicks and turns of the wheel do. Main thread only.
///
/// Divided by what it is about: the lists and the state (ClipboardHistoryView.cpp), what the user does to
/// entries (HistoryActions.cpp), keys and scrolling (HistoryEvents.cpp; the tables of keys are
/// HistoryKeys.h).
class ClipboardHistoryView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application's controller")
    Q_PROPERTY(HistoryListModel *filteredItems READ filteredItems CONSTANT)
    Q_PROPERTY(CategoryListModel *categories READ categories CONSTANT)
    Q_PROPERTY(CategoryListModel *matchingCategories READ matchingCategories CONSTANT)
    Q_PROPERTY(bool isHistoryEmpty READ isHistoryEmpty NOTIFY listChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool hasFilter READ hasFilter NOTIFY listChanged)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectedIndexChanged)
    Q_PROPERTY(bool isSearchExpanded READ isSearchExpanded NOTIFY isSearchExpandedChanged)
    Q_PROPERTY(bool isCategorySearching READ isCategorySearching NOTIFY categorySearchChanged)
    Q_PROPERTY(QString categorySearchText READ categorySearchText WRITE setCategorySearchText NOTIFY
            categorySearchChanged)
    Q_PROPERTY(int categorySearchIndex READ categorySearchIndex NOTIFY categorySearchChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectionChanged)
    Q_PROPERTY(CombinePanel *combinePanel READ combinePanel NOTIFY combinePanelChanged)
    Q_PROPERTY(int editingIndex READ editingIndex NOTIFY editChanged)
    Q_PROPERTY(QString editText READ editText WRITE setEditText NOTIFY editTextChanged)
    Q_PROPERTY(QString editRefusal READ editRefusal NOTIFY editChanged)
    Q_PROPERTY(bool isCreatingNew READ isCreatingNew NOTIFY editChanged)
    Q_PROPERTY(QString newItemText READ newItemText WRITE setNewItemText NOTIFY newItemTextChanged)
    Q_PROPERTY(QColor borderColor READ borderColor NOTIFY preferencesChanged)
    Q_PROPERTY(Focus focus READ focus NOTIFY focusChanged)

public:
    using ItemSelected = std::function<void(const std::shared_ptr<ClipboardItem> &)>;

    /// What in the panel has the keyboard focus.
    enum class Focus { Elsewhere, View, Search, CategorySearch, Edit, Create };
    Q_ENUM(Focus)

    /// What happens around it; all of it must outlive it.
    struct Surroundings {
        ModelContext &modelContext;
        Pasteboard &pasteboard;
        NotificationCenter &notifications;
        const UserDefaults &defaults;
        LocalEvents &events;
        SystemSound &sound;
        MainQueue &queue;
        const Clock &clock;
        text::CaseRule caseRule = text::CaseRule::Common;
    };
    /// `onItemSelected` may be empty.
    ClipboardHistoryView(const Surroundings &surroundings, ItemSelected onItemSelected);
    ~ClipboardHistoryView() override;

    /// It is shown for the first time: resets itself and listens to keys and scrolling.
    void appear();
    /// It is not shown any more, and listens to nothing.
    void disappear();

    // The lists

    /// The entries under the chosen category that the search finds, pinned ones first.
    HistoryListModel *filteredItems() { return &m_filteredItems; }
    CategoryListModel *categories() { return &m_categories; }
    /// The categories whose name, as it is shown, contains the category search's text; all when that is
    /// empty.
    CategoryListModel *matchingCategories() { return &m_matchingCategories; }
    /// Whether there is no entry at all.
    bool isHistoryEmpty() const;
    /// The category chosen as filter; null when none is chosen, or when it is no longer there.
    std::shared_ptr<ClipCategory> selectedCategory() const;
    /// The listed entries among `selectedIds`, in the order of the list.
    std::vector<std::shared_ptr<ClipboardItem>> multiSelectedItems() const;

    // The state

    const QString &searchText() const { return m_searchText; }
    /// Highlights the first row. Emptied by the user, an open search field closes.
    void setSearchText(const QString &searchText);
    std::optional<QUuid> selectedFilterId() const { return m_selectedFilterId; }
    void setSelectedFilterId(std::optional<QUuid> id);
    bool hasFilter() const { return m_selectedFilterId.has_value(); }
    /// The highlighted row; 0 when the list is empty.
    int selectedIndex() const { return m_selectedIndex; }
    void setSelectedIndex(int index);
    bool isSearchExpanded() const { return m_isSearchExpanded; }
    void setSearchExpanded(bool isExpanded);
    bool isCategorySearching() const { return m_isCategorySearching; }
    void setCategorySearching(bool isSearching);
    const QString &categorySearchText() const { return m_categorySearchText; }
    void setCategorySearchText(const QString &text);
    int categorySearchIndex() const { return m_categorySearchIndex; }
    const std::set<QUuid> &selectedIds() const { return m_selectedIds; }
    void setSelectedIds(std::set<QUuid> ids);
    int selectedCount() const { return static_cast<int>(m_selectedIds.size()); }
    bool isMultiSelectMode() const { return m_isMultiSelectMode; }
    bool showCombinePanel() const { return m_combinePanel != nullptr; }
    /// The combine panel while it is shown, else null.
    CombinePanel *combinePanel() const { return m_combinePanel.get(); }

    std::optional<QUuid> editingItemId() const { return m_editingItemId; }
    /// The row that is being edited; -1 when none is, or when it is not listed.
    int editingIndex() const;
    const QString &editText() const { return m_editText; }
    void setEditText(const QString &text);
    /// Why the highlighted entry cannot be edited, in plain words; empty when nothing was refused.
    const QString &editRefusal() const { return m_editRefusal; }
    bool isCreatingNew() const { return m_isCreatingNew; }
    const QString &newItemText() const { return m_newItemText; }
    void setNewItemText(const QString &text);

    /// The colour around the highlighted row, from the preferences.
    QColor borderColor() const;

    Focus focus() const { return m_focus; }
    bool isViewFocused() const { return m_focus == Focus::View; }
    bool isSearchFocused() const { return m_focus == Focus::Search; }
    bool isCategorySearchFocused() const { return m_focus == Focus::CategorySearch; }
    /// Also told by the views, when the user moves the focus.
    Q_INVOKABLE void setFocus(ClipboardHistoryView::Focus focus);
    /// A view has lost the focus; nothing happens when another one has got it meanwhile.
    Q_INVOKABLE void endFocus(ClipboardHistoryView::Focus focus);

    /// Back to the state in which the panel opens.
    void resetState();

    // Keys and scrolling

    /// A key that no text field has taken; whether it was taken here. `key` is a Qt::Key, `modifiers` are
    /// Qt::KeyboardModifiers, `text` is what the key types.
    Q_INVOKABLE bool handleKey(int key, int modifiers, const QString &text);
    /// The filter to the next category (+1) or the one before (-1); "all entries" lies between the last and
    /// the first.
    void navigateCategory(int direction);

    // What the user does to entries; rows are those of `filteredItems`

    /// A click on a row, `modifiers` being Qt::KeyboardModifiers: highlights it; with Command adds it to the
    /// multi-selection or takes it out.
    Q_INVOKABLE void select(int row, int modifiers);
    /// Pastes a row; opens the combine panel instead when several are selected.
    Q_INVOKABLE void paste(int row);
    Q_INVOKABLE bool isPinned(int row) const;
    Q_INVOKABLE bool isMultiSelected(int row) const;
    Q_INVOKABLE void togglePin(int row);
    Q_INVOKABLE void deleteItem(int row);
    /// The category's row among `categories`; -1 takes the assignment away.
    Q_INVOKABLE void assignCategory(int row, int categoryRow);
    /// The row among `categories` of the category that an entry is assigned to; -1 when it is to none.
    Q_INVOKABLE int assignedCategory(int row) const;
    /// The names of `categories` as they are shown, in order.
    Q_INVOKABLE QStringList categoryNames() const;
    Q_INVOKABLE void startEditing(int row);
    Q_INVOKABLE void saveEdit();
    Q_INVOKABLE void cancelEdit();
    Q_INVOKABLE void startCreatingNew();
    Q_INVOKABLE void saveNewItem();
    Q_INVOKABLE void cancelCreate();
    /// A click on a category's chip: filters by it, or ends the filter when it is the chosen one, in which
    /// case the highlight stays.
    Q_INVOKABLE void clickChip(int row);
    /// A click on a category in the category search: chooses it as Return does.
    Q_INVOKABLE void chooseCategory(int matchingRow);
    /// Deletes every entry that is not pinned.
    Q_INVOKABLE void clearAllHistory();
    Q_INVOKABLE void openSettings();

Q_SIGNALS:
    void listChanged();
    void searchTextChanged();
    void selectedIndexChanged();
    void isSearchExpandedChanged();
    void categorySearchChanged();
    void selectionChanged();
    void combinePanelChanged();
    void editChanged();
    void editTextChanged();
    void newItemTextChanged();
    void preferencesChanged();
    void focusChanged();
    /// The list shows its beginning again.
    void wasReset();

private:
    enum class Sound { Click, None };

    void applyFilter();
    void categoriesChanged();
    void itemsChanged();
    void filterMatchingCategories();
    void setFocusLater(Focus focus);
    bool isThere(Focus focus) const;
    void claimFocus();

    historykeys::State keyState() const;
    void perform(historykeys::Action action, const QString &text);
    void performEditing(historykeys::Action action);
    void performMove(historykeys::Action action);
    LocalEventFate keyDown(const LocalKeyEvent &event);
    LocalEventFate scroll(const LocalScrollEvent &event);
    void moveSelection(int distance, Sound sound);
    void moveCategorySearch(int distance);
    void extendSelection(int distance);
    void click();
    void typeToSearch(const QString &text);
    void toggleSearch();
    void closeSearch();
    void toggleCategorySearch();
    void swapFilterForCategorySearch();

    std::shared_ptr<ClipboardItem> highlightedItem() const { return m_filteredItems.record(m_selectedIndex); }
    void pasteItem(const std::shared_ptr<ClipboardItem> &item);
    void endMultiSelection();
    void openCombinePanel();
    void closeCombinePanel();
    void pasteCombined(const QByteArray &text);
    void store(const std::shared_ptr<ClipboardItem> &item);
    void save();

    Surroundings m_surroundings;
    ItemSelected m_onItemSelected;
    // Before the list, which asks it about every change.
    HistorySearch m_search;
    HistoryListModel m_filteredItems;
    CategoryListModel m_categories;
    CategoryListModel m_matchingCategories;

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
    std::unique_ptr<CombinePanel> m_combinePanel;
    std::optional<QUuid> m_editingItemId;
    QString m_editText;
    QString m_editRefusal;
    bool m_isCreatingNew = false;
    QString m_newItemText;
    Focus m_focus = Focus::Elsewhere;

    double m_scrollAccumulator = 0;
    std::unique_ptr<LocalEvents::Monitor> m_scrollMonitor;
    std::unique_ptr<LocalEvents::Monitor> m_keyMonitor;
    std::unique_ptr<NotificationCenter::Observer> m_panelWillShow;
    Lifetime m_lifetime;
};
