#include "fakes/FakeEventPoster.h"

namespace
{

constexpr quint16 LastKeyCode = 127;

} // namespace

bool FakeEventPoster::isProcessTrustedWithPrompt()
{
    m_promptCount += !isTrusted;
    return isTrusted;
}

std::unique_ptr<EventSource> FakeEventPoster::createEventSource(int state)
{
    m_sourceStates.push_back(state);
    return hasSources ? std::make_unique<EventSource>() : nullptr;
}

std::unique_ptr<KeyEvent> FakeEventPoster::createKeyboardEvent(
    const EventSource *, quint16 keyCode, KeyMotion motion)
{
    if (!makesEvents || keyCode > LastKeyCode)
        return nullptr;
    return std::make_unique<KeyEvent>(KeyEvent{keyCode, motion, 0});
}
