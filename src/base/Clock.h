#pragma once

#include <QDateTime>

/// The wall clock. Injected, so that tests choose the time.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The current time in UTC, to the millisecond.
    virtual QDateTime now() const = 0;
};

/// The system's wall clock.
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
};
