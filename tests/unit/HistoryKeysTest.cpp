#include "ui/history/HistoryKeys.h"

#include <gtest/gtest.h>

#include <array>

using namespace historykeys;

namespace
{

/// Every state that the panel can be in, as far as keys care, and some that it cannot.
std::vector<State> allStates()
{
    std::vector<State> states;
    for (int bits = 0; bits < 128; ++bits) {
        for (const int selected : {0, 1, 2, 5}) {
            for (const CategorySearchKey searchKey :
                {CategorySearchKey::Tab, CategorySearchKey::Slash, CategorySearchKey::Neither}) {
                states.push_back({.isEditing = (bits & 1) != 0,
                    .isCreating = (bits & 2) != 0,
                    .isCombining = (bits & 4) != 0,
                    .isCategorySearching = (bits & 8) != 0,
                    .isSearchExpanded = (bits & 16) != 0,
                    .hasSearchText = (bits & 32) != 0,
                    .hasFilter = (bits & 64) != 0,
                    .selectedCount = selected,
                    .categorySearchKey = searchKey});
            }
        }
    }
    return states;
}

std::string describe(const State &state)
{
    std::string text;
    const auto add = [&text](bool is, const char *name) {
        if (is)
            text += std::string(text.empty() ? "" : ", ") + name;
    };
    add(state.isEditing, "editing");
    add(state.isCreating, "creating");
    add(state.isCombining, "combining");
    add(state.isCategorySearching, "category searching");
    add(state.isSearchExpanded, "search expanded");
    add(state.hasSearchText, "search text");
    add(state.hasFilter, "filter");
    text += " " + std::to_string(state.selectedCount) + " selected";
    add(state.categorySearchKey == CategorySearchKey::Slash, "slash");
    add(state.categorySearchKey == CategorySearchKey::Neither, "neither");
    return text;
}

/// The monitor's rules told the other way round: by the state first.
Action expectedOfMonitor(quint16 code, bool shift, const State &state)
{
    if (state.isSearchExpanded && !state.hasSearchText && state.hasFilter && code == 51)
        return Action::SwapFilterForCategorySearch;
    if (code == 36 && (state.isEditing || state.isCreating)) {
        if (shift)
            return Action::Pass;
        return state.isEditing ? Action::SaveEdit : Action::SaveNewItem;
    }
    if (code == 53 && (state.isEditing || state.isCreating))
        return state.isEditing ? Action::CancelEdit : Action::CancelCreate;
    const bool isListAlone =
        !state.isCategorySearching && !state.isEditing && !state.isCreating && !state.isCombining;
    if (shift && isListAlone && (code == 125 || code == 126))
        return code == 125 ? Action::ExtendDown : Action::ExtendUp;
    return Action::Pass;
}

TEST(MonitorKeys, EveryKeyInEveryState)
{
    for (quint16 code = 0; code < 128; ++code) {
        for (int held = 0; held < 8; ++held) {
            const auto modifiers = static_cast<EventModifier>(held);
            for (const State &state : allStates()) {
                const Action expected =
                    expectedOfMonitor(code, holds(modifiers, EventModifier::Shift), state);
                ASSERT_EQ(monitorAction({code, modifiers, QString()}, state), expected)
                    << "key " << code << " with " << held << ": " << describe(state);
            }
        }
    }
}

Action expectedOfArrow(bool isDown, const State &state)
{
    if (state.isEditing || state.isCreating || state.isCombining)
        return Action::Pass;
    if (state.isCategorySearching)
        return isDown ? Action::MoveCategorySearchDown : Action::MoveCategorySearchUp;
    return isDown ? Action::MoveDown : Action::MoveUp;
}

Action expectedOfReturn(const State &state)
{
    if (state.isEditing)
        return Action::Pass;
    if (state.isCategorySearching)
        return Action::ChooseCategory;
    return state.selectedCount >= 2 ? Action::Combine : Action::Paste;
}

Action expectedOfEscape(const State &state)
{
    if (state.isEditing || state.isCreating)
        return Action::Pass;
    if (state.isCombining)
        return Action::CloseCombinePanel;
    if (state.selectedCount > 0)
        return Action::ClearSelection;
    if (state.isCategorySearching)
        return Action::CloseCategorySearch;
    if (state.isSearchExpanded)
        return Action::CloseSearch;
    return state.hasFilter ? Action::ClearFilter : Action::Pass;
}

bool hasField(const State &state)
{
    return state.isSearchExpanded || state.isCategorySearching || state.isEditing || state.isCreating;
}

Action expectedOfTyping(const Press &press, const State &state)
{
    if (hasField(state) || press.hasCommandOrControl || !press.startsSearch)
        return Action::Pass;
    return Action::TypeToSearch;
}

Action expectedOfView(const Press &press, const State &state)
{
    switch (press.key) {
    case Key::Down:
    case Key::Up:
        return expectedOfArrow(press.key == Key::Down, state);
    case Key::Return:
        return expectedOfReturn(state);
    case Key::Escape:
        return expectedOfEscape(state);
    case Key::Left:
    case Key::Right:
        if (hasField(state))
            return Action::Pass;
        return press.key == Key::Left ? Action::PreviousCategory : Action::NextCategory;
    case Key::Tab:
        return state.categorySearchKey == CategorySearchKey::Tab ? Action::ToggleCategorySearch
                                                                 : Action::Pass;
    case Key::Slash:
        if (state.categorySearchKey == CategorySearchKey::Slash)
            return Action::ToggleCategorySearch;
        return expectedOfTyping(press, state);
    case Key::E:
        return press.isExactlyCommand ? Action::EditItem : expectedOfTyping(press, state);
    case Key::N:
        return press.isExactlyCommand ? Action::CreateItem : expectedOfTyping(press, state);
    case Key::F:
        return press.isExactlyCommand ? Action::ToggleSearch : expectedOfTyping(press, state);
    case Key::Other:
        return expectedOfTyping(press, state);
    }
    return Action::Pass;
}

TEST(ViewKeys, EveryKeyInEveryState)
{
    constexpr std::array Keys{Key::Down, Key::Up, Key::Return, Key::Escape, Key::Left, Key::Right, Key::Tab,
        Key::Slash, Key::E, Key::N, Key::F, Key::Other};
    for (const Key key : Keys) {
        for (int bits = 0; bits < 8; ++bits) {
            const Press press{.key = key,
                .isExactlyCommand = (bits & 1) != 0,
                .hasCommandOrControl = (bits & 3) != 0,
                .startsSearch = (bits & 4) != 0};
            for (const State &state : allStates()) {
                ASSERT_EQ(viewAction(press, state), expectedOfView(press, state))
                    << "key " << int(key) << " bits " << bits << ": " << describe(state);
            }
        }
    }
}

struct Pressed {
    const char *name;
    int key;
    Qt::KeyboardModifiers modifiers;
    QString text;
    Press expected;
};

class Presses : public ::testing::TestWithParam<Pressed>
{
};

TEST_P(Presses, AreReadAs)
{
    const Press press = pressOf(GetParam().key, int(GetParam().modifiers), GetParam().text);
    EXPECT_EQ(press.key, GetParam().expected.key);
    EXPECT_EQ(press.isExactlyCommand, GetParam().expected.isExactlyCommand);
    EXPECT_EQ(press.hasCommandOrControl, GetParam().expected.hasCommandOrControl);
    EXPECT_EQ(press.startsSearch, GetParam().expected.startsSearch);
}

INSTANTIATE_TEST_SUITE_P(Keyboard, Presses,
    ::testing::Values(
        Pressed{"Letter", Qt::Key_A, Qt::NoModifier, QStringLiteral("a"), {Key::Other, false, false, true}},
        Pressed{
            "Capital", Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A"), {Key::Other, false, false, true}},
        Pressed{"E", Qt::Key_E, Qt::NoModifier, QStringLiteral("e"), {Key::E, false, false, true}},
        Pressed{
            "ControlE", Qt::Key_E, Qt::ControlModifier, QStringLiteral("\x05"), {Key::E, true, true, false}},
        Pressed{"SuperN", Qt::Key_N, Qt::MetaModifier, QStringLiteral("n"), {Key::N, true, true, true}},
        Pressed{"ControlShiftE", Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier, QStringLiteral("\x05"),
            {Key::E, false, true, false}},
        Pressed{"ControlAltF", Qt::Key_F, Qt::ControlModifier | Qt::AltModifier, QString(),
            {Key::F, false, true, false}},
        Pressed{"ControlAndSuperF", Qt::Key_F, Qt::ControlModifier | Qt::MetaModifier, QString(),
            {Key::F, true, true, false}},
        Pressed{
            "Slash", Qt::Key_Slash, Qt::NoModifier, QStringLiteral("/"), {Key::Slash, false, false, true}},
        Pressed{"GermanSlash", Qt::Key_Slash, Qt::ShiftModifier, QStringLiteral("/"),
            {Key::Slash, false, false, true}},
        Pressed{"KeypadEnter", Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r"),
            {Key::Return, false, false, false}},
        Pressed{"KeypadDigit", Qt::Key_7, Qt::KeypadModifier, QStringLiteral("7"),
            {Key::Other, false, false, true}},
        Pressed{"AltGrLetter", Qt::Key_At, Qt::GroupSwitchModifier, QStringLiteral("@"),
            {Key::Other, false, false, true}},
        Pressed{
            "Space", Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), {Key::Other, false, false, true}},
        Pressed{"Plus", Qt::Key_Plus, Qt::NoModifier, QStringLiteral("+"), {Key::Other, false, false, false}},
        Pressed{"FunctionKey", Qt::Key_F5, Qt::NoModifier, QString(), {Key::Other, false, false, false}},
        Pressed{"Backspace", Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"),
            {Key::Other, false, false, false}},
        Pressed{"Cyrillic", 0x436, Qt::NoModifier, QStringLiteral("ж"), {Key::Other, false, false, true}},
        Pressed{"Tab", Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"), {Key::Tab, false, false, true}}),
    [](const auto &tested) { return std::string(tested.param.name); });

} // namespace
