#include "ui/history/RelativeDate.h"

#include <QCoreApplication>
#include <QLocale>

QString relativeDisplay(const QDateTime &date, const QDateTime &now)
{
    constexpr qint64 Minute = 60;
    constexpr qint64 Hour = 60 * Minute;
    constexpr qint64 Day = 24 * Hour;
    constexpr qint64 Week = 7 * Day;
    const qint64 milliseconds = date.msecsTo(now);
    const qint64 seconds = milliseconds < 0 ? 0 : milliseconds / 1000;
    if (seconds < Minute) {
        //: The age of an entry: less than a minute. Twelve letters have room.
        return QCoreApplication::translate("RelativeDate", "now");
    }
    if (seconds < Hour) {
        const int minutes = static_cast<int>(seconds / Minute);
        //: The age of an entry in minutes. Twelve letters have room.
        return QCoreApplication::translate("RelativeDate", "%nm", "", minutes);
    }
    if (seconds < Day) {
        const int hours = static_cast<int>(seconds / Hour);
        //: The age of an entry in hours. Twelve letters have room.
        return QCoreApplication::translate("RelativeDate", "%nh", "", hours);
    }
    if (seconds < Week) {
        const int days = static_cast<int>(seconds / Day);
        //: The age of an entry in days. Twelve letters have room.
        return QCoreApplication::translate("RelativeDate", "%nd", "", days);
    }
    return QLocale().toString(date.toLocalTime().date(), QLocale::ShortFormat);
}
