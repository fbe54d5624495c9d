#include "platform/linux/PartialEventPoster.h"

PartialEventPoster::PartialEventPoster(
    std::unique_ptr<EventPoster> poster, std::unique_ptr<Workspace> reachable)
    : m_reachable(std::move(reachable))
    , m_poster(std::move(poster))
{
}

bool PartialEventPoster::isProcessTrusted() const
{
    return m_poster->isProcessTrusted() && m_reachable->frontmostApplication() != nullptr;
}

std::unique_ptr<EventSource> PartialEventPoster::createEventSource(int state)
{
    return m_poster->createEventSource(state);
}

std::unique_ptr<KeyEvent> PartialEventPoster::createKeyboardEvent(
    const EventSource *source, quint16 keyCode, KeyMotion motion)
{
    return m_poster->createKeyboardEvent(source, keyCode, motion);
}

void PartialEventPoster::post(EventTapLocation location, const KeyEvent &event)
{
    m_poster->post(location, event);
}
