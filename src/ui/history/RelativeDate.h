#pragma once

#include <QDateTime>

/// The short age of an entry: "now", "5m", "3h", "6d" in the user's language, then a short date in the
/// user's locale. A date in the future reads "now".
QString relativeDisplay(const QDateTime &date, const QDateTime &now);
