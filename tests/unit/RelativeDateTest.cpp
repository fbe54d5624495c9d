#include "ui/history/RelativeDate.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace
{

const QDateTime Now(QDate(2026, 3, 10), QTime(12, 0), Qt::UTC);

struct Aged {
    qint64 seconds;
    const char *text;
};

class RelativeDisplay : public ::testing::TestWithParam<Aged>
{
};

TEST_P(RelativeDisplay, IsShort)
{
    EXPECT_EQ(relativeDisplay(Now.addSecs(-GetParam().seconds), Now), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Ages, RelativeDisplay,
    ::testing::Values(Aged{-100, "now"}, Aged{0, "now"}, Aged{59, "now"}, Aged{60, "1m"}, Aged{3599, "59m"},
        Aged{3600, "1h"}, Aged{86399, "23h"}, Aged{86400, "1d"}, Aged{604799, "6d"}));

TEST(RelativeDisplayOfAWeek, IsTheLocalesShortDate)
{
    const QDateTime date = Now.addSecs(-604800);
    EXPECT_EQ(
        relativeDisplay(date, Now), QLocale().toString(date.toLocalTime().date(), QLocale::ShortFormat));
}

} // namespace
