#include "plotkit/model/CPTTickFormatters.h"

#include "tests/support/PinnedZone.h"

#include <gtest/gtest.h>

namespace {

/// Pins locale and zone for one test and restores the environment afterwards.
class TickFormattersTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_all = qgetenv("LC_ALL");
        use("en_US", "UTC");
    }
    void TearDown() override { qputenv("LC_ALL", m_all); }
    void use(const QByteArray& locale, const QByteArray& zone)
    {
        qputenv("LC_ALL", locale);
        m_zone.use(zone);
    }
    static QString number(double value, double step) { return CPTTickNumberFormatter().stringForTick(value, step); }
    static QString time(double seconds, double step) { return CPTTickTimeFormatter().stringForTick(seconds, step); }

    static constexpr double kMoment = 1'700'000'000;  // 2023-11-14 22:13:20 UTC

private:
    plotix::PinnedZone m_zone;
    QByteArray m_all;
};

TEST_F(TickFormattersTest, NeighboursAreWrittenApart)
{
    EXPECT_EQ(number(1.8, 0.0002), "1.8000");
    EXPECT_EQ(number(1.8002, 0.0002), "1.8002");
    EXPECT_EQ(number(1.25, 0.25), "1.25");
    EXPECT_EQ(number(4.9, 0.49), "4.90");
    EXPECT_EQ(number(40, 20), "40");
}

TEST_F(TickFormattersTest, ThousandsAreSeparatedAsTheLocaleHasIt)
{
    EXPECT_EQ(number(1'234'600, 100), "1,234,600");
    use("de_DE", "UTC");
    EXPECT_EQ(number(1'234'600.5, 0.5), "1.234.600,5");
}

TEST_F(TickFormattersTest, ZeroHasNoSignAndHugeNumbersAnExponent)
{
    EXPECT_EQ(number(-1e-17, 0.1), "0.0");
    EXPECT_EQ(number(2e20, 1e19), "2E20");
    EXPECT_EQ(number(qQNaN(), 1), "");
}

TEST_F(TickFormattersTest, StepsOfNoUseTakeNoDigits)
{
    EXPECT_EQ(fractionDigitsForStep(0), 0);
    EXPECT_EQ(fractionDigitsForStep(-1), 0);
    EXPECT_EQ(fractionDigitsForStep(qInf()), 0);
    EXPECT_EQ(fractionDigitsForStep(1e-30), 15);
}

TEST_F(TickFormattersTest, TimesSayWhatTellsTicksApart)
{
    EXPECT_EQ(time(kMoment + 0.25, 0.05), "10:13:20.25 PM\nNov 14");
    EXPECT_EQ(time(kMoment, 10), "10:13:20 PM\nNov 14");
    EXPECT_EQ(time(kMoment, 3'600), "10:13 PM\nNov 14");
    EXPECT_EQ(time(kMoment, 86'400), "Nov 14\n2023");
    EXPECT_EQ(time(kMoment, 90 * 86'400), "Nov\n2023");
    EXPECT_EQ(time(kMoment, 365 * 86'400), "2023");
}

TEST_F(TickFormattersTest, TimesAreTheLocalesAndTheZones)
{
    use("de_DE", "Europe/Berlin");
    EXPECT_EQ(time(kMoment, 3'600), "23:13\n14. Nov.");
    EXPECT_EQ(time(kMoment, 86'400), "14. Nov.\n2023");
}

TEST_F(TickFormattersTest, AMomentStandsInOneLineWithItsWeekday)
{
    EXPECT_EQ(CPTMomentFormatter().stringForTick(kMoment, 3'600), "Tue, Nov 14, 2023, 10:13 PM");
    EXPECT_EQ(CPTMomentFormatter().stringForNumber(kMoment), "Tue, Nov 14, 2023, 10:13:20 PM");
    use("de_DE", "Europe/Berlin");
    EXPECT_EQ(CPTMomentFormatter().stringForTick(kMoment + 0.25, 0.001), "Di., 14. Nov. 2023, 23:13:20,250");
}

}  // namespace
