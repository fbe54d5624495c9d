#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

class QLocale;

/// Folding, which makes texts comparable that differ in letter case or in how accents are encoded. Texts are
/// well-formed UTF-8.
namespace text
{

/// What is one letter in two cases: the language decides.
enum class CaseRule {
    Common,
    Turkic, ///< Azerbaijani and Turkish: I belongs to dotless i, and i to I with a dot
};

CaseRule caseRule(const QLocale &locale);

/// A text folded: full case folding (Unicode, CaseFolding.txt: sharp s becomes "ss", a final sigma any
/// sigma), composed (NFC), so that canonically equivalent texts are equal. Accents stay.
struct FoldedText {
    QByteArray utf8;
    /// Ascending offsets into `utf8` at which a character of its own seems to begin that in the text is a
    /// part of one: between the two letters that a sharp s becomes.
    std::vector<quint32> innerOffsets;
};

FoldedText folded(QByteArrayView utf8, CaseRule rule);

/// Whether folding does no more to the text than to change the case of ASCII letters. Costs no more than
/// reading it.
bool foldsAsAscii(QByteArrayView utf8, CaseRule rule);

} // namespace text
