#include "plotkit/model/CPTClock.h"
#include "plotkit/model/CPTTickFormatters.h"
#include "tests/support/PinnedZone.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <gtest/gtest.h>

namespace {

/// Zones of the clocks differ from that of the process.
class ClockTest : public testing::Test {
protected:
    ClockTest() : m_before(QLocale()) { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    ~ClockTest() override { QLocale::setDefault(m_before); }

    static double utc(const char* iso)
    {
        QDateTime moment = QDateTime::fromString(QLatin1String(iso), Qt::ISODate);
        moment.setTimeSpec(Qt::UTC);
        return static_cast<double>(moment.toSecsSinceEpoch());
    }
    /// What a zone's clocks show, as the moment in UTC.
    static QString momentOf(const char* zone, const char* local)
    {
        const double moment = plotkit::momentOfLocal(QTimeZone(zone), utc(local));
        return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(moment), Qt::UTC).toString("yyyy-MM-dd HH:mm:ss");
    }
    static QString tick(const char* zone, const char* moment, double step)
    {
        return CPTTickTimeFormatter(CPTClock{QTimeZone(zone)}).stringForTick(utc(moment), step);
    }
    static QString told(const char* zone, const char* moment)
    {
        return CPTMomentFormatter(CPTClock{QTimeZone(zone)}).stringForTick(utc(moment), 60);
    }

private:
    const QLocale m_before;
    plotix::PinnedZone m_zone{"America/New_York"};
};

TEST_F(ClockTest, WithoutAZoneItIsTheSystems)
{
    EXPECT_EQ(CPTClock().zoneInUse(), QTimeZone::systemTimeZone());
    EXPECT_EQ(plotkit::offsetAt({}, utc("2024-07-01T00:00:00")), -4 * 3'600);
    EXPECT_EQ(plotkit::offsetAt(QTimeZone("Asia/Kathmandu"), utc("2024-07-01T00:00:00")), 5 * 3'600 + 45 * 60);
}

TEST_F(ClockTest, AnotherZoneOfTheEnvironmentCountsAtOnce)
{
    const double moment = utc("2024-07-01T00:00:00");
    EXPECT_EQ(plotkit::offsetAt({}, moment), -4 * 3'600);
    const plotix::PinnedZone moved("Asia/Kathmandu");
    EXPECT_EQ(plotkit::offsetAt({}, moment), 5 * 3'600 + 45 * 60);
}

TEST_F(ClockTest, LocalTimesAreMomentsInTheirZone)
{
    EXPECT_EQ(momentOf("Europe/Berlin", "2024-07-01T12:00:00"), "2024-07-01 10:00:00");
    EXPECT_EQ(momentOf("Europe/Berlin", "2024-03-31T04:00:00"), "2024-03-31 02:00:00");
    EXPECT_EQ(momentOf("Europe/Berlin", "2024-10-27T01:59:00"), "2024-10-26 23:59:00");
    EXPECT_EQ(momentOf("Asia/Kathmandu", "2024-07-01T00:00:00"), "2024-06-30 18:15:00");
    EXPECT_EQ(momentOf("UTC", "2024-07-01T00:00:00"), "2024-07-01 00:00:00");
}

TEST_F(ClockTest, ATimeThatIsLeftOutIsTheMomentOfTheChange)
{
    EXPECT_EQ(momentOf("Europe/Berlin", "2024-03-31T02:30:00"), "2024-03-31 01:00:00");
    EXPECT_EQ(momentOf("Pacific/Apia", "2011-12-30T12:00:00"), "2011-12-30 10:00:00");  // a day that never was
}

TEST_F(ClockTest, OfATimeThatIsShownTwiceTheFirstIsMeant)
{
    EXPECT_EQ(momentOf("Europe/Berlin", "2024-10-27T02:30:00"), "2024-10-27 00:30:00");
    EXPECT_EQ(momentOf("America/St_Johns", "2006-10-28T23:30:00"), "2006-10-29 02:00:00");  // set back at 0:01
}

TEST_F(ClockTest, TimesShownTwiceAreToldApart)
{
    const QTimeZone berlin("Europe/Berlin");
    EXPECT_FALSE(plotkit::isShownTwice(berlin, utc("2024-10-26T23:59:59")));
    EXPECT_TRUE(plotkit::isShownTwice(berlin, utc("2024-10-27T00:00:00")));
    EXPECT_TRUE(plotkit::isShownTwice(berlin, utc("2024-10-27T01:59:59")));
    EXPECT_FALSE(plotkit::isShownTwice(berlin, utc("2024-10-27T02:00:00")));
    EXPECT_FALSE(plotkit::isShownTwice(berlin, utc("2024-03-31T01:00:00")));
    EXPECT_EQ(told("Europe/Berlin", "2024-10-27T00:30:00"), "So., 27. Okt. 2024, 02:30 UTC+2");
    EXPECT_EQ(told("Europe/Berlin", "2024-10-27T01:30:00"), "So., 27. Okt. 2024, 02:30 UTC+1");
    EXPECT_EQ(told("Europe/Berlin", "2024-10-27T02:30:00"), "So., 27. Okt. 2024, 03:30");
}

TEST_F(ClockTest, TicksAreLabelledByTheZone)
{
    EXPECT_EQ(tick("Asia/Kathmandu", "2024-06-30T18:15:00", 3'600), "00:00\n1. Juli");
    EXPECT_EQ(tick("Pacific/Apia", "2011-12-30T10:00:00", 86'400), "31. Dez.\n2011");
    EXPECT_EQ(tick("UTC", "2024-06-30T18:15:00", 3'600), "18:15\n30. Juni");
    EXPECT_EQ(tick("UTC+03:30", "2024-06-30T18:15:00", 3'600), "21:45\n30. Juni");
}

TEST_F(ClockTest, HoursAreWrittenAsChosen)
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const double evening = utc("2024-07-01T18:15:00");
    const QTimeZone zone("UTC");
    EXPECT_EQ(CPTTickTimeFormatter(CPTClock{zone}).stringForTick(evening, 60), "6:15 PM\nJul 1");
    EXPECT_EQ(CPTTickTimeFormatter(CPTClock{zone, CPTHourForm::Locale}).stringForTick(evening, 60), "6:15 PM\nJul 1");
    EXPECT_EQ(CPTTickTimeFormatter(CPTClock{zone, CPTHourForm::TwentyFour}).stringForTick(evening, 60), "18:15\nJul 1");
}

TEST_F(ClockTest, PatternsKeepTheirLinesInEveryForm)
{
    const QString pattern = QStringLiteral("MMM-dd\nh:mma");
    EXPECT_EQ(patternByClock(pattern, CPTHourForm::Usual), pattern);
    EXPECT_EQ(patternByClock(pattern, CPTHourForm::TwentyFour), "MMM-dd\nHH:mm");
    EXPECT_EQ(patternByClock(pattern, CPTHourForm::Locale), "dd. MMM\nHH:mm");
    EXPECT_EQ(patternByClock(QStringLiteral("h:mm:ssa"), CPTHourForm::TwentyFour), "HH:mm:ss");
}

TEST_F(ClockTest, OffsetsAreWrittenShort)
{
    EXPECT_EQ(plotkit::offsetText(0), "UTC");
    EXPECT_EQ(plotkit::offsetText(3'600), "UTC+1");
    EXPECT_EQ(plotkit::offsetText(-12'600), "UTC−3:30");
    EXPECT_EQ(plotkit::offsetText(20'700), "UTC+5:45");
}

}  // namespace
