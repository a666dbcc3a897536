#include "hostapp/cli/ExactText.h"

#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/CommandProgressBar.h"
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

TEST(JsonNumbers, HaveAnAnswerForWhatJsonLacks)
{
    EXPECT_EQ(jsonNumber(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(jsonNumber(-std::numeric_limits<double>::infinity()), "-1e999");
}

TEST(JsonTexts, AreEscaped)
{
    EXPECT_EQ(jsonText(QStringLiteral("a\"b\\c\nd °")), "\"a\\\"b\\\\c\\u000ad °\"");
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

TEST(Sizes, AreReadFromArguments)
{
    EXPECT_EQ(sizeFromArgument(QStringLiteral("1200x600")), QSize(1200, 600));
    EXPECT_EQ(sizeFromArgument(QStringLiteral("16X16384")), QSize(16, 16384));
    for (const char* text : {"", "1200", "x", "15x600", "16385x600", "-5x5", "1200x600x2", "1e3x5"})
        EXPECT_FALSE(sizeFromArgument(QLatin1String(text))) << text;
}

TEST(ProgressLines, StayWithinTheBar)
{
    const QString title = QStringLiteral("Working");
    EXPECT_NE(progressLine(title, 0.5).find("====================                    ]  50 %"), std::string::npos);
    EXPECT_EQ(progressLine(title, -1), progressLine(title, 0));
    EXPECT_EQ(progressLine(title, 2), progressLine(title, 1));
    EXPECT_EQ(progressLine(title, std::nan("")), progressLine(title, 0));
}

}  // namespace

}  // namespace plotix
