#pragma once

#include "platform/UnifiedLog.h"

#include <QStringList>

/// Keeps the lines: "category|line".
class FakeUnifiedLog : public UnifiedLog
{
public:
    QStringList lines;
    void info(const QString &category, const QString &line) override
    {
        lines.append(category + QLatin1Char('|') + line);
    }
};
