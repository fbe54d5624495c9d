#pragma once

#include "base/TextSearch.h"

namespace text
{

/// Seeks a pattern in a text that comes in pieces, and keeps no more of it than two of them.
class PieceSearch
{
public:
    enum class Rest { Follows, None };

    /// The pattern must outlive it.
    explicit PieceSearch(const SearchPattern &pattern)
        : m_pattern(pattern)
    {
    }

    /// Whether the pattern is in what has come so far, this piece included; a match at its end may be found
    /// with the next one only. Pieces may end within a UTF-8 sequence.
    bool find(const QByteArray &piece, Rest rest);

private:
    const SearchPattern &m_pattern;
    QByteArray m_kept;
};

/// The last place, not after the offset, where a character begins; the offset's code point where there is
/// none near.
qsizetype characterStart(QByteArrayView utf8, qsizetype offset);

} // namespace text
