#include "hostapp/exchange/TimeColumnReader.h"

#include "tests/hostapp/exchange/FindingPrinter.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

struct TimeCase {
    const char* name;
    TimeLayout layout;
    const char* text;
    std::optional<double> seconds;  // in Europe/Berlin where the text has no zone
};

class TimeText : public testing::TestWithParam<TimeCase> {};

TEST_P(TimeText, IsRead)
{
    TimeColumnReader reader(GetParam().layout, LocalTime(QStringLiteral("Europe/Berlin")));
    EXPECT_EQ(reader.read(GetParam().text), GetParam().seconds);
}

constexpr auto kYear = TimeLayout::YearFirst;
constexpr auto kDay = TimeLayout::DayFirst;
constexpr auto kMonth = TimeLayout::MonthFirst;
constexpr std::nullopt_t kNothing = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    WithTheYearFirst, TimeText,
    testing::Values(TimeCase{"Utc", kYear, "2013-01-01T06:00:00Z", 1357020000},
                    TimeCase{"LowerCase", kYear, "2013-01-01t06:00:00z", 1357020000},
                    TimeCase{"NamedUtc", kYear, "2013-01-01 06:00:00 UTC", 1357020000},
                    TimeCase{"Offset", kYear, "2013-01-01T07:30:00+01:30", 1357020000},
                    TimeCase{"ShortOffset", kYear, "2013-01-01 01:00-05", 1357020000},
                    TimeCase{"CompactOffset", kYear, "2013-01-01T01:00:00 -0500", 1357020000},
                    TimeCase{"Compact", kYear, "20130101T060000Z", 1357020000},
                    TimeCase{"CompactWithoutSeconds", kYear, "20130101T0600Z", 1357020000},
                    TimeCase{"Slashes", kYear, "2013/1/1 6:00Z", 1357020000},
                    TimeCase{"Dots", kYear, "2013.01.01 06:00Z", 1357020000},
                    TimeCase{"LocalWinter", kYear, "2013-01-01 07:00:00", 1357020000},
                    TimeCase{"LocalSummer", kYear, "2013-07-01 08:00", 1372658400},
                    TimeCase{"DateAlone", kYear, "2013-01-01", 1356994800},
                    TimeCase{"Fraction", kYear, "2013-01-01T06:00:00.25Z", 1357020000.25},
                    TimeCase{"FractionWithComma", kYear, "2013-01-01T06:00:00,25Z", 1357020000.25},
                    TimeCase{"FractionBefore1970", kYear, "1969-12-31T23:59:58.75Z", -1.25},
                    TimeCase{"ExactFraction", kYear, "1969-12-31T23:59:59.9Z", -0.1},
                    TimeCase{"HalfOfDay", kYear, "2013-01-01 06:00 pm Z", 1357063200},
                    TimeCase{"MidnightAsTwentyFour", kYear, "2012-12-31T24:00:00Z", 1356998400},
                    TimeCase{"LeapSecond", kYear, "2012-12-31T23:59:60Z", 1356998400},
                    TimeCase{"LeapDay", kYear, "2012-02-29T00:00:00Z", 1330473600},
                    TimeCase{"NoLeapDay", kYear, "2013-02-29T00:00:00Z", kNothing},
                    TimeCase{"HundredYears", kYear, "1900-02-29T00:00:00Z", kNothing},
                    TimeCase{"MonthThirteen", kYear, "2013-13-01T00:00:00Z", kNothing},
                    TimeCase{"HourTwentyFive", kYear, "2013-01-01T25:00:00Z", kNothing},
                    TimeCase{"MinuteSixty", kYear, "2013-01-01T06:60:00Z", kNothing},
                    TimeCase{"HourAlone", kYear, "2013-01-01 06", kNothing},
                    TimeCase{"ThirteenPm", kYear, "2013-01-01 13:00 pm", kNothing},
                    TimeCase{"TextBehind", kYear, "2013-01-01T06:00:00Zulu", kNothing},
                    TimeCase{"MonthAlone", kYear, "2013-07", 1372629600},
                    TimeCase{"MonthByName", kYear, "1. Januar 2013 07:00", 1357020000},
                    TimeCase{"ShortMonth", kYear, "01-JAN-13 07.00.00.250 AM", 1357020000.25},
                    TimeCase{"MonthBeforeTheDay", kYear, "Jan 1, 2013 7:00 AM", 1357020000},
                    TimeCase{"French", kYear, "1er févr. 2013 07:00", 1359698400},
                    TimeCase{"March", kYear, "1 M\xE4rz 2013 07:00", 1362117600},
                    TimeCase{"AsMailWritesIt", kYear, "Tue, 1 Jan 2013 07:00:00 +0100", 1357020000},
                    TimeCase{"AsSystemsWriteIt", kYear, "Tue Jan  1 07:00:00 CET 2013", 1357020000},
                    TimeCase{"AsServersWriteIt", kYear, "01/Jan/2013:06:00:00 +0000", 1357020000},
                    TimeCase{"WithWeekday", kYear, "Di 1. Jan. 2013 07:00 Uhr", 1357020000},
                    TimeCase{"ZoneByName", kYear, "2013-07-01 08:00 MESZ", 1372658400},
                    TimeCase{"AmericanZone", kYear, "2013-01-01 01:00:00 EST", 1357020000},
                    TimeCase{"ZoneWithItsLongName", kYear,
                             "Tue Jan 01 2013 07:00:00 GMT+0100 (Central European Standard Time)", 1357020000},
                    TimeCase{"ZoneWithThreeMeanings", kYear, "2013-01-01 06:00 IST", kNothing},
                    TimeCase{"ClockWithDots", kYear, "2013-01-01 07.00.00", 1357020000},
                    TimeCase{"ClockWithH", kYear, "2013-01-01 7h00", 1357020000},
                    TimeCase{"BeginningOfASpan", kYear, "2013-01-01 07:00 - 2013-01-01 07:15", 1357020000},
                    TimeCase{"BeginningOfATimeSpan", kYear, "2013-01-01 07:00 - 07:15", 1357020000},
                    TimeCase{"DayFirst", kYear, "01.02.2013 06:00", kNothing},
                    TimeCase{"MixedSeparators", kYear, "2013-01/01", kNothing},
                    TimeCase{"Word", kYear, "yesterday", kNothing}, TimeCase{"Empty", kYear, "", kNothing},
                    TimeCase{"Number", kYear, "1357020000", kNothing}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(WithTheYearLast, TimeText,
                         testing::Values(TimeCase{"Dots", kDay, "2.1.2013 07:00", 1357106400},
                                         TimeCase{"DaySlashes", kDay, "02/01/2013 07:00", 1357106400},
                                         TimeCase{"MonthSlashes", kMonth, "01/02/2013 07:00", 1357106400},
                                         TimeCase{"Dashes", kDay, "02-01-2013, 07:00:00", 1357106400},
                                         TimeCase{"TwoDigitYear", kMonth, "1/2/13 7:00 am", 1357106400},
                                         TimeCase{"LastCentury", kDay, "01.01.70 01:00", 0},
                                         TimeCase{"Afternoon", kMonth, "1/2/2013 7:00:00 PM", 1357149600},
                                         TimeCase{"NoonAndMidnight", kMonth, "1/2/2013 12:00 AM Z", 1357084800},
                                         TimeCase{"Noon", kMonth, "1/2/2013 12:00 p.m. Z", 1357128000},
                                         TimeCase{"HourAloneWithHalf", kMonth, "1/2/2013 7 am", 1357106400},
                                         TimeCase{"DayThatTheMonthLacks", kDay, "31.04.2013", kNothing},
                                         TimeCase{"MonthThirteen", kDay, "01/13/2013", kNothing}),
                         [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    AsNumbers, TimeText,
    testing::Values(TimeCase{"Seconds", TimeLayout::EpochSeconds, "1422973140", 1422973140},
                    TimeCase{"FractionOfSeconds", TimeLayout::EpochSeconds, "1422973140.125", 1422973140.125},
                    TimeCase{"Milliseconds", TimeLayout::EpochMilliseconds, "1422973140250", 1422973140.25},
                    TimeCase{"Microseconds", TimeLayout::EpochMicroseconds, "1422973140250001", 1422973140.250001},
                    TimeCase{"Nanoseconds", TimeLayout::EpochNanoseconds, "1422973140250000001", 1422973140.250000001},
                    TimeCase{"Digits", TimeLayout::CompactDigits, "201502031519", 1422973140},
                    TimeCase{"DigitsOfADay", TimeLayout::CompactDigits, "20150203", 1422918000},
                    TimeCase{"DigitsOfAnHour", TimeLayout::CompactDigits, "2015020315", 1422972000},
                    TimeCase{"DigitsThatAreNoDate", TimeLayout::CompactDigits, "2015023015", kNothing},
                    TimeCase{"DaysOfASpreadsheet", TimeLayout::SpreadsheetDays, "42038.63819444445", 1422973140},
                    TimeCase{"DaysWithAComma", TimeLayout::SpreadsheetDays, "42038,5", 1422961200},
                    TimeCase{"YearOfTwoDigitsFirst", TimeLayout::ShortYearFirst, "15-02-03 15:19", 1422973140},
                    TimeCase{"Negative", TimeLayout::EpochSeconds, "-1", -1},
                    TimeCase{"Infinite", TimeLayout::EpochSeconds, "inf", kNothing},
                    TimeCase{"NotANumber", TimeLayout::EpochSeconds, "nan", kNothing},
                    TimeCase{"Text", TimeLayout::EpochSeconds, "12:00", kNothing}),
    [](const auto& row) { return row.param.name; });

class ClockChange : public testing::Test {
protected:
    double read(const char* text) { return m_reader.read(text).value_or(-1); }
    TimeColumnReader m_reader{TimeLayout::YearFirst, LocalTime(QStringLiteral("America/New_York"))};
};

TEST_F(ClockChange, ASkippedTimeIsReadWithTheClockNotYetChanged)
{
    EXPECT_EQ(read("2013-03-10 02:30"), 1362900600);  // 03:30 daylight time
    EXPECT_EQ(read("2013-03-10 03:00"), 1362898800);
    EXPECT_EQ(read("2013-03-10 01:59"), 1362898740);
}

TEST_F(ClockChange, ARepeatedTimeIsTheFirstPass)
{
    EXPECT_EQ(read("2013-11-03 01:30"), 1383456600);
}

TEST_F(ClockChange, AFileInOrderStaysInOrderThroughTheRepeatedHour)
{
    double previous = read("2013-11-03 00:30");
    for (const char* text : {"2013-11-03 01:00", "2013-11-03 01:30", "2013-11-03 01:00", "2013-11-03 01:30",
                             "2013-11-03 02:00", "2013-11-03 02:30"}) {
        const double time = read(text);
        EXPECT_EQ(time - previous, 1800) << text;
        previous = time;
    }
}

TEST_F(ClockChange, AFileBackwardsInTimeKeepsTheFirstPass)
{
    read("2013-11-03 02:00");
    EXPECT_EQ(read("2013-11-03 01:30"), 1383456600);
}

TEST(LocalTimes, KnowOffsetsAndNames)
{
    EXPECT_EQ(LocalTime(QStringLiteral("+02:00")).utcFromLocal(7200), 0);
    EXPECT_EQ(LocalTime(QStringLiteral("UTC-5")).utcFromLocal(0), 18000);
    EXPECT_EQ(LocalTime(QStringLiteral("UTC")).utcFromLocal(5), 5);
    EXPECT_EQ(LocalTime(QStringLiteral("Asia/Kathmandu")).utcFromLocal(1422973140), 1422973140 - 20700);
}

TEST(LocalTimes, ShortNamesAreOneClockAllTheYear)
{
    constexpr std::int64_t kJuly = 1'435'708'800;
    for (const auto& [name, hours] : {std::pair("CET", 1), {"MEZ", 1}, {"EST", -5}, {"PST", -8}, {"GMT", 0}})
        EXPECT_EQ(LocalTime(QLatin1String(name)).utcFromLocal(kJuly), kJuly - hours * 3600) << name;
    EXPECT_EQ(LocalTime(QStringLiteral("PST8PDT")).utcFromLocal(kJuly), kJuly + 7 * 3600);
}

TEST(LocalTimes, TellWhichTheirZoneSkips)
{
    LocalTime berlin(QStringLiteral("Europe/Berlin"));
    berlin.utcFromLocal(1'711'850'400);  // 2024-03-31 02:00
    EXPECT_TRUE(berlin.wasSkipped());
    EXPECT_EQ(berlin.offsetBeforeSkip(), QStringLiteral("+01:00"));
    berlin.utcFromLocal(1'711'854'000);
    EXPECT_FALSE(berlin.wasSkipped());
}

TEST(LocalTimes, RefuseZonesThatAreNone)
{
    for (const char* zone : {"Middle/Earth", "+2x"})
        EXPECT_EQ(findingOf([zone] { LocalTime(QLatin1String(zone)); }),
                  (ImportFinding{.what = ImportFinding::What::UnknownTimeZone, .text = QLatin1String(zone)}));
}

TEST(LocalTimes, AgreeWithThemselvesAcrossManyYears)
{
    LocalTime remembering(QStringLiteral("Europe/Berlin"));
    for (std::int64_t local = 1'300'000'000; local < 1'500'000'000; local += 1'234'567) {
        LocalTime fresh(QStringLiteral("Europe/Berlin"));
        EXPECT_EQ(remembering.utcFromLocal(local), fresh.utcFromLocal(local));
    }
}

}  // namespace

}  // namespace plotix
