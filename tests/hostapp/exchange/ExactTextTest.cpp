#include "hostapp/exchange/ExactText.h"

#include "hostapp/exchange/TimeColumnReader.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

TEST(ExactNumbers, AreShort)
{
    EXPECT_EQ(exactNumber(0.1), "0.1");
    EXPECT_EQ(exactNumber(-0.0), "-0");
    EXPECT_EQ(exactNumber(5e-324), "5e-324");
    EXPECT_EQ(exactNumber(std::numeric_limits<double>::infinity()), "inf");
}

TEST(ExactTimes, ReadBackToTheSameBits)
{
    TimeColumnReader reader(TimeLayout::YearFirst, LocalTime(QStringLiteral("UTC")));
    double step = 1e-9;
    for (double seconds :
         {0.0, 1420070400.0, -0.5, -1e-5, 1420070460.25, 1e9 + 1.0 / 3, -62'167'219'200.0, 253'402'300'799.9}) {
        for (int count = 0; count < 50; ++count, seconds = seconds + step, step *= 1.7) {
            if (step > 1e6)
                step = 1e-9;
            if (!hasCalendarText(seconds))
                continue;
            const std::string text = exactTime(seconds);
            EXPECT_EQ(std::bit_cast<std::uint64_t>(reader.read(text).value()), std::bit_cast<std::uint64_t>(seconds))
                << text;
        }
    }
}

TEST(ExactTimes, ExistWithinTheCalendar)
{
    EXPECT_EQ(exactTime(-0.25), "1969-12-31T23:59:59.75Z");
    EXPECT_EQ(exactTime(-1), "1969-12-31T23:59:59Z");
    EXPECT_FALSE(hasCalendarText(-0.0));
    EXPECT_FALSE(hasCalendarText(1e300));
    EXPECT_FALSE(hasCalendarText(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(hasCalendarText(253'402'300'800.0));
    EXPECT_TRUE(hasCalendarText(-62'167'219'200.0));
}

TEST(ReadableTimes, AreToTheSecond)
{
    EXPECT_EQ(readableTime(1420070460.9), QStringLiteral("2015-01-01 00:01:00 UTC"));
    EXPECT_EQ(readableTime(-0.5), QStringLiteral("1969-12-31 23:59:59 UTC"));
    EXPECT_EQ(readableTime(1e300), QStringLiteral("1e+300"));
}

}  // namespace

}  // namespace plotix
