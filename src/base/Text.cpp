#include "base/Text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <QStringDecoder>

#include <array>
#include <cstring>
#include <memory>

namespace text
{
namespace
{

enum class ByteKind : quint8 {
    Continuation, // inside a sequence
    Plain,        // starts a character that is always a cluster of its own beside another plain one
    Involved,     // starts a character for which the rules of UAX #29 must be asked
};

/// By lead byte: blocks in which every character has the Grapheme_Cluster_Break value Other or Control, so
/// that there is a boundary between any two of them (rules GB4, GB5, GB999), CR LF excepted. U+00A9 and
/// U+00AE are pictographs, which matters only before a joiner, and a joiner is not plain.
constexpr std::array<ByteKind, 256> byteKinds()
{
    std::array<ByteKind, 256> kinds{};
    for (size_t byte = 0; byte < kinds.size(); ++byte) {
        if (byte < 0x80) // ASCII
            kinds[byte] = ByteKind::Plain;
        else if (byte < 0xc0)
            kinds[byte] = ByteKind::Continuation;
        else if (byte >= 0xc2 && byte <= 0xcb) // U+0080 to U+02FF: Latin, IPA, modifier letters
            kinds[byte] = ByteKind::Plain;
        else if (byte == 0xd0 || byte == 0xd1) // U+0400 to U+047F: Cyrillic
            kinds[byte] = ByteKind::Plain;
        else if (byte >= 0xe4 && byte <= 0xe9) // U+4000 to U+9FFF: ideographs
            kinds[byte] = ByteKind::Plain;
        else
            kinds[byte] = ByteKind::Involved;
    }
    return kinds;
}

constexpr std::array<ByteKind, 256> Kinds = byteKinds();

ByteKind kindOf(char byte)
{
    return Kinds[static_cast<quint8>(byte)];
}

/// ICU's own iterator over a stretch of text that needs the full rules.
qint64 clustersByRules(QByteArrayView utf8)
{
    UErrorCode status = U_ZERO_ERROR;
    // One iterator for the process's main thread would save 20 microseconds a copy; a copy is not that
    // frequent, but a text may have many involved stretches.
    static thread_local const std::unique_ptr<icu::BreakIterator> Iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (!Iterator)
        return utf8.size();
    UText *text = utext_openUTF8(nullptr, utf8.data(), utf8.size(), &status);
    Iterator->setText(text, status);
    qint64 count = 0;
    while (Iterator->next() != icu::BreakIterator::DONE)
        ++count;
    utext_close(text);
    return count;
}

/// Counts plain characters from `begin` on and stops at the first involved one.
const char *countPlain(const char *begin, const char *end, qint64 &count)
{
    const char *at = begin;
    char previous = 0;
    while (at != end) {
        const ByteKind kind = kindOf(*at);
        if (kind == ByteKind::Involved)
            break;
        count += kind == ByteKind::Plain;
        count -= *at == '\n' && previous == '\r';
        previous = *at++;
    }
    return at;
}

/// The end of an involved stretch: the second of two plain characters in a row, or the end of the text.
const char *endOfInvolved(const char *begin, const char *end)
{
    bool afterPlain = false;
    for (const char *at = begin; at != end; ++at) {
        const ByteKind kind = kindOf(*at);
        if (kind == ByteKind::Continuation)
            continue;
        if (kind == ByteKind::Plain && afterPlain && !(*at == '\n' && at[-1] == '\r'))
            return at;
        afterPlain = kind == ByteKind::Plain;
    }
    return end;
}

/// The start of the last plain character before `at`, or `begin` when there is none.
const char *startOfPrevious(const char *begin, const char *at)
{
    while (at != begin) {
        --at;
        if (kindOf(*at) != ByteKind::Continuation)
            break;
    }
    return at;
}

bool isWhiteSpace(UChar32 character)
{
    return u_isUWhiteSpace(character);
}

} // namespace

qint64 characterCount(QByteArrayView utf8)
{
    const char *at = utf8.data();
    const char *const end = at + utf8.size();
    qint64 count = 0;
    while (at != end) {
        const char *const begin = at;
        at = countPlain(at, end, count);
        if (at == end)
            break;
        // The character before the stretch may take its first mark, so it goes with the stretch.
        const char *const stretch = startOfPrevious(begin, at);
        if (stretch != at)
            --count;
        at = endOfInvolved(at, end);
        count += clustersByRules(QByteArrayView(stretch, at - stretch));
    }
    return count;
}

QByteArrayView trimmed(QByteArrayView utf8)
{
    const auto *const bytes = reinterpret_cast<const uint8_t *>(utf8.data());
    int32_t begin = 0;
    auto end = static_cast<int32_t>(utf8.size());
    while (begin < end) {
        int32_t next = begin;
        UChar32 character = 0;
        U8_NEXT(bytes, next, end, character);
        if (!isWhiteSpace(character))
            break;
        begin = next;
    }
    while (end > begin) {
        int32_t previous = end;
        UChar32 character = 0;
        U8_PREV(bytes, begin, previous, character);
        if (!isWhiteSpace(character))
            break;
        end = previous;
    }
    return utf8.sliced(begin, end - begin);
}

QByteArray wellFormed(const QByteArray &bytes)
{
    const auto *const data = reinterpret_cast<const uint8_t *>(bytes.constData());
    const auto size = static_cast<int32_t>(bytes.size());
    int32_t at = 0;
    while (at < size) {
        // ASCII in steps of eight bytes: most texts are little else.
        quint64 word = 0;
        while (at + 8 <= size && (std::memcpy(&word, data + at, 8), (word & 0x8080808080808080U) == 0))
            at += 8;
        if (at == size)
            return bytes;
        UChar32 character = 0;
        U8_NEXT(data, at, size, character);
        if (character < 0) {
            QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
            return QString(decoder(bytes)).toUtf8();
        }
    }
    return bytes;
}

QString prefix(QByteArrayView utf8, qint64 limit)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (!iterator || utf8.isEmpty())
        return {};
    UText *text = utext_openUTF8(nullptr, utf8.data(), utf8.size(), &status);
    iterator->setText(text, status);
    int32_t end = 0;
    for (qint64 count = 0; count < limit; ++count) {
        const int32_t next = iterator->next();
        if (next == icu::BreakIterator::DONE)
            break;
        end = next;
    }
    utext_close(text);
    return QString::fromUtf8(utf8.first(end));
}

} // namespace text
