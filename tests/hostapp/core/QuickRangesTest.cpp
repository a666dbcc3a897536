#include "hostapp/core/QuickRanges.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

namespace {

using plotix::Date;
using plotix::OptionalDate;
using plotix::QuickRanges;

/// A clock that stands still, in one place.
class QuickRangesTest : public testing::Test {
protected:
    void itIs(const char* local, const char* zoneName, const char* localeName = "de_DE")
    {
        zone = QTimeZone(zoneName);
        locale = QLocale(QString::fromLatin1(localeName));
        now = moment(local);
    }
    void ask(KTVQuickRange range)
    {
        QuickRanges({[this] { return now; }, zone, locale, allTime}).dateRange(range, start, end);
    }
    void expectRange(KTVQuickRange range, const char* from, const char* to)
    {
        ask(range);
        EXPECT_EQ(start, OptionalDate(moment(from))) << text(start);
        EXPECT_EQ(end, OptionalDate(moment(to))) << text(end);
    }
    double hours() const { return (end->seconds - start->seconds) / 3600; }

    Date moment(const char* local) const
    {
        QDateTime time = QDateTime::fromString(QString::fromLatin1(local), Qt::ISODate);
        time.setTimeZone(zone);
        return {static_cast<double>(time.toMSecsSinceEpoch()) / 1000};
    }
    std::string text(const OptionalDate& date) const
    {
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date->seconds * 1000), zone)
            .toString(Qt::ISODate)
            .toStdString();
    }

    Date now;
    QTimeZone zone;
    QLocale locale;
    QuickRanges::AllTime allTime;
    OptionalDate start, end;
};

TEST_F(QuickRangesTest, CalendarRangesOfAnOrdinaryDay)
{
    itIs("2026-06-17T15:30:20", "Europe/Berlin");  // a Wednesday
    expectRange(KTVQuickRange::Today, "2026-06-17T00:00:00", "2026-06-18T00:00:00");
    expectRange(KTVQuickRange::Yesterday, "2026-06-16T00:00:00", "2026-06-17T00:00:00");
    expectRange(KTVQuickRange::ThisWeek, "2026-06-15T00:00:00", "2026-06-22T00:00:00");
    expectRange(KTVQuickRange::LastWeek, "2026-06-08T00:00:00", "2026-06-15T00:00:00");
    expectRange(KTVQuickRange::ThisMonth, "2026-06-01T00:00:00", "2026-07-01T00:00:00");
    expectRange(KTVQuickRange::LastMonth, "2026-05-01T00:00:00", "2026-06-01T00:00:00");
    expectRange(KTVQuickRange::ThisYear, "2026-01-01T00:00:00", "2027-01-01T00:00:00");
    expectRange(KTVQuickRange::LastYear, "2025-01-01T00:00:00", "2026-01-01T00:00:00");
}

TEST_F(QuickRangesTest, RangesThatEndNow)
{
    itIs("2026-06-17T15:30:20", "Europe/Berlin");
    expectRange(KTVQuickRange::Last24Hours, "2026-06-16T15:30:20", "2026-06-17T15:30:20");
    expectRange(KTVQuickRange::Last7Days, "2026-06-10T15:30:20", "2026-06-17T15:30:20");
    expectRange(KTVQuickRange::Last30Days, "2026-05-18T15:30:20", "2026-06-17T15:30:20");
    expectRange(KTVQuickRange::Last12Months, "2025-06-17T15:30:20", "2026-06-17T15:30:20");
}

TEST_F(QuickRangesTest, NowKeepsItsFractionOfASecond)
{
    itIs("2026-06-17T15:30:20", "Europe/Berlin");
    now.seconds += 0.123456;
    ask(KTVQuickRange::Last7Days);
    EXPECT_EQ(end->seconds, now.seconds);
    EXPECT_NEAR(start->seconds, now.seconds - 7 * 86400, 1e-6);
}

TEST_F(QuickRangesTest, WeeksBeginOnSundayWhereTheLocaleSaysSo)
{
    itIs("2026-06-17T15:30:20", "America/New_York", "en_US");
    expectRange(KTVQuickRange::ThisWeek, "2026-06-14T00:00:00", "2026-06-21T00:00:00");
    expectRange(KTVQuickRange::LastWeek, "2026-06-07T00:00:00", "2026-06-14T00:00:00");
}

TEST_F(QuickRangesTest, TheFirstDayOfTheWeekBelongsToItsOwnWeek)
{
    itIs("2026-06-14T00:00:00", "America/New_York", "en_US");  // a Sunday
    expectRange(KTVQuickRange::ThisWeek, "2026-06-14T00:00:00", "2026-06-21T00:00:00");
    itIs("2026-06-14T23:59:59", "Europe/Berlin", "de_DE");
    expectRange(KTVQuickRange::ThisWeek, "2026-06-08T00:00:00", "2026-06-15T00:00:00");
}

TEST_F(QuickRangesTest, TheDayTheClockJumpsForwardHas23Hours)
{
    itIs("2026-03-29T12:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::Today, "2026-03-29T00:00:00", "2026-03-30T00:00:00");
    EXPECT_EQ(hours(), 23);
    itIs("2026-03-08T12:00:00", "America/New_York", "en_US");
    ask(KTVQuickRange::Today);
    EXPECT_EQ(hours(), 23);
}

TEST_F(QuickRangesTest, TheDayTheClockJumpsBackHas25Hours)
{
    itIs("2026-10-25T12:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::Today, "2026-10-25T00:00:00", "2026-10-26T00:00:00");
    EXPECT_EQ(hours(), 25);
    itIs("2026-11-02T12:00:00", "America/New_York", "en_US");
    ask(KTVQuickRange::Yesterday);
    EXPECT_EQ(hours(), 25);
}

TEST_F(QuickRangesTest, WeeksAndMonthsAcrossASwitchKeepTheirMidnights)
{
    itIs("2026-03-31T12:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::LastWeek, "2026-03-23T00:00:00", "2026-03-30T00:00:00");
    EXPECT_EQ(hours(), 7 * 24 - 1);
    expectRange(KTVQuickRange::ThisMonth, "2026-03-01T00:00:00", "2026-04-01T00:00:00");
    EXPECT_EQ(hours(), 31 * 24 - 1);
    itIs("2026-11-20T12:00:00", "America/New_York", "en_US");
    expectRange(KTVQuickRange::ThisMonth, "2026-11-01T00:00:00", "2026-12-01T00:00:00");
    EXPECT_EQ(hours(), 30 * 24 + 1);
}

TEST_F(QuickRangesTest, SevenDaysAcrossASwitchKeepTheTimeOfDay)
{
    itIs("2026-03-31T08:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::Last7Days, "2026-03-24T08:00:00", "2026-03-31T08:00:00");
    EXPECT_EQ(hours(), 7 * 24 - 1);
    itIs("2026-11-03T08:00:00", "America/New_York", "en_US");
    expectRange(KTVQuickRange::Last7Days, "2026-10-27T08:00:00", "2026-11-03T08:00:00");
    EXPECT_EQ(hours(), 7 * 24 + 1);
}

TEST_F(QuickRangesTest, TwentyFourHoursAreSecondsAlsoAcrossASwitch)
{
    itIs("2026-03-29T12:00:00", "Europe/Berlin");
    ask(KTVQuickRange::Last24Hours);
    EXPECT_EQ(hours(), 24);
    EXPECT_EQ(*start, moment("2026-03-28T11:00:00"));
}

TEST_F(QuickRangesTest, ATimeOfDayThatWasSkippedBecomesTheJump)
{
    itIs("2026-04-05T02:30:00", "Europe/Berlin");
    ask(KTVQuickRange::Last7Days);
    EXPECT_GE(start->seconds, moment("2026-03-29T01:30:00").seconds);
    EXPECT_LE(start->seconds, moment("2026-03-29T03:30:00").seconds);
}

TEST_F(QuickRangesTest, ADayWithoutMidnightBeginsAtItsFirstMoment)
{
    itIs("2018-11-04T12:00:00", "America/Sao_Paulo", "pt_BR");  // 00:00 became 01:00
    expectRange(KTVQuickRange::Today, "2018-11-04T01:00:00", "2018-11-05T00:00:00");
    EXPECT_EQ(hours(), 23);
}

TEST_F(QuickRangesTest, YearsEndWhereTheyEnd)
{
    itIs("2026-01-01T00:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::Today, "2026-01-01T00:00:00", "2026-01-02T00:00:00");
    expectRange(KTVQuickRange::Yesterday, "2025-12-31T00:00:00", "2026-01-01T00:00:00");
    expectRange(KTVQuickRange::ThisWeek, "2025-12-29T00:00:00", "2026-01-05T00:00:00");
    expectRange(KTVQuickRange::LastMonth, "2025-12-01T00:00:00", "2026-01-01T00:00:00");
    itIs("2025-12-31T23:59:59", "Europe/Berlin");
    expectRange(KTVQuickRange::ThisYear, "2025-01-01T00:00:00", "2026-01-01T00:00:00");
    expectRange(KTVQuickRange::ThisMonth, "2025-12-01T00:00:00", "2026-01-01T00:00:00");
}

TEST_F(QuickRangesTest, LeapYears)
{
    itIs("2028-03-15T10:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::LastMonth, "2028-02-01T00:00:00", "2028-03-01T00:00:00");
    EXPECT_EQ(hours(), 29 * 24);
    itIs("2028-02-29T10:00:00", "Europe/Berlin");
    expectRange(KTVQuickRange::Last12Months, "2027-02-28T10:00:00", "2028-02-29T10:00:00");
}

TEST_F(QuickRangesTest, TheZoneDecidesWhichDayItIs)
{
    itIs("2026-06-17T00:30:00", "Europe/Berlin");
    const Date same = now;
    itIs("2026-01-01T00:00:00", "America/New_York", "en_US");
    now = same;
    expectRange(KTVQuickRange::Today, "2026-06-16T00:00:00", "2026-06-17T00:00:00");
}

TEST_F(QuickRangesTest, AllTimeIsWhatTheRecordsSpan)
{
    allTime = [] { return std::pair(Date{100.5}, Date{2e9}); };
    ask(KTVQuickRange::AllTime);
    EXPECT_EQ(start, OptionalDate(Date{100.5}));
    EXPECT_EQ(end, OptionalDate(Date{2e9}));
}

TEST_F(QuickRangesTest, AllTimeWithoutRecordsLeavesTheDates)
{
    start = Date{1};
    ask(KTVQuickRange::AllTime);
    EXPECT_EQ(start, OptionalDate(Date{1}));
    EXPECT_FALSE(end);
    allTime = [] { return std::nullopt; };
    ask(KTVQuickRange::AllTime);
    EXPECT_FALSE(end);
}

TEST(QuickRangeNameTest, EveryNameReadsBack)
{
    for (int i = 0; i < kQuickRangeCount; ++i) {
        const auto range = static_cast<KTVQuickRange>(i);
        EXPECT_EQ(plotix::quickRangeNamed(plotix::quickRangeName(range)), range);
    }
    EXPECT_EQ(plotix::quickRangeName(KTVQuickRange::Last7Days), "last7Days");
    EXPECT_EQ(plotix::quickRangeTitle(KTVQuickRange::Last7Days), "Last 7 Days");
}

TEST(QuickRangeNameTest, CaseDoesNotMatterAndNonsenseIsNothing)
{
    EXPECT_EQ(plotix::quickRangeNamed("ALLTIME"), KTVQuickRange::AllTime);
    EXPECT_EQ(plotix::quickRangeNamed("last8Days"), std::nullopt);
    EXPECT_EQ(plotix::quickRangeNamed(""), std::nullopt);
}

TEST_F(QuickRangesTest, AnotherZoneHasItsOwnToday)
{
    itIs("2024-06-30T20:00:00", "Europe/Berlin");  // in Kathmandu it is July already
    const QTimeZone kathmandu("Asia/Kathmandu");
    QuickRanges({[this] { return now; }, zone, locale, allTime})
        .dateRangeIn(kathmandu, KTVQuickRange::Today, start, end);
    zone = kathmandu;
    EXPECT_EQ(start, OptionalDate(moment("2024-06-30T00:00:00"))) << text(start);
    itIs("2024-06-30T21:00:00", "Europe/Berlin");
    QuickRanges({[this] { return now; }, zone, locale, allTime})
        .dateRangeIn(kathmandu, KTVQuickRange::Today, start, end);
    zone = kathmandu;
    EXPECT_EQ(start, OptionalDate(moment("2024-07-01T00:00:00"))) << text(start);
}

}  // namespace
