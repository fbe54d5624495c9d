#include "base/PieceSearch.h"

#include "base/Graphemes.h"

namespace text
{
namespace
{

/// A folded text may be so many times as short as the text: three letters of Hangul become one syllable.
constexpr qsizetype LongestUnfolding = 4;
/// More than what is missing of a sequence or of a common character at the end of a piece.
constexpr qsizetype Margin = 64;
/// How far a character's start is looked for: longer ones are nobody's writing.
constexpr qsizetype LongestCharacter = 1024;

} // namespace

qsizetype characterStart(QByteArrayView utf8, qsizetype offset)
{
    const auto isStart = [utf8](qsizetype at) {
        return at == 0 || !graphemes::isContinuation(static_cast<quint8>(utf8[at]));
    };
    if (offset <= 0 || offset >= utf8.size())
        return qBound<qsizetype>(0, offset, utf8.size());
    while (!isStart(offset))
        --offset;
    for (qsizetype at = offset; at >= 0 && offset - at < LongestCharacter; --at) {
        if (isStart(at) && graphemes::isBoundary(utf8, at))
            return at;
    }
    return offset;
}

bool PieceSearch::find(const QByteArray &piece, Rest rest)
{
    m_kept += piece;
    const QByteArrayView all(m_kept);
    const qsizetype end = rest == Rest::None ? all.size() : characterStart(all, all.size() - Margin);
    if (localizedCaseInsensitiveContains(all.first(end), m_pattern))
        return true;
    m_kept = m_kept.sliced(characterStart(all, end - LongestUnfolding * m_pattern.size() - Margin));
    return false;
}

} // namespace text
