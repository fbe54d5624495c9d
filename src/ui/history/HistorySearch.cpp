#include "ui/history/HistorySearch.h"

#include <algorithm>

namespace
{

/// Read and searched within a few milliseconds, also where every character has to be folded.
constexpr qint64 PieceSize = 1024 * 1024;
/// Not zero: between two turns the user's keys are to be heard.
constexpr std::chrono::milliseconds TurnDelay{1};
/// The beginning of a content may end within a character.
constexpr qsizetype CutMargin = 64;

} // namespace

HistorySearch::HistorySearch(ModelContext &context, MainQueue &queue, text::CaseRule rule)
    : m_context(context)
    , m_queue(queue)
    , m_rule(rule)
{
    m_context.records<ClipboardItem>().addObserver(*this);
}

HistorySearch::~HistorySearch()
{
    m_context.records<ClipboardItem>().removeObserver(*this);
}

void HistorySearch::seek(const QString &searchText)
{
    const bool isNarrower = !m_searchText.isEmpty() && searchText.startsWith(m_searchText);
    m_searchText = searchText;
    m_reading.reset();
    m_waiting.clear();
    m_names.clear();
    m_pattern.reset();
    if (!searchText.isEmpty())
        m_pattern.emplace(searchText, m_rule);
    if (!isNarrower)
        m_longContents.clear();
    // A row that has been found stays until it is known to be none: it would flicker.
    for (auto &[item, known] : m_longContents)
        known.isCertain = false;
}

bool HistorySearch::finds(const ClipboardItem &item)
{
    if (!m_pattern)
        return true;
    return isIn(item) || (!item.fields().sourceAppName.isNull() && isInName(item.fields().sourceAppName));
}

bool HistorySearch::isIn(const ClipboardItem &item)
{
    if (!item.isContentResident())
        return isInLongContent(item);
    const QByteArrayView content = item.contentHead();
    Folding &folding = foldingOf(item);
    if (folding == Folding::Unknown)
        folding = text::foldsAsAscii(content, m_rule) ? Folding::Ascii : Folding::Copied;
    if (folding == Folding::Ascii)
        return m_pattern->isInAscii(content);
    auto folded = m_foldedTexts.find(&item);
    if (folded == m_foldedTexts.end())
        folded = m_foldedTexts.emplace(&item, text::folded(content, m_rule)).first;
    return m_pattern->isIn(folded->second);
}

HistorySearch::Folding &HistorySearch::foldingOf(const ClipboardItem &item)
{
    if (m_foldings.size() <= item.sequence())
        m_foldings.resize(item.sequence() + 1, Folding::Unknown);
    return m_foldings[item.sequence()];
}

void HistorySearch::forgetFoldedTexts()
{
    m_foldedTexts.clear();
    m_foldings = {};
}

bool HistorySearch::isInName(const QString &name)
{
    const auto known = m_names.constFind(name);
    if (known != m_names.constEnd())
        return *known;
    const bool isFound = text::localizedCaseInsensitiveContains(name.toUtf8(), *m_pattern);
    m_names.insert(name, isFound);
    return isFound;
}

bool HistorySearch::isInLongContent(const ClipboardItem &item)
{
    Known &known = m_longContents[&item];
    if (known.isCertain)
        return known.isFound;
    const QByteArrayView head = item.contentHead();
    const QByteArrayView whole = head.first(text::characterStart(head, head.size() - CutMargin));
    if (text::localizedCaseInsensitiveContains(whole, *m_pattern)) {
        known = {.isFound = true, .isCertain = true};
    } else if (std::ranges::find(m_waiting, &item) == m_waiting.end() &&
        !(m_reading && m_reading->item == &item)) {
        m_waiting.push_back(&item);
        scheduleTurn();
    }
    return known.isFound;
}

void HistorySearch::scheduleTurn()
{
    if (m_isTurnScheduled)
        return;
    m_isTurnScheduled = true;
    m_queue.asyncAfter(TurnDelay, m_lifetime.guard([this] {
        m_isTurnScheduled = false;
        readNextPiece();
    }));
}

void HistorySearch::readNextPiece()
{
    if (!m_reading && !m_waiting.empty()) {
        startReading(*m_waiting.front());
        m_waiting.pop_front();
    }
    if (m_reading) {
        const auto piece = m_reading->content->read(m_reading->offset, PieceSize);
        m_reading->offset += PieceSize;
        const bool isLast = !piece || m_reading->offset >= m_reading->content->size();
        using Rest = text::PieceSearch::Rest;
        const bool isFound = piece && m_reading->search.find(*piece, isLast ? Rest::None : Rest::Follows);
        if (isFound || isLast)
            settle(*m_reading->item, {.isFound = isFound, .isCertain = true});
    }
    if (m_reading || !m_waiting.empty())
        scheduleTurn();
}

void HistorySearch::startReading(const ClipboardItem &item)
{
    auto content = item.openContent();
    if (content)
        m_reading.emplace(Reading{&item, std::move(content), text::PieceSearch(*m_pattern), 0});
    else
        settle(item, {.isFound = false, .isCertain = true});
}

void HistorySearch::settle(const ClipboardItem &item, Known known)
{
    m_reading.reset();
    const bool wasFound = std::exchange(m_longContents[&item], known).isFound;
    const auto shared = m_context.records<ClipboardItem>().shared(item);
    if (wasFound != known.isFound && shared && onAnswerChanged)
        onAnswerChanged(shared);
}

void HistorySearch::forget(const ClipboardItem &item)
{
    m_foldedTexts.erase(&item);
    if (item.sequence() < m_foldings.size())
        m_foldings[item.sequence()] = Folding::Unknown;
    m_longContents.erase(&item);
    std::erase(m_waiting, &item);
    if (m_reading && m_reading->item == &item)
        m_reading.reset();
}
