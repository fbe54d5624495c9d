#pragma once

#include "platform/EventPoster.h"
#include "platform/Workspace.h"

/// Events that arrive with some programs only: trusted while one of those is in front.
class PartialEventPoster : public EventPoster
{
public:
    /// The workspace tells of just the programs that the events arrive with.
    PartialEventPoster(std::unique_ptr<EventPoster> poster, std::unique_ptr<Workspace> reachable);

    bool isProcessTrusted() const override;
    /// Whether there are programs with which they arrive: nobody need be asked for those.
    bool isProcessTrustedWithPrompt() override { return m_poster->isProcessTrustedWithPrompt(); }
    std::unique_ptr<EventSource> createEventSource(int state) override;
    std::unique_ptr<KeyEvent> createKeyboardEvent(
        const EventSource *source, quint16 keyCode, KeyMotion motion) override;
    void post(EventTapLocation location, const KeyEvent &event) override;

private:
    const std::unique_ptr<Workspace> m_reachable;
    const std::unique_ptr<EventPoster> m_poster;
};
