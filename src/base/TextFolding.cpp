#include "base/TextFolding.h"

#include "base/Graphemes.h"

#include <QLocale>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <array>
#include <cstring>
#include <string>

namespace text
{

using namespace graphemes;

namespace
{

/// Code points below this one are folded by a table when they stand alone.
constexpr UChar32 TableSize = 0x600;
/// In the table: the folding is not one code point of the table's width.
constexpr char16_t ByRules = 0xffff;
using Table = std::array<char16_t, TableSize>;

/// Canonical caseless matching as Unicode defines it (D145), composed at the end.
icu::UnicodeString foldedByRules(const icu::UnicodeString &text, CaseRule rule)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto *const decomposing = icu::Normalizer2::getNFDInstance(status);
    const auto *const composing = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status))
        return text;
    icu::UnicodeString decomposed = decomposing->normalize(text, status);
    decomposed.foldCase(rule == CaseRule::Turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    icu::UnicodeString composed = composing->normalize(decomposed, status);
    return U_FAILURE(status) ? text : composed;
}

Table makeTable(CaseRule rule)
{
    Table table{};
    for (UChar32 character = 0; character < TableSize; ++character) {
        // A capital I with a dot is decomposed before it is folded, and the language's rule would miss it.
        const bool isDottedCapital = rule == CaseRule::Turkic && character == 0x130;
        const icu::UnicodeString fold =
            isDottedCapital ? icu::UnicodeString(u'i') : foldedByRules(icu::UnicodeString(character), rule);
        table[static_cast<size_t>(character)] = fold.length() == 1 ? fold.charAt(0) : ByRules;
    }
    return table;
}

const Table &tableOf(CaseRule rule)
{
    static const Table Common = makeTable(CaseRule::Common);
    static const Table Turkic = makeTable(CaseRule::Turkic);
    return rule == CaseRule::Turkic ? Turkic : Common;
}

class Folding
{
public:
    Folding(QByteArrayView utf8, CaseRule rule)
        : m_rule(rule)
        , m_table(tableOf(rule))
        , m_at(reinterpret_cast<const quint8 *>(utf8.data()))
        , m_end(m_at + utf8.size())
    {
        m_bytes.reserve(static_cast<size_t>(utf8.size()) + U8_MAX_LENGTH);
    }

    FoldedText run()
    {
        while (m_at != m_end) {
            const quint8 *const begin = m_at;
            foldPlain();
            if (m_at == m_end)
                break;
            if (m_at == begin)
                foldInvolved();
        }
        m_folded.utf8 = QByteArray(m_bytes.data(), std::ssize(m_bytes));
        return std::move(m_folded);
    }

private:
    /// Up to the last plain character before an involved one, which may take that one's marks.
    void foldPlain()
    {
        while (m_at != m_end && !isInvolved(m_at, m_end)) {
            const quint8 *next = m_at + 1;
            while (next != m_end && isContinuation(*next))
                ++next;
            if (next != m_end && isInvolved(next, m_end))
                return;
            foldOne(next);
            m_at = next;
        }
    }

    /// A plain character that stands alone.
    void foldOne(const quint8 *next)
    {
        UChar32 character = *m_at;
        if (next - m_at == 2)
            character = ((m_at[0] & 0x1f) << 6) | (m_at[1] & 0x3f);
        if (next - m_at > 2 || character >= TableSize) {
            // Ideographs, kana and syllables have no case.
            append(m_at, next);
            return;
        }
        const char16_t fold = m_table[static_cast<size_t>(character)];
        if (fold == ByRules) {
            foldCharacter(m_at, next);
            return;
        }
        if (fold < 0x80) {
            m_bytes.push_back(static_cast<char>(fold));
        } else if (fold < 0x800) {
            m_bytes.push_back(static_cast<char>(0xc0 | (fold >> 6)));
            m_bytes.push_back(static_cast<char>(0x80 | (fold & 0x3f)));
        } else {
            icu::UnicodeString(fold).toUTF8String(m_bytes);
        }
    }

    /// From a character whose marks may follow to the next two plain ones.
    void foldInvolved()
    {
        const quint8 *const end = endOfInvolved(m_at, m_end);
        icu::BreakIterator *const iterator = breakIterator();
        if (!iterator) {
            append(m_at, end);
            m_at = end;
            return;
        }
        const auto size = static_cast<int32_t>(end - m_at);
        std::vector<int32_t> boundaries;
        UErrorCode status = U_ZERO_ERROR;
        UText *text = utext_openUTF8(nullptr, reinterpret_cast<const char *>(m_at), size, &status);
        iterator->setText(text, status);
        while (iterator->next() != icu::BreakIterator::DONE)
            boundaries.push_back(iterator->current());
        utext_close(text);
        const quint8 *const stretch = m_at;
        for (const int32_t boundary : boundaries) {
            foldCharacter(m_at, stretch + boundary);
            m_at = stretch + boundary;
        }
        m_at = end;
    }

    /// One user-perceived character, which stays one whatever it becomes.
    void foldCharacter(const quint8 *begin, const quint8 *end)
    {
        const auto original = icu::UnicodeString::fromUTF8(
            icu::StringPiece(reinterpret_cast<const char *>(begin), static_cast<int32_t>(end - begin)));
        const icu::UnicodeString fold = foldedByRules(dotRemoved(original), m_rule);
        std::string bytes;
        fold.toUTF8String(bytes);
        const qsizetype start = std::ssize(m_bytes);
        m_bytes.append(bytes);
        if (fold.countChar32() < 2)
            return;
        const QByteArrayView added(bytes.data(), std::ssize(bytes));
        for (qsizetype offset = 1; offset < added.size(); ++offset) {
            if (!isContinuation(static_cast<quint8>(added[offset])) && isBoundary(added, offset))
                m_folded.innerOffsets.push_back(static_cast<quint32>(start + offset));
        }
    }

    /// In a Turkic language a capital I with a dot is an i, however its dot is encoded.
    icu::UnicodeString dotRemoved(icu::UnicodeString text) const
    {
        if (m_rule == CaseRule::Turkic) {
            text.findAndReplace(icu::UnicodeString(UChar32(0x130)), icu::UnicodeString(u'i'));
            text.findAndReplace(icu::UnicodeString(u"I\u0307"), icu::UnicodeString(u'i'));
        }
        return text;
    }

    void append(const quint8 *begin, const quint8 *end) { m_bytes.append(begin, end); }

    CaseRule m_rule;
    const Table &m_table;
    const quint8 *m_at;
    const quint8 *m_end;
    std::string m_bytes;
    FoldedText m_folded;
};

} // namespace

CaseRule caseRule(const QLocale &locale)
{
    const bool isTurkic = locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani;
    return isTurkic ? CaseRule::Turkic : CaseRule::Common;
}

FoldedText folded(QByteArrayView utf8, CaseRule rule)
{
    return Folding(utf8, rule).run();
}

bool foldsAsAscii(QByteArrayView utf8, CaseRule rule)
{
    const char *at = utf8.data();
    const char *const end = at + utf8.size();
    quint64 bits = 0;
    for (; end - at >= qsizetype(sizeof bits); at += sizeof bits) {
        quint64 word = 0;
        std::memcpy(&word, at, sizeof word);
        bits |= word;
    }
    for (; at != end; ++at)
        bits |= static_cast<quint8>(*at);
    const bool isAscii = (bits & 0x8080808080808080U) == 0;
    // Its I is not an i.
    return isAscii && !(rule == CaseRule::Turkic && utf8.contains('I'));
}

} // namespace text
