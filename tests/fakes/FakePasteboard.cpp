#include "fakes/FakePasteboard.h"

#include "platform/ImageCodec.h"

void FakePasteboard::copy(const Content &content)
{
    m_waiting.push_back({m_nextNumber++, content});
}

void FakePasteboard::copySecret(const Content &)
{
    m_waiting.push_back({m_nextNumber++, {}});
}

bool FakePasteboard::advance()
{
    if (m_waiting.empty())
        return false;
    m_changeCount = m_waiting.front().number;
    m_current = std::move(m_waiting.front().content);
    m_waiting.pop_front();
    return true;
}

std::vector<PasteboardItem> FakePasteboard::pasteboardItems() const
{
    ++m_readCount;
    if (m_current.empty())
        return {};
    Content strings = m_current;
    strings.erase(PasteboardType::Tiff);
    strings.erase(PasteboardType::Png);
    return {PasteboardItem(std::move(strings))};
}

std::optional<QByteArray> FakePasteboard::data(PasteboardType type) const
{
    ++m_readCount;
    const auto found = m_current.find(type);
    return found == m_current.end() ? std::nullopt : std::optional(found->second);
}

std::optional<QByteArray> FakePasteboard::pngRepresentation(PasteboardType type) const
{
    if (type != PasteboardType::Tiff && type != PasteboardType::Png)
        return std::nullopt;
    const auto encoded = data(type);
    if (!encoded)
        return std::nullopt;
    const auto picture = image::decode(*encoded);
    return picture ? image::pngRepresentation(*picture) : std::nullopt;
}

void FakePasteboard::clearContents()
{
    m_waiting.push_back({m_nextNumber++, {}});
}

FakePasteboard::Content &FakePasteboard::ownContent()
{
    return m_waiting.empty() ? m_current : m_waiting.back().content;
}

void FakePasteboard::setString(const QByteArray &string)
{
    ownContent()[PasteboardType::String] = string;
}

void FakePasteboard::writeObjects(const std::vector<PasteboardObject> &objects)
{
    for (const PasteboardObject &object : objects) {
        if (const auto *const written = std::get_if<PasteboardImage>(&object)) {
            const auto picture = image::decode(written->encoded);
            if (const auto png = picture ? image::pngRepresentation(*picture) : std::nullopt)
                ownContent()[PasteboardType::Png] = *png;
        } else {
            const QByteArray &address = std::get<PasteboardUrl>(object).text;
            const bool isFile = address.startsWith("file:");
            ownContent()[isFile ? PasteboardType::FileUrl : PasteboardType::Url] = address;
        }
    }
}
