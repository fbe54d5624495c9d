#include "base/Text.h"

#include "base/Graphemes.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <QStringDecoder>

#include <cstring>
#include <memory>

namespace text
{

using namespace graphemes;

namespace
{

/// ICU's own iterator over a stretch of text that needs the full rules.
qint64 clustersByRules(QByteArrayView utf8)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::BreakIterator *const iterator = breakIterator();
    if (!iterator)
        return utf8.size();
    UText *text = utext_openUTF8(nullptr, utf8.data(), utf8.size(), &status);
    iterator->setText(text, status);
    qint64 count = 0;
    while (iterator->next() != icu::BreakIterator::DONE)
        ++count;
    utext_close(text);
    return count;
}

constexpr int WordSize = sizeof(quint64);
constexpr quint64 HighBits = 0x8080808080808080U;

/// Whether the next eight bytes are ASCII without a carriage return: eight characters, if none comes before.
bool isPlainWord(const quint8 *at)
{
    constexpr quint64 Ones = 0x0101010101010101U;
    quint64 word = 0;
    std::memcpy(&word, at, WordSize);
    // Of ASCII bytes, only one that is a carriage return has its high bit set by this.
    const quint64 returns = (word ^ (Ones * '\r')) - Ones;
    return ((word | returns) & HighBits) == 0;
}

/// Counts plain characters from `begin` on and stops at the first involved one.
const quint8 *countPlain(const quint8 *begin, const quint8 *end, qint64 &count)
{
    const quint8 *at = begin;
    bool afterReturn = false;
    while (at != end) {
        if (end - at >= WordSize && !afterReturn && isPlainWord(at)) {
            at += WordSize;
            count += WordSize;
            continue;
        }
        const quint8 *const next = at + qMin<qsizetype>(WordSize, end - at);
        for (; at != next; ++at) {
            if (isInvolved(at, end))
                return at;
            count += !isContinuation(*at);
            count -= *at == '\n' && afterReturn;
            afterReturn = *at == '\r';
        }
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
    const auto *at = reinterpret_cast<const quint8 *>(utf8.data());
    const quint8 *const end = at + utf8.size();
    qint64 count = 0;
    while (at != end) {
        const quint8 *const begin = at;
        at = countPlain(at, end, count);
        if (at == end)
            break;
        // The character before the stretch may take its first mark, so it goes with the stretch.
        const quint8 *const stretch = startOfPrevious(begin, at);
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
        while (at + WordSize <= size && (std::memcpy(&word, data + at, WordSize), (word & HighBits) == 0))
            at += WordSize;
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
