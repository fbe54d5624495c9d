#pragma once

#include <QByteArrayView>

#include <unicode/brkiter.h>

#include <array>

/// Where user-perceived characters (extended grapheme clusters, UAX #29) begin and end in well-formed UTF-8.
/// Most of most texts is plain: between two plain characters there is a boundary, CR LF excepted, so that the
/// full rules are asked for the rest alone.
namespace graphemes
{

/// Whether a byte is inside a sequence, not at the start of a code point.
constexpr bool isContinuation(quint8 byte)
{
    return (byte & 0xc0U) == 0x80;
}

enum class Lead : quint8 {
    Plain,    // between two such characters there is a boundary, CR LF excepted
    Involved, // the rules of UAX #29 must be asked
    Kana,     // one or the other
};

/// By first byte. Plain are blocks in which every character has the Grapheme_Cluster_Break value Other or
/// Control (rules GB4, GB5, GB999) or is a whole Hangul syllable (rules GB6 to GB8 join those to conjoining
/// letters only). A pictograph among them, as U+00A9, joins only a joiner, which is not plain.
constexpr std::array<Lead, 256> leads()
{
    std::array<Lead, 256> kinds{};
    const auto set = [&kinds](size_t first, size_t last, Lead kind) {
        for (size_t byte = first; byte <= last; ++byte)
            kinds[byte] = kind;
    };
    set(0xc0, 0xff, Lead::Involved);
    set(0xc2, 0xcb, Lead::Plain); // U+0080 to U+02FF: Latin, IPA, modifier letters
    set(0xce, 0xd1, Lead::Plain); // U+0380 to U+047F: Greek, Cyrillic
    set(0xe3, 0xe3, Lead::Kana);  // U+3000 to U+3FFF
    set(0xe4, 0xe9, Lead::Plain); // U+4000 to U+9FFF: ideographs
    set(0xeb, 0xec, Lead::Plain); // U+B000 to U+CFFF: most of Hangul
    return kinds;
}

inline constexpr std::array<Lead, 256> Leads = leads();

/// Whether the rules must be asked for the code point at `at`; else it is plain.
inline bool isInvolved(const quint8 *at, const quint8 *end)
{
    const Lead lead = Leads[*at];
    if (lead != Lead::Kana)
        return lead == Lead::Involved;
    if (end - at < 3)
        return true;
    // U+3000 to U+30FF: punctuation and kana, but for tone marks (U+302A to U+302F) and voicing (U+3099,
    // U+309A).
    const bool isToneMark = at[1] == 0x80 && at[2] >= 0xaa && at[2] <= 0xaf;
    const bool isVoicing = at[1] == 0x82 && (at[2] == 0x99 || at[2] == 0x9a);
    return at[1] > 0x83 || isToneMark || isVoicing;
}

/// The end of an involved stretch: the second of two plain characters in a row, or the end of the text.
const quint8 *endOfInvolved(const quint8 *begin, const quint8 *end);

/// The start of the last code point before `at`, or `begin` when there is none.
const quint8 *startOfPrevious(const quint8 *begin, const quint8 *at);

/// The full rules: this thread's iterator over characters; null when ICU has no data for it.
icu::BreakIterator *breakIterator();

/// Whether a character begins at the offset, which lies at the start of a code point or at the end.
bool isBoundary(QByteArrayView utf8, qsizetype offset);

} // namespace graphemes
