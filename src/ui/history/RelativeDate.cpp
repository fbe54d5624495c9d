#include "ui/history/RelativeDate.h"

#include <QLocale>

QString relativeDisplay(const QDateTime &date, const QDateTime &now)
{
    constexpr qint64 Minute = 60;
    constexpr qint64 Hour = 60 * Minute;
    constexpr qint64 Day = 24 * Hour;
    constexpr qint64 Week = 7 * Day;
    const qint64 milliseconds = date.msecsTo(now);
    const qint64 seconds = milliseconds < 0 ? 0 : milliseconds / 1000;
    if (seconds < Minute)
        return QStringLiteral("now");
    if (seconds < Hour)
        return QStringLiteral("%1m").arg(seconds / Minute);
    if (seconds < Day)
        return QStringLiteral("%1h").arg(seconds / Hour);
    if (seconds < Week)
        return QStringLiteral("%1d").arg(seconds / Day);
    return QLocale().toString(date.toLocalTime().date(), QLocale::ShortFormat);
}
