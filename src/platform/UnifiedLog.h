#pragma once

#include <QString>

/// The system's log. Main thread only; a line that cannot be written is dropped.
class UnifiedLog
{
public:
    virtual ~UnifiedLog() = default;

    /// Writes one line at info level under the category.
    virtual void info(const QString &category, const QString &line) = 0;
};
