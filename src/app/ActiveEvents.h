#pragma once

#include "platform/LocalEvents.h"

/// The events of the program's windows while a condition holds; the others pass its monitors by. Main thread
/// only.
class ActiveEvents : public LocalEvents
{
public:
    using Condition = std::function<bool()>;

    /// The events must outlive it. Monitors keep the condition.
    ActiveEvents(LocalEvents &events, Condition isActive);

    std::unique_ptr<Monitor> addKeyDownMonitor(KeyHandler handler) override;
    std::unique_ptr<Monitor> addScrollMonitor(ScrollHandler handler) override;

private:
    LocalEvents &m_events;
    Condition m_isActive;
};
