#include "ui/history/ClipboardHistoryView.h"

#include <algorithm>

namespace
{

/// Super and Control count as Command alike inside the panel.
constexpr Qt::KeyboardModifiers CommandModifiers = Qt::ControlModifier | Qt::MetaModifier;
/// What tells where a key is, not how it is meant.
constexpr Qt::KeyboardModifiers Irrelevant = Qt::KeypadModifier | Qt::GroupSwitchModifier;

bool isExactlyCommand(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & CommandModifiers) && !(modifiers & ~(CommandModifiers | Irrelevant));
}

/// Whether a text can begin a search: it holds a letter, a digit, a punctuation mark or a blank.
bool startsSearch(const QString &text)
{
    const auto codePoints = text.toUcs4();
    return std::ranges::any_of(codePoints, [](char32_t character) {
        const bool isBlank = character == U'\t' || QChar::category(character) == QChar::Separator_Space;
        return QChar::isLetterOrNumber(character) || QChar::isMark(character) || QChar::isPunct(character) ||
            isBlank;
    });
}

} // namespace

bool ClipboardHistoryView::handleKey(int key, int modifiers, const QString &text)
{
    const auto held = Qt::KeyboardModifiers(modifiers);
    switch (key) {
    case Qt::Key_Down:
        moveSelection(1);
        return true;
    case Qt::Key_Up:
        moveSelection(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pasteSelected();
        return true;
    case Qt::Key_Escape:
        return stepBack();
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (m_isSearchExpanded)
            return false;
        navigateCategory(key == Qt::Key_Left ? -1 : 1);
        return true;
    default:
        break;
    }
    if (key == Qt::Key_F && isExactlyCommand(held)) {
        toggleSearch();
        return true;
    }
    const bool isFieldComing = !m_typedText.isEmpty();
    if ((m_isSearchExpanded && !isFieldComing) || (held & CommandModifiers) || !startsSearch(text))
        return false;
    typeToSearch(text);
    return true;
}
