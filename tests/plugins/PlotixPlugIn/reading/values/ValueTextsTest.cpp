#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include "tests/support/PinnedZone.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;

/// Pins locale and zone for one test and restores the environment afterwards.
class ValueTextsTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_all = qgetenv("LC_ALL");
        qputenv("LC_ALL", "en_US");
        m_zone.use("UTC");
    }
    void TearDown() override { qputenv("LC_ALL", m_all); }

    /// As written, with plain blanks.
    static QString plain(QString text) { return text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')); }
    static QString value(double number, const char* unit = "") { return plain(ValueTexts().value(number, unit)); }
    static QString difference(double a, double b, const QString& unit = {})
    {
        return plain(ValueTexts().difference(a, b, unit));
    }
    static QString slope(double a, double b, double seconds, const QString& unit)
    {
        return plain(ValueTexts().slope(a, b, seconds, unit));
    }

private:
    PinnedZone m_zone;
    QByteArray m_all;
};

TEST_F(ValueTextsTest, AValueHasTheDigitsThatCountAndItsUnit)
{
    EXPECT_EQ(value(1013.25, "hPa"), "1,013.25 hPa");
    EXPECT_EQ(value(98.60000000000001), "98.6");
    EXPECT_EQ(value(0), "0");
    EXPECT_EQ(value(547e6, "B/s"), "547,000,000 B/s");
    EXPECT_EQ(value(0.00012345678), "0.0001234568");
    EXPECT_EQ(value(-40), "-40");
    EXPECT_EQ(value(1.5e-9, "m"), "1.5E-09 m");
    EXPECT_EQ(value(100), "100");
}

TEST_F(ValueTextsTest, ADifferenceHasASignAndNoDust)
{
    EXPECT_EQ(difference(19.9, 20.1), "+0.2");
    EXPECT_EQ(difference(1013.25, 991.15, "hPa"), "-22.1 hPa");
    EXPECT_EQ(difference(5, 5), "0");
    EXPECT_EQ(difference(1'000'000.1, 1'000'000.1 + 1e-9), "0");
}

TEST_F(ValueTextsTest, DegreesCelsiusDifferByKelvins)
{
    EXPECT_EQ(difference(1, 5.4, "°C"), "+4.4 K");
    EXPECT_EQ(difference(32, 50, "°F"), "+18 °F");
}

TEST_F(ValueTextsTest, ASlopeIsByThePartOfTimeThatFits)
{
    EXPECT_EQ(slope(0, 10, 4 * 86'400.0, "°C"), "+2.5 K/d");
    EXPECT_EQ(slope(10, 0, 4 * 3'600.0, "kW"), "-2.5 kW/h");
    EXPECT_EQ(slope(0, 1, 3 * 60.0, "bar"), "+0.3333 bar/min");
    EXPECT_EQ(slope(0, 1, 2, ""), "+0.5 1/s");
    EXPECT_EQ(slope(0, 1, 0, "bar"), "");
}

TEST_F(ValueTextsTest, DurationsAreSaidByTheirTwoLargestParts)
{
    EXPECT_EQ(durationText(4 * 86'400 + 3'700), "4 d 1 h");
    EXPECT_EQ(durationText(3 * 3'600 + 20 * 60), "3 h 20 min");
    EXPECT_EQ(durationText(3 * 3'600), "3 h");
    EXPECT_EQ(durationText(-90), "1 min 30 s");
    EXPECT_EQ(durationText(45), "45 s");
    EXPECT_EQ(durationText(1.25), "1.25 s");
    EXPECT_EQ(durationText(0.0123), "12.3 ms");
    EXPECT_EQ(durationText(0), "0 s");
    EXPECT_EQ(durationText(qQNaN()), "");
}

TEST_F(ValueTextsTest, ARoundedDurationCarriesIntoTheLargerPart)
{
    EXPECT_EQ(durationText(86'399), "1 d");
    EXPECT_EQ(durationText(3'599.9), "1 h");
    EXPECT_EQ(durationText(2 * 86'400 - 60), "2 d");
}

TEST_F(ValueTextsTest, AMomentIsWrittenAsFineAsThePictureIs)
{
    const ValueTexts texts;
    EXPECT_EQ(texts.moment(1'700'000'000, 300), "Tue, Nov 14, 2023, 10:13 PM");
    EXPECT_EQ(texts.moment(1'700'000'000, 5), "Tue, Nov 14, 2023, 10:13:20 PM");
}

}  // namespace
