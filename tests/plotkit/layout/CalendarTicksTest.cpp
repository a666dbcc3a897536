#include "plotkit/layout/CalendarTicks.h"
#include "plotkit/layout/AxisTicks.h"
#include "tests/support/PinnedZone.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace plotkit;

constexpr double kDay = 86'400;

/// Ticks in the zone of Berlin, as local times; the clocks go back on 2024-10-27 and forward on 2024-03-31.
class CalendarTicksTest : public testing::Test {
protected:
    static double moment(const char* local)
    {
        const QDateTime time = QDateTime::fromString(QLatin1String(local), Qt::ISODate);
        return static_cast<double>(time.toSecsSinceEpoch());
    }
    static QStringList timesOf(const std::vector<double>& values, const char* format)
    {
        QStringList texts;
        for (const double value : values)
            texts << QDateTime::fromSecsSinceEpoch(static_cast<qint64>(value)).toString(QLatin1String(format));
        return texts;
    }
    QStringList majors(const char* from, const char* to, double step, const char* format)
    {
        const AxisMapping mapping{{moment(from), moment(to) - moment(from)}, 0, 1000};
        std::vector<double> values;
        for (const MajorTick& tick : calendarMajors(calendarRowFrom(step).value(), mapping))
            values.push_back(tick.value);
        return timesOf(values, format);
    }

private:
    plotix::PinnedZone m_zone{"Europe/Berlin"};
};

TEST_F(CalendarTicksTest, DaysBeginAtMidnightAlsoWhereClocksGoBack)
{
    EXPECT_EQ(majors("2024-10-26T00:00:00", "2024-10-29T00:00:00", kDay, "dd HH:mm"),
              (QStringList{"26 00:00", "27 00:00", "28 00:00", "29 00:00"}));
}

TEST_F(CalendarTicksTest, HoursKeepTheirTimesWhereClocksGoForward)
{
    EXPECT_EQ(majors("2024-03-31T00:00:00", "2024-03-31T06:00:00", 3'600, "HH:mm"),
              (QStringList{"00:00", "01:00", "03:00", "04:00", "05:00", "06:00"}));
}

TEST_F(CalendarTicksTest, NoTimeStandsTwiceWhereClocksGoBack)
{
    QStringList times = majors("2024-10-27T00:00:00", "2024-10-27T06:00:00", 1'800, "HH:mm");
    EXPECT_EQ(times.size(), 13);
    EXPECT_EQ(times.removeDuplicates(), 0);
}

TEST_F(CalendarTicksTest, WeeksBeginOnMonday)
{
    EXPECT_EQ(majors("2024-10-22T00:00:00", "2024-11-12T00:00:00", 7 * kDay, "ddd dd"),
              (QStringList{"Mon 28", "Mon 04", "Mon 11"}));
}

TEST_F(CalendarTicksTest, MonthsAndYearsBeginOnTheirFirst)
{
    EXPECT_EQ(majors("2023-11-15T00:00:00", "2024-03-15T00:00:00", 30 * kDay, "yyyy-MM-dd HH:mm"),
              (QStringList{"2023-12-01 00:00", "2024-01-01 00:00", "2024-02-01 00:00", "2024-03-01 00:00"}));
    EXPECT_EQ(majors("1965-06-01T00:00:00", "1971-06-01T00:00:00", 700 * kDay, "yyyy-MM-dd"),
              (QStringList{"1966-01-01", "1968-01-01", "1970-01-01"}));
}

TEST_F(CalendarTicksTest, MinorsStandOnlyBetweenMajors)
{
    const AxisMapping mapping{{moment("2024-05-01T00:00:00"), 2 * kDay}, 0, 1000};
    const std::size_t days = calendarRowFrom(kDay).value();
    EXPECT_EQ(timesOf(calendarMinors(days, mapping), "dd HH"),
              (QStringList{"01 06", "01 12", "01 18", "02 06", "02 12", "02 18"}));
}

/// The zone of the ticks is not that of the process, which is Berlin.
class CalendarTicksInZone : public CalendarTicksTest {
protected:
    static QStringList majorsIn(const char* zoneName, const char* from, const char* to, double step, const char* format)
    {
        const QTimeZone zone(zoneName);
        const auto utc = [](const char* text) {
            return static_cast<double>(QDateTime::fromString(QLatin1String(text), Qt::ISODate).toSecsSinceEpoch());
        };
        const AxisMapping mapping{{utc(from), utc(to) - utc(from)}, 0, 1000};
        QStringList texts;
        for (const MajorTick& tick : calendarMajors(calendarRowFrom(step).value(), mapping, zone))
            texts
                << QDateTime::fromSecsSinceEpoch(static_cast<qint64>(tick.value), zone).toString(QLatin1String(format));
        return texts;
    }
};

TEST_F(CalendarTicksInZone, DaysBeginAtTheZonesMidnight)
{
    EXPECT_EQ(majorsIn("Asia/Kathmandu", "2024-06-30T00:00:00Z", "2024-07-02T23:00:00Z", kDay, "dd HH:mm"),
              (QStringList{"01 00:00", "02 00:00", "03 00:00"}));
    EXPECT_EQ(majorsIn("UTC", "2024-10-26T00:00:00Z", "2024-10-28T00:00:00Z", kDay, "dd HH:mm"),
              (QStringList{"26 00:00", "27 00:00", "28 00:00"}));
}

TEST_F(CalendarTicksInZone, AMidnightThatIsShownTwiceHasOneTickAtTheFirst)
{
    // Clocks were put back at 0:01 to 23:01 of the day before.
    EXPECT_EQ(majorsIn("America/St_Johns", "2006-10-28T00:00:00Z", "2006-10-31T00:00:00Z", kDay, "dd HH:mm t"),
              (QStringList{"28 00:00 NDT", "29 00:00 NDT", "30 00:00 NST"}));
}

TEST_F(CalendarTicksInZone, ADayThatNeverWasHasNoTick)
{
    EXPECT_EQ(majorsIn("Pacific/Apia", "2011-12-28T10:00:00Z", "2012-01-01T10:00:00Z", kDay, "dd HH:mm"),
              (QStringList{"28 00:00", "29 00:00", "31 00:00", "01 00:00", "02 00:00"}));
}

TEST_F(CalendarTicksInZone, MonthsBeginAtTheZonesMidnightInSummerAndWinter)
{
    EXPECT_EQ(majorsIn("America/St_Johns", "2024-02-15T00:00:00Z", "2024-12-15T00:00:00Z", 60 * kDay, "MM-dd HH:mm"),
              (QStringList{"03-01 00:00", "05-01 00:00", "07-01 00:00", "09-01 00:00", "11-01 00:00"}));
}

TEST_F(CalendarTicksInZone, AFewMinutesAroundClocksPutBackHaveTicksOnBothSides)
{
    EXPECT_EQ(
        majorsIn("Europe/Berlin", "2024-10-27T00:54:00Z", "2024-10-27T01:06:00Z", 120, "HH:mm t"),
        (QStringList{"02:54 CEST", "02:56 CEST", "02:58 CEST", "02:00 CET", "02:02 CET", "02:04 CET", "02:06 CET"}));
    EXPECT_EQ(majorsIn("Europe/Berlin", "2024-03-31T00:56:00Z", "2024-03-31T01:04:00Z", 120, "HH:mm t"),
              (QStringList{"01:56 CET", "01:58 CET", "03:00 CEST", "03:02 CEST", "03:04 CEST"}));
}

TEST_F(CalendarTicksInZone, AnAxisHasTheTicksOfItsZone)
{
    CPTXYAxis axis(CPTCoordinate::X);
    axis.setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
    axis.setTimeZone(QTimeZone("Asia/Kathmandu"));
    const AxisMapping day{{1'719'770'400, kDay}, 0, 1000};
    for (const MajorTick& tick : majorTicks(planTicks(axis, day), day))
        EXPECT_EQ(std::fmod(tick.value, 3'600), 900);  // 45 minutes off the hour of UTC
}

TEST_F(CalendarTicksTest, RowsGrowCoarserToTheLast)
{
    for (std::size_t row = 0; coarserCalendarRow(row); ++row)
        EXPECT_GT(stepOfCalendarRow(row + 1), stepOfCalendarRow(row)) << row;
    EXPECT_FALSE(calendarRowFrom(1e12));
}

TEST_F(CalendarTicksTest, RangesBeyondAllCalendarsGetAutomaticTicks)
{
    CPTXYAxis axis(CPTCoordinate::X);
    axis.setLabelingPolicy(CPTAxisLabelingPolicy::Calendar);
    const AxisMapping far{{1e15, 1e9}, 0, 1000};
    const TickPlan plan = planTicks(axis, far);
    EXPECT_FALSE(plan.calendarRow);
    EXPECT_FALSE(majorTicks(plan, far).empty());
    EXPECT_FALSE(planTicks(axis, {{0, 3'600}, 0, 1000}).isEmpty());
}

}  // namespace
