#include "plugins/PlotixPlugIn/reading/clock/ClockChangesLayer.h"
#include "tests/support/PinnedZone.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

namespace plotix {

namespace {

constexpr double kDay = 86'400;

/// Changes in a zone that is not the process's.
class ClockChangesTest : public testing::Test {
protected:
    static double utc(const char* iso)
    {
        return static_cast<double>(QDateTime::fromString(QLatin1String(iso), Qt::ISODate).toSecsSinceEpoch());
    }
    static std::vector<ClockChange> changes(const char* zone, const char* from, const char* to)
    {
        return KnownClockChanges().within(QTimeZone(zone), {utc(from), utc(to)});
    }

private:
    PinnedZone m_zone{"America/New_York"};
};

TEST_F(ClockChangesTest, BothOfAYearAreFoundWithTheirLengths)
{
    EXPECT_EQ(changes("Europe/Berlin", "2024-01-01T00:00:00Z", "2024-12-31T00:00:00Z"),
              (std::vector<ClockChange>{{utc("2024-03-31T01:00:00Z"), 3'600}, {utc("2024-10-27T01:00:00Z"), -3'600}}));
    EXPECT_EQ(changes("Australia/Lord_Howe", "2024-09-01T00:00:00Z", "2024-12-31T00:00:00Z").front().seconds, 1'800);
    EXPECT_EQ(changes("Pacific/Apia", "2011-12-29T00:00:00Z", "2012-01-01T00:00:00Z"),
              (std::vector<ClockChange>{{utc("2011-12-30T10:00:00Z"), 86'400}}));
}

TEST_F(ClockChangesTest, ZonesThatKeepTheirClocksHaveNone)
{
    EXPECT_TRUE(changes("Asia/Kathmandu", "2024-01-01T00:00:00Z", "2024-12-31T00:00:00Z").empty());
    EXPECT_TRUE(changes("UTC", "2024-01-01T00:00:00Z", "2024-12-31T00:00:00Z").empty());
}

TEST_F(ClockChangesTest, LongAndStrangeSpansHaveNone)
{
    const QTimeZone berlin("Europe/Berlin");
    KnownClockChanges changes;
    EXPECT_TRUE(changes.within(berlin, {0, kLongestSpanWithChanges + kDay * 200}).empty());
    EXPECT_TRUE(changes.within(berlin, {1e300, 2e300}).empty());
    EXPECT_TRUE(changes.within(berlin, {std::nan(""), 1}).empty());
}

TEST_F(ClockChangesTest, ASpanThatIsMovedHasThoseThatASpanAskedForAloneHas)
{
    KnownClockChanges moved;
    for (int week = 300; week >= -300; week -= 5)
        for (const char* zone : {"Europe/Berlin", "Australia/Lord_Howe"}) {
            const double from = 1.7e9 + week * 7 * kDay;
            for (const TimeSpan& span : {TimeSpan{from, from + 40 * kDay}, TimeSpan{from - kDay, from + 20 * kDay}})
                EXPECT_EQ(moved.within(QTimeZone(zone), span), KnownClockChanges().within(QTimeZone(zone), span));
        }
}

TEST_F(ClockChangesTest, ChangesAtTheEndsOfASpanAreInIt)
{
    EXPECT_EQ(changes("Europe/Berlin", "2024-03-31T01:00:00Z", "2024-10-27T01:00:00Z").size(), 2U);
    EXPECT_EQ(changes("Europe/Berlin", "2024-03-31T01:00:01Z", "2024-10-27T00:59:59Z").size(), 0U);
}

TEST_F(ClockChangesTest, AYearHasTheDistancesOfItsSummerAndItsWinter)
{
    KnownClockChanges changes;
    const QTimeZone berlin("Europe/Berlin");
    const double winter = utc("2024-01-01T00:00:00Z");
    EXPECT_EQ(changes.offsets(berlin, {winter, winter + 366 * kDay}), (std::vector{3'600, 7'200}));
    EXPECT_EQ(changes.offsets(berlin, {winter, winter + 3'000 * kDay}), (std::vector{3'600, 7'200}));
    EXPECT_EQ(changes.offsets(berlin, {winter, winter + 40 * kDay}), std::vector{3'600});
    EXPECT_EQ(changes.offsets(QTimeZone("Asia/Kathmandu"), {winter, winter + 366 * kDay}), std::vector{20'700});
}

TEST_F(ClockChangesTest, TheyAreNamedByWhatTheyAre)
{
    EXPECT_EQ(changeText({0, 3'600}), "clocks +1 h");
    EXPECT_EQ(changeText({0, -1'800}), "clocks −30 min");
}

}  // namespace

}  // namespace plotix
