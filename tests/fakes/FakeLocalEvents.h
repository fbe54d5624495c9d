#pragma once

#include "platform/LocalEvents.h"

#include <vector>

/// The events of a program without windows: tests press the keys and turn the wheel.
class FakeLocalEvents : public LocalEvents
{
public:
    FakeLocalEvents();
    ~FakeLocalEvents() override;

    /// A key goes down; whether a monitor has consumed it.
    LocalEventFate press(
        quint16 keyCode, EventModifier modifiers = EventModifier::None, const QString &characters = {});
    LocalEventFate press(const LocalKeyEvent &event);
    /// A wheel turns by so many notches, or fingers move by so many points.
    LocalEventFate scroll(double deltaY, bool isPrecise = false);

    /// The monitors that are there now.
    qsizetype keyDownMonitorCount() const;
    qsizetype scrollMonitorCount() const;

    std::unique_ptr<Monitor> addKeyDownMonitor(KeyHandler handler) override;
    std::unique_ptr<Monitor> addScrollMonitor(ScrollHandler handler) override;

private:
    template<class Event>
    class Monitors;

    std::shared_ptr<Monitors<LocalKeyEvent>> m_keyDown;
    std::shared_ptr<Monitors<LocalScrollEvent>> m_scroll;
};
