#include "ui/history/HistoryKeys.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>

namespace historykeys
{
namespace
{

constexpr quint16 ReturnCode = 36;
constexpr quint16 DeleteCode = 51;
constexpr quint16 EscapeCode = 53;
constexpr quint16 DownCode = 125;
constexpr quint16 UpCode = 126;

using Condition = bool (*)(const State &);

constexpr Condition Always = [](const State &) { return true; };
constexpr Condition Busy = [](const State &state) { return state.isBusy(); };
constexpr Condition Editing = [](const State &state) { return state.isEditing; };
constexpr Condition Creating = [](const State &state) { return state.isCreating; };
constexpr Condition EditingOrCreating = [](const State &state) {
    return state.isEditing || state.isCreating;
};
constexpr Condition Combining = [](const State &state) { return state.isCombining; };
constexpr Condition CategorySearching = [](const State &state) { return state.isCategorySearching; };
constexpr Condition SearchExpanded = [](const State &state) { return state.isSearchExpanded; };
constexpr Condition Filtering = [](const State &state) { return state.hasFilter; };
constexpr Condition Selecting = [](const State &state) { return state.selectedCount > 0; };
constexpr Condition SelectingSeveral = [](const State &state) { return state.selectedCount >= 2; };
constexpr Condition TextField = [](const State &state) { return state.hasTextField(); };
constexpr Condition EmptySearchOfFilter = [](const State &state) {
    return state.isSearchExpanded && !state.hasSearchText && state.hasFilter;
};
constexpr Condition PlainOrSearching = [](const State &state) {
    return !state.isCategorySearching && !state.isBusy();
};
constexpr Condition TabSearches = [](const State &state) {
    return state.categorySearchKey == CategorySearchKey::Tab;
};
constexpr Condition SlashSearches = [](const State &state) {
    return state.categorySearchKey == CategorySearchKey::Slash;
};

enum class Shift { Any, Held };

struct MonitorRow {
    quint16 keyCode;
    Shift shift;
    Condition condition;
    Action action;
};

constexpr std::array MonitorTable{
    MonitorRow{DeleteCode, Shift::Any, EmptySearchOfFilter, Action::SwapFilterForCategorySearch},
    MonitorRow{ReturnCode, Shift::Held, Editing, Action::Pass},
    MonitorRow{ReturnCode, Shift::Any, Editing, Action::SaveEdit},
    MonitorRow{ReturnCode, Shift::Held, Creating, Action::Pass},
    MonitorRow{ReturnCode, Shift::Any, Creating, Action::SaveNewItem},
    MonitorRow{EscapeCode, Shift::Any, Editing, Action::CancelEdit},
    MonitorRow{EscapeCode, Shift::Any, Creating, Action::CancelCreate},
    MonitorRow{DownCode, Shift::Held, PlainOrSearching, Action::ExtendDown},
    MonitorRow{UpCode, Shift::Held, PlainOrSearching, Action::ExtendUp},
};

/// What a row of the view's table asks of the press besides its key.
enum class With { Anything, ExactlyCommand, SearchText };

struct ViewRow {
    Key key;
    With with;
    Condition condition;
    Action action;
};

constexpr std::array ViewTable{
    ViewRow{Key::Down, With::Anything, Busy, Action::Pass},
    ViewRow{Key::Down, With::Anything, CategorySearching, Action::MoveCategorySearchDown},
    ViewRow{Key::Down, With::Anything, Always, Action::MoveDown},

    ViewRow{Key::Up, With::Anything, Busy, Action::Pass},
    ViewRow{Key::Up, With::Anything, CategorySearching, Action::MoveCategorySearchUp},
    ViewRow{Key::Up, With::Anything, Always, Action::MoveUp},

    ViewRow{Key::Return, With::Anything, Editing, Action::Pass},
    ViewRow{Key::Return, With::Anything, CategorySearching, Action::ChooseCategory},
    ViewRow{Key::Return, With::Anything, SelectingSeveral, Action::Combine},
    ViewRow{Key::Return, With::Anything, Always, Action::Paste},

    ViewRow{Key::Escape, With::Anything, EditingOrCreating, Action::Pass},
    ViewRow{Key::Escape, With::Anything, Combining, Action::CloseCombinePanel},
    ViewRow{Key::Escape, With::Anything, Selecting, Action::ClearSelection},
    ViewRow{Key::Escape, With::Anything, CategorySearching, Action::CloseCategorySearch},
    ViewRow{Key::Escape, With::Anything, SearchExpanded, Action::CloseSearch},
    ViewRow{Key::Escape, With::Anything, Filtering, Action::ClearFilter},
    ViewRow{Key::Escape, With::Anything, Always, Action::Pass},

    ViewRow{Key::Left, With::Anything, TextField, Action::Pass},
    ViewRow{Key::Left, With::Anything, Always, Action::PreviousCategory},
    ViewRow{Key::Right, With::Anything, TextField, Action::Pass},
    ViewRow{Key::Right, With::Anything, Always, Action::NextCategory},

    ViewRow{Key::Tab, With::Anything, TabSearches, Action::ToggleCategorySearch},
    ViewRow{Key::Tab, With::Anything, Always, Action::Pass},
    ViewRow{Key::Slash, With::Anything, SlashSearches, Action::ToggleCategorySearch},

    ViewRow{Key::E, With::ExactlyCommand, Always, Action::EditItem},
    ViewRow{Key::N, With::ExactlyCommand, Always, Action::CreateItem},
    ViewRow{Key::F, With::ExactlyCommand, Always, Action::ToggleSearch},
};

/// For the keys that the table above leaves: they may begin a search.
constexpr std::array TypingTable{
    ViewRow{Key::Other, With::Anything, TextField, Action::Pass},
    ViewRow{Key::Other, With::SearchText, Always, Action::TypeToSearch},
};

bool fits(With with, const Press &press)
{
    switch (with) {
    case With::Anything:
        return true;
    case With::ExactlyCommand:
        return press.isExactlyCommand;
    case With::SearchText:
        return press.startsSearch && !press.hasCommandOrControl;
    }
    return false;
}

/// Keys that type may begin a search, whatever else they are good for.
bool mayType(Key key)
{
    return key == Key::Slash || key == Key::E || key == Key::N || key == Key::F || key == Key::Other;
}

/// What tells where a key is, not how it is meant.
constexpr Qt::KeyboardModifiers Irrelevant = Qt::KeypadModifier | Qt::GroupSwitchModifier;
/// Super and Control count as Command alike.
constexpr Qt::KeyboardModifiers CommandModifiers = Qt::ControlModifier | Qt::MetaModifier;

bool startsSearch(const QString &text)
{
    const auto codePoints = text.toUcs4();
    return std::ranges::any_of(codePoints, [](char32_t character) {
        const bool isBlank = character == U'\t' || QChar::category(character) == QChar::Separator_Space;
        return QChar::isLetterOrNumber(character) || QChar::isMark(character) || QChar::isPunct(character) ||
            isBlank;
    });
}

Key keyOf(int key, const QString &text)
{
    switch (key) {
    case Qt::Key_Down:
        return Key::Down;
    case Qt::Key_Up:
        return Key::Up;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Key::Return;
    case Qt::Key_Escape:
        return Key::Escape;
    case Qt::Key_Left:
        return Key::Left;
    case Qt::Key_Right:
        return Key::Right;
    case Qt::Key_Tab:
        return Key::Tab;
    case Qt::Key_E:
        return Key::E;
    case Qt::Key_N:
        return Key::N;
    case Qt::Key_F:
        return Key::F;
    default:
        return text == QLatin1Char('/') ? Key::Slash : Key::Other;
    }
}

} // namespace

Action monitorAction(const LocalKeyEvent &event, const State &state)
{
    const bool hasShift = holds(event.modifiers, EventModifier::Shift);
    for (const MonitorRow &row : MonitorTable) {
        if (row.keyCode == event.keyCode && (row.shift == Shift::Any || hasShift) && row.condition(state))
            return row.action;
    }
    return Action::Pass;
}

Press pressOf(int key, int modifiers, const QString &text)
{
    const Qt::KeyboardModifiers held = Qt::KeyboardModifiers(modifiers) & ~Irrelevant;
    const bool hasCommand = (held & CommandModifiers) != Qt::NoModifier;
    return {.key = keyOf(key, text),
        .isExactlyCommand = hasCommand && !(held & ~CommandModifiers),
        .hasCommandOrControl = hasCommand,
        .startsSearch = startsSearch(text)};
}

Action viewAction(const Press &press, const State &state)
{
    for (const ViewRow &row : ViewTable) {
        if (row.key == press.key && fits(row.with, press) && row.condition(state))
            return row.action;
    }
    if (!mayType(press.key))
        return Action::Pass;
    for (const ViewRow &row : TypingTable) {
        if (fits(row.with, press) && row.condition(state))
            return row.action;
    }
    return Action::Pass;
}

} // namespace historykeys
