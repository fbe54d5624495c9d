#pragma once

#include "platform/EventPoster.h"

#include <vector>

/// Keeps what is posted. Trusted unless a test says otherwise.
class FakeEventPoster : public EventPoster
{
public:
    bool isTrusted = true;
    /// Whether a source or an event can be made.
    bool hasSources = true;
    bool makesEvents = true;

    struct Posted {
        EventTapLocation location;
        KeyEvent event;
    };
    const std::vector<Posted> &posted() const { return m_posted; }
    /// How often the user was asked for the permission.
    int promptCount() const { return m_promptCount; }
    /// The states that sources were asked for.
    const std::vector<int> &sourceStates() const { return m_sourceStates; }

    bool isProcessTrusted() const override { return isTrusted; }
    bool isProcessTrustedWithPrompt() override;
    std::unique_ptr<EventSource> createEventSource(int state) override;
    std::unique_ptr<KeyEvent> createKeyboardEvent(
        const EventSource *source, quint16 keyCode, KeyMotion motion) override;
    void post(EventTapLocation location, const KeyEvent &event) override
    {
        m_posted.push_back({location, event});
    }

private:
    std::vector<Posted> m_posted;
    std::vector<int> m_sourceStates;
    int m_promptCount = 0;
};
