#include "plugins/PlotixPlugIn/reading/comparing/EarlierTimes.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <limits>

// Which earlier time stands beside which present one. Berlin's clocks went forward on 2013-03-31 at 02:00 (01:00 UTC)
// and back on 2013-10-27 at 03:00 (01:00 UTC).

namespace {

using plotix::EarlierStretch;
using plotix::TimeSpan;

constexpr double kHour = 3'600, kDay = 24 * kHour;

class EarlierTimesTest : public testing::Test {
protected:
    std::vector<EarlierStretch> beside(const char* from, const char* to, const char* distance,
                                       const char* zone = "Europe/Berlin")
    {
        return earlierStretches({at(from), at(to)}, *plotix::timeDistanceFrom(distance), QTimeZone(zone));
    }
    static double at(const char* utc)
    {
        return static_cast<double>(QDateTime::fromString(utc, Qt::ISODate).toMSecsSinceEpoch()) / 1000;
    }
    static EarlierStretch stretch(const char* from, const char* to, double shift)
    {
        return {{at(from), at(to)}, shift};
    }
    using Stretches = std::vector<EarlierStretch>;
};

TEST_F(EarlierTimesTest, AWeekEarlierIsOneShiftWhereClocksRunEvenly)
{
    EXPECT_EQ(beside("2013-07-08T00:00:00Z", "2013-07-15T00:00:00Z", "7d"),
              Stretches{stretch("2013-07-01T00:00:00Z", "2013-07-08T00:00:00Z", 7 * kDay)});
}

TEST_F(EarlierTimesTest, WhatStandsBesideATimeWasThen)
{
    const Stretches week = beside("2013-07-08T00:00:00Z", "2013-07-15T00:00:00Z", "7d");
    EXPECT_EQ(plotix::earlierTime(week, at("2013-07-09T12:00:00Z")), at("2013-07-02T12:00:00Z"));
    EXPECT_EQ(plotix::earlierTime(week, at("2013-08-01T00:00:00Z")), at("2013-08-01T00:00:00Z"));
}

TEST_F(EarlierTimesTest, ADayAfterClocksWentForwardLiesAnHourLess)
{
    EXPECT_EQ(beside("2013-04-02T00:00:00Z", "2013-04-03T00:00:00Z", "7d"),
              Stretches{stretch("2013-03-26T01:00:00Z", "2013-03-27T01:00:00Z", 7 * kDay - kHour)})
        << "02:00 in summer stands beside 02:00 in winter";
}

TEST_F(EarlierTimesTest, HoursTypedAreHoursThatPass)
{
    EXPECT_EQ(beside("2013-04-01T00:00:00Z", "2013-04-02T00:00:00Z", "168h"),
              Stretches{stretch("2013-03-25T00:00:00Z", "2013-03-26T00:00:00Z", 7 * kDay)});
}

TEST_F(EarlierTimesTest, AnHourThatThePresentDayHasNotIsLeftOut)
{
    EXPECT_EQ(beside("2013-03-30T23:00:00Z", "2013-03-31T22:00:00Z", "1d"),
              (Stretches{stretch("2013-03-29T23:00:00Z", "2013-03-30T01:00:00Z", kDay),
                         stretch("2013-03-30T02:00:00Z", "2013-03-30T23:00:00Z", kDay - kHour)}));
}

TEST_F(EarlierTimesTest, AnHourThatTheEarlierDayHasNotHasNothingBesideIt)
{
    EXPECT_EQ(beside("2013-03-31T22:00:00Z", "2013-04-01T22:00:00Z", "1d"),
              (Stretches{stretch("2013-03-30T23:00:00Z", "2013-03-31T01:00:00Z", kDay - kHour),
                         stretch("2013-03-31T01:00:00Z", "2013-03-31T22:00:00Z", kDay)}))
        << "from 02:00 to 03:00, 00:00 to 01:00 UTC, nothing";
}

TEST_F(EarlierTimesTest, AnHourThatThePresentDayHasTwiceHasTheEarlierOneBesideItBothTimes)
{
    EXPECT_EQ(beside("2013-10-26T22:00:00Z", "2013-10-27T23:00:00Z", "1d"),
              (Stretches{stretch("2013-10-25T22:00:00Z", "2013-10-26T01:00:00Z", kDay),
                         stretch("2013-10-26T00:00:00Z", "2013-10-26T22:00:00Z", kDay + kHour)}));
}

TEST_F(EarlierTimesTest, OfAnHourThatTheEarlierDayHasTwiceTheFirstPassCounts)
{
    EXPECT_EQ(beside("2013-10-27T23:00:00Z", "2013-10-28T23:00:00Z", "1d"),
              (Stretches{stretch("2013-10-26T22:00:00Z", "2013-10-27T01:00:00Z", kDay + kHour),
                         stretch("2013-10-27T02:00:00Z", "2013-10-27T23:00:00Z", kDay)}));
}

TEST_F(EarlierTimesTest, WhereBothHaveTheHourTwiceFirstStandsBesideFirst)
{
    // 52 weeks before 2013-10-27 lies 2012-10-28, whose clocks went back too.
    EXPECT_EQ(beside("2013-10-26T22:00:00Z", "2013-10-27T23:00:00Z", "52w"),
              Stretches{stretch("2012-10-27T22:00:00Z", "2012-10-28T23:00:00Z", 364 * kDay)});
}

TEST_F(EarlierTimesTest, AYearAcrossBothChangesGoesPieceByPiece)
{
    const Stretches stretches = beside("2013-01-01T00:00:00Z", "2014-01-01T00:00:00Z", "1y");
    for (const EarlierStretch& each : stretches) {
        const QDateTime earlier =
            QDateTime::fromSecsSinceEpoch(qint64(each.earlier.from) + 60, QTimeZone("Europe/Berlin"));
        const QDateTime present =
            QDateTime::fromSecsSinceEpoch(qint64(each.earlier.from + each.shift) + 60, QTimeZone("Europe/Berlin"));
        EXPECT_EQ(earlier.time(), present.time());
        EXPECT_EQ(earlier.date().addYears(1), present.date());
    }
    EXPECT_EQ(stretches.front().earlier.from, at("2012-01-01T00:00:00Z"));
    EXPECT_EQ(stretches.back().earlier.to, at("2013-01-01T00:00:00Z"));
}

TEST_F(EarlierTimesTest, DaysThatTheEarlierMonthHasNotHaveNothingBesideThem)
{
    EXPECT_EQ(beside("2013-03-01T00:00:00Z", "2013-04-30T00:00:00Z", "1mo", "UTC"),
              (Stretches{stretch("2013-02-01T00:00:00Z", "2013-03-01T00:00:00Z", 28 * kDay),
                         stretch("2013-03-01T00:00:00Z", "2013-03-30T00:00:00Z", 31 * kDay)}));
}

TEST_F(EarlierTimesTest, TheLeapDayOfTheEarlierYearIsLeftOut)
{
    EXPECT_EQ(beside("2013-02-27T00:00:00Z", "2013-03-03T00:00:00Z", "1y", "UTC"),
              (Stretches{stretch("2012-02-27T00:00:00Z", "2012-02-29T00:00:00Z", 366 * kDay),
                         stretch("2012-03-01T00:00:00Z", "2012-03-03T00:00:00Z", 365 * kDay)}));
}

TEST_F(EarlierTimesTest, PartsOfADistanceAddUp)
{
    EXPECT_EQ(beside("2013-07-08T00:00:00Z", "2013-07-09T00:00:00Z", "1mo 3d 12h", "UTC"),
              Stretches{stretch("2013-06-04T12:00:00Z", "2013-06-05T12:00:00Z", 33.5 * kDay)})
        << "half a day before is 7 July, 12:00; three days before that 4 July; a month before that 4 June";
}

TEST_F(EarlierTimesTest, SpansThatAreNoneHaveNothingBesideThem)
{
    EXPECT_TRUE(beside("2013-07-08T00:00:00Z", "2013-07-07T00:00:00Z", "7d").empty());
    EXPECT_TRUE(beside("2013-07-08T00:00:00Z", "2013-07-08T00:00:00Z", "7d").empty());
    EXPECT_TRUE(
        plotix::earlierStretches({0, std::numeric_limits<double>::infinity()}, {0, 7, 0}, QTimeZone::utc()).empty());
}

TEST_F(EarlierTimesTest, TheHullHoldsAllOfThem)
{
    EXPECT_EQ(plotix::hullOf({{{10, 20}, 5}, {{8, 12}, 15}}), (TimeSpan{8, 20}));
}

}  // namespace
