#include "app/ActiveEvents.h"

ActiveEvents::ActiveEvents(LocalEvents &events, Condition isActive)
    : m_events(events)
    , m_isActive(std::move(isActive))
{
}

std::unique_ptr<LocalEvents::Monitor> ActiveEvents::addKeyDownMonitor(KeyHandler handler)
{
    return m_events.addKeyDownMonitor(
        [isActive = m_isActive, handler = std::move(handler)](
            const LocalKeyEvent &event) { return isActive() ? handler(event) : LocalEventFate::PassedOn; });
}

std::unique_ptr<LocalEvents::Monitor> ActiveEvents::addScrollMonitor(ScrollHandler handler)
{
    return m_events.addScrollMonitor(
        [isActive = m_isActive, handler = std::move(handler)](const LocalScrollEvent &event) {
            return isActive() ? handler(event) : LocalEventFate::PassedOn;
        });
}
