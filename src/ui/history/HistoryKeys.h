#pragma once

#include "platform/LocalEvents.h"

#include <optional>

/// What the keys do in the history panel: two tables, read from the top, in which the first row that fits
/// decides. The monitor's comes first and has the keys that must work while a text editor has the focus; the
/// view's has those that no text field has taken.
namespace historykeys
{

/// Which key opens the category search; none does while the preference holds some other text.
enum class CategorySearchKey { Tab, Slash, Neither };

/// What is open in the panel, as far as the keys care.
struct State {
    bool isEditing = false;
    bool isCreating = false;
    bool isCombining = false;
    bool isCategorySearching = false;
    bool isSearchExpanded = false;
    bool hasSearchText = false;
    bool hasFilter = false;
    int selectedCount = 0; ///< entries in the multi-selection
    CategorySearchKey categorySearchKey = CategorySearchKey::Tab;

    bool isBusy() const { return isEditing || isCreating || isCombining; }
    bool hasTextField() const { return isCategorySearching || isSearchExpanded || isEditing || isCreating; }
};

/// What a key leads to.
enum class Action {
    Pass, ///< nothing here: the key goes on
    SwapFilterForCategorySearch,
    SaveEdit,
    SaveNewItem,
    CancelEdit,
    CancelCreate,
    ExtendDown,
    ExtendUp,
    MoveDown,
    MoveUp,
    MoveCategorySearchDown,
    MoveCategorySearchUp,
    ChooseCategory,
    Combine,
    Paste,
    CloseCombinePanel,
    ClearSelection,
    CloseCategorySearch,
    CloseSearch,
    ClearFilter,
    PreviousCategory,
    NextCategory,
    ToggleCategorySearch,
    EditItem,
    CreateItem,
    ToggleSearch,
    TypeToSearch,
};

/// The monitor's table. A `Pass` may be deliberate: a line break in an editor.
Action monitorAction(const LocalKeyEvent &event, const State &state);

/// A key as the view's table names it.
enum class Key { Down, Up, Return, Escape, Left, Right, Tab, Slash, E, N, F, Other };

/// A press that no text field has taken.
struct Press {
    Key key = Key::Other;
    bool isExactlyCommand = false;
    bool hasCommandOrControl = false;
    /// It types a letter, a digit, a punctuation mark or a blank.
    bool startsSearch = false;
};

/// `key` is a Qt::Key, `modifiers` are Qt::KeyboardModifiers, `text` is what the key types.
Press pressOf(int key, int modifiers, const QString &text);

/// The view's table; `Pass` leaves the key to the next responder.
Action viewAction(const Press &press, const State &state);

} // namespace historykeys
