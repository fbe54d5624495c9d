#include "platform/linux/ClipboardQueue.h"

#include "base/Console.h"

#include <algorithm>
#include <array>

namespace
{

constexpr std::array ImageTypes = {PasteboardType::Tiff, PasteboardType::Png};

bool hasUnconvertedImages(const ClipboardReading &reading)
{
    return std::any_of(ImageTypes.begin(), ImageTypes.end(),
        [&](PasteboardType type) { return reading.values.contains(type) && !reading.pngs.contains(type); });
}

/// The images alone: what a conversion needs.
ClipboardReading imagesOf(const ClipboardReading &reading)
{
    ClipboardReading images;
    images.isImageOfAnyFormat = reading.isImageOfAnyFormat;
    for (const PasteboardType type : ImageTypes) {
        if (const auto found = reading.values.find(type); found != reading.values.end())
            images.values.insert(*found);
    }
    return images;
}

} // namespace

qint64 ClipboardQueue::reserve()
{
    const std::lock_guard lock(m_mutex);
    m_line.push_back({++m_lastNumber, State::Reserved, {}});
    return m_lastNumber;
}

void ClipboardQueue::fill(qint64 number, ClipboardReading reading)
{
    const std::lock_guard lock(m_mutex);
    Content *const content = find(number);
    if (content == nullptr || content->state != State::Reserved)
        return;
    store(*content, std::move(reading));
    dropBeyondLimits();
    updateFlag();
}

void ClipboardQueue::abandon(qint64 number)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_line, [&](const Content &content) { return content.number == number; });
    updateFlag();
}

bool ClipboardQueue::holdsBack(qint64 number) const
{
    const std::lock_guard lock(m_mutex);
    return std::any_of(m_line.begin(), m_line.end(),
        [&](const Content &content) { return content.number > number && content.state == State::Finished; });
}

void ClipboardQueue::amend(qint64 number, const std::function<void(ClipboardReading &)> &change)
{
    const std::lock_guard lock(m_mutex);
    Content *const content = find(number);
    if (content == nullptr)
        return;
    ClipboardReading reading = content->reading;
    change(reading);
    store(*content, std::move(reading));
    dropBeyondLimits();
    updateFlag();
}

bool ClipboardQueue::advance()
{
    if (!m_hasNext.load(std::memory_order_acquire))
        return false;
    // The content before goes without the lock: freeing it may take a while.
    Content previous;
    const std::lock_guard lock(m_mutex);
    if (m_line.empty() || m_line.front().state != State::Finished)
        return false;
    previous = std::exchange(m_current, std::move(m_line.front()));
    m_line.pop_front();
    m_changeCount = m_current.number;
    updateFlag();
    return true;
}

std::vector<PasteboardItem> ClipboardQueue::pasteboardItems() const
{
    const std::lock_guard lock(m_mutex);
    if (m_current.reading.values.empty())
        return {};
    auto strings = m_current.reading.values;
    for (const PasteboardType type : ImageTypes)
        strings.erase(type);
    return {PasteboardItem(std::move(strings))};
}

std::optional<QByteArray> ClipboardQueue::data(PasteboardType type) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_current.reading.values.find(type);
    return found == m_current.reading.values.end() ? std::nullopt : std::optional(found->second);
}

std::optional<QByteArray> ClipboardQueue::pngRepresentation(PasteboardType type) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_current.reading.pngs.find(type);
    return found == m_current.reading.pngs.end() ? std::nullopt : std::optional(found->second);
}

/// With the lock held, as the functions below.
ClipboardQueue::Content *ClipboardQueue::find(qint64 number)
{
    if (m_current.number == number)
        return &m_current;
    const auto found = std::find_if(
        m_line.begin(), m_line.end(), [&](const Content &content) { return content.number == number; });
    return found == m_line.end() ? nullptr : &*found;
}

void ClipboardQueue::store(Content &content, ClipboardReading reading)
{
    content.reading = std::move(reading);
    ++content.revision;
    const bool mustConvert = hasUnconvertedImages(content.reading);
    content.state = mustConvert ? State::Converting : State::Finished;
    if (mustConvert)
        m_converter.post(
            [this, number = content.number, revision = content.revision] { convert(number, revision); });
}

/// On the converter's thread. The bytes stay with the content, so that one that is dropped frees them.
void ClipboardQueue::convert(qint64 number, int revision)
{
    ClipboardReading images;
    {
        const std::lock_guard lock(m_mutex);
        const Content *const content = find(number);
        if (content == nullptr || content->revision != revision)
            return; // dropped, or amended since: another conversion is on its way
        images = imagesOf(content->reading);
    }
    clipboard::addPngRepresentations(images);
    const std::lock_guard lock(m_mutex);
    Content *const content = find(number);
    if (content == nullptr || content->revision != revision)
        return;
    for (const PasteboardType type : ImageTypes)
        content->reading.values.erase(type);
    content->reading.values.merge(images.values);
    content->reading.pngs = std::move(images.pngs);
    content->state = State::Finished;
    dropBeyondLimits();
    updateFlag();
}

void ClipboardQueue::dropBeyondLimits()
{
    while (isBeyondLimits()) {
        const auto isThere = [](const Content &content) { return content.state != State::Reserved; };
        const auto oldest = std::find_if(m_line.begin(), m_line.end(), isThere);
        // The newest one stays, however large: one that is only reserved may never come.
        if (oldest == m_line.end() || std::none_of(oldest + 1, m_line.end(), isThere))
            return;
        consoleLine(QStringLiteral("[Larkspool] Dropped a waiting copy of %1 bytes: too many are waiting")
                        .arg(oldest->reading.byteCount()));
        m_line.erase(oldest);
    }
}

bool ClipboardQueue::isBeyondLimits() const
{
    size_t contents = 0;
    qint64 bytes = 0;
    for (const Content &content : m_line) {
        contents += content.state != State::Reserved;
        bytes += content.reading.byteCount();
    }
    return contents > m_limits.contents || bytes > m_limits.bytes;
}

void ClipboardQueue::updateFlag()
{
    m_hasNext.store(!m_line.empty() && m_line.front().state == State::Finished, std::memory_order_release);
}
