#pragma once

#include "base/TextFolding.h"

#include <QString>

namespace text
{

/// A text to be sought, made ready once for many texts.
class SearchPattern
{
public:
    /// `sought` is not empty.
    SearchPattern(const QString &sought, CaseRule rule);

    CaseRule rule() const { return m_rule; }
    /// The size of the folded pattern in bytes.
    qsizetype size() const { return m_folded.size(); }

    /// Whether a text that folds as ASCII contains it.
    bool isInAscii(QByteArrayView text) const;
    bool isIn(const FoldedText &text) const;

private:
    /// Where it stands in the text next, from an offset on, ASCII letters in either case; -1 when it does
    /// not.
    qsizetype find(QByteArrayView text, qsizetype from) const;

    CaseRule m_rule;
    QByteArray m_folded;
    bool m_isAscii;
    // Where its two least common bytes are.
    qsizetype m_first = 0;
    qsizetype m_second = 0;
};

/// Whether the text contains the pattern: in any letter case by the language's rules, canonically equivalent
/// texts being equal and accents counting, and from the boundary of a user-perceived character to another.
bool localizedCaseInsensitiveContains(QByteArrayView text, const SearchPattern &pattern);

} // namespace text
