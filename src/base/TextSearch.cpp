#include "base/TextSearch.h"

#include "base/Graphemes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace text
{
namespace
{

constexpr char lower(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

constexpr bool isLetter(char byte)
{
    return byte >= 'a' && byte <= 'z';
}

bool equalsLowered(const char *text, const char *lowered, qsizetype size)
{
    for (qsizetype at = 0; at < size; ++at) {
        if (lower(text[at]) != lowered[at])
            return false;
    }
    return true;
}

/// Blocks of bytes that the compiler turns into the machine's vectors.
constexpr qsizetype BlockSize = 16;
using Block = quint8 __attribute__((vector_size(BlockSize)));

Block blockAt(const char *at)
{
    Block block;
    std::memcpy(&block, at, sizeof block);
    return block;
}

Block blockOf(char byte)
{
    return Block{} + static_cast<quint8>(byte);
}

/// How common a byte is in texts, roughly: the first byte of a sequence is the same for a whole alphabet.
constexpr int commonness(char byte)
{
    constexpr QByteArrayView CommonLetters("etaoinsr");
    if (static_cast<quint8>(byte) >= 0xc0)
        return 4;
    if (byte == ' ')
        return 3;
    return CommonLetters.contains(byte) ? 2 : isLetter(byte) ? 1 : 0;
}

bool isAnySet(Block block)
{
    std::array<quint64, BlockSize / sizeof(quint64)> words{};
    std::memcpy(words.data(), &block, sizeof block);
    return (words[0] | words[1]) != 0;
}

} // namespace

SearchPattern::SearchPattern(const QString &sought, CaseRule rule)
    : m_rule(rule)
    , m_folded(folded(sought.toUtf8(), rule).utf8)
    , m_isAscii(std::ranges::all_of(m_folded, [](char byte) { return static_cast<quint8>(byte) < 0x80; }))
{
    const auto isRarer = [this](qsizetype a, qsizetype b) {
        return commonness(m_folded[a]) < commonness(m_folded[b]);
    };
    m_second = m_folded.size() - 1;
    for (qsizetype at = 0; at < m_folded.size(); ++at) {
        if (isRarer(at, m_first))
            m_second = std::exchange(m_first, at);
        else if (at != m_first && (m_second == m_first || isRarer(at, m_second)))
            m_second = at;
    }
}

bool SearchPattern::isInAscii(QByteArrayView text) const
{
    if (!m_isAscii)
        return false;
    for (qsizetype at = find(text, 0); at >= 0; at = find(text, at + 1)) {
        if (graphemes::isBoundary(text, at) && graphemes::isBoundary(text, at + size()))
            return true;
    }
    return false;
}

bool SearchPattern::isIn(const FoldedText &text) const
{
    const auto isBoundary = [&text](qsizetype offset) {
        return graphemes::isBoundary(text.utf8, offset) &&
            !std::ranges::binary_search(text.innerOffsets, static_cast<quint32>(offset));
    };
    for (qsizetype at = find(text.utf8, 0); at >= 0; at = find(text.utf8, at + 1)) {
        if (isBoundary(at) && isBoundary(at + size()))
            return true;
    }
    return false;
}

qsizetype SearchPattern::find(QByteArrayView text, qsizetype from) const
{
    const qsizetype last = text.size() - size();
    const char *const bytes = text.data();
    const char *const sought = m_folded.constData();
    // Two bytes of it are compared in many places at once: few places have both.
    const Block firsts = blockOf(sought[m_first]);
    const Block seconds = blockOf(sought[m_second]);
    const Block firstCase = blockOf(isLetter(sought[m_first]) ? 0x20 : 0);
    const Block secondCase = blockOf(isLetter(sought[m_second]) ? 0x20 : 0);
    qsizetype at = from;
    while (at <= last) {
        if (at + BlockSize <= last + 1) {
            const Block hasFirst = (blockAt(bytes + at + m_first) | firstCase) == firsts;
            const Block hasSecond = (blockAt(bytes + at + m_second) | secondCase) == seconds;
            if (!isAnySet(hasFirst & hasSecond)) {
                at += BlockSize;
                continue;
            }
        }
        const qsizetype stop = std::min(at + BlockSize, last + 1);
        for (; at < stop; ++at) {
            if (equalsLowered(bytes + at, sought, size()))
                return at;
        }
    }
    return -1;
}

bool localizedCaseInsensitiveContains(QByteArrayView text, const SearchPattern &pattern)
{
    return foldsAsAscii(text, pattern.rule()) ? pattern.isInAscii(text)
                                              : pattern.isIn(folded(text, pattern.rule()));
}

} // namespace text
