#include "base/Graphemes.h"

#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <memory>

namespace graphemes
{

const quint8 *endOfInvolved(const quint8 *begin, const quint8 *end)
{
    bool afterPlain = false;
    for (const quint8 *at = begin; at != end; ++at) {
        if (isContinuation(*at))
            continue;
        const bool isPlain = !isInvolved(at, end);
        if (isPlain && afterPlain && !(*at == '\n' && at[-1] == '\r'))
            return at;
        afterPlain = isPlain;
    }
    return end;
}

const quint8 *startOfPrevious(const quint8 *begin, const quint8 *at)
{
    while (at != begin) {
        --at;
        if (!isContinuation(*at))
            break;
    }
    return at;
}

icu::BreakIterator *breakIterator()
{
    // Made once: a text may have many involved stretches.
    static thread_local const std::unique_ptr<icu::BreakIterator> Iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    return Iterator.get();
}

bool isBoundary(QByteArrayView utf8, qsizetype offset)
{
    if (offset <= 0 || offset >= utf8.size())
        return true;
    const auto *const begin = reinterpret_cast<const quint8 *>(utf8.data());
    const quint8 *const end = begin + utf8.size();
    const quint8 *const at = begin + offset;
    const quint8 *const previous = startOfPrevious(begin, at);
    if (!isInvolved(previous, end) && !isInvolved(at, end))
        return *previous != '\r' || *at != '\n';
    icu::BreakIterator *const iterator = breakIterator();
    if (!iterator)
        return true;
    UErrorCode status = U_ZERO_ERROR;
    UText *text = utext_openUTF8(nullptr, utf8.data(), utf8.size(), &status);
    iterator->setText(text, status);
    const bool isOne = iterator->isBoundary(static_cast<int32_t>(offset));
    utext_close(text);
    return isOne;
}

} // namespace graphemes
