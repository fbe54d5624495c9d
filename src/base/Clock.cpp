#include "base/Clock.h"

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}
