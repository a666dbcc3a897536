#include "hostapp/print/ReportText.h"

#include <gtest/gtest.h>

namespace plotix {
namespace {

// Tests run in UTC.
constexpr double kDay = 86'400, kMarch = 1'709'251'200;  // 2024-03-01 00:00

const QLocale kBritish(QLocale::English, QLocale::UnitedKingdom), kGerman(QLocale::German, QLocale::Germany);

ReportContents::Row row(double minimum, double maximum, double average, qint64 points = 1000)
{
    return {Qt::red, QStringLiteral("A"), QStringLiteral("°C"), minimum, maximum, average, points};
}

TEST(ReportText, ASpanNamesBothDatesAndTheZoneOnce)
{
    EXPECT_EQ(spanText({}, kMarch, kMarch + kDay * 2 + 3600, kBritish),
              "Friday, 1 March 2024 00:00 to Sunday, 3 March 2024 01:00 UTC");
}

TEST(ReportText, ASpanWithinADayNamesItOnce)
{
    EXPECT_EQ(spanText({}, kMarch, kMarch + 7200, kBritish), "Friday, 1 March 2024, 00:00 to 02:00 UTC");
}

TEST(ReportText, ShortSpansTellSeconds)
{
    EXPECT_EQ(spanText({}, kMarch + 5, kMarch + 65, kBritish), "Friday, 1 March 2024, 00:00:05 to 00:01:05 UTC");
}

TEST(ReportText, AZoneThatWasChosenIsNamed)
{
    ReportContents contents;
    contents.zone = QTimeZone("Asia/Kathmandu");
    EXPECT_EQ(spanText(contents, kMarch, kMarch + 7200, kBritish),
              "Friday, 1 March 2024, 05:45 to 07:45 +0545 (Asia/Kathmandu)");
    contents.zone = QTimeZone("UTC");
    contents.hasTwentyFourHours = true;
    EXPECT_EQ(spanText(contents, kMarch + 50'400, kMarch + 57'600, QLocale("en_US")),
              "Friday, March 1, 2024, 14:00 to 16:00 UTC");
}

TEST(ReportText, PlaceIsWhatThereIs)
{
    ReportContents contents;
    EXPECT_EQ(placeText(contents), "");
    contents.siteName = QStringLiteral("Mill");
    EXPECT_EQ(placeText(contents), "Mill");
    contents.siteLocation = QStringLiteral("Hamburg");
    EXPECT_EQ(placeText(contents), "Mill, Hamburg");
}

TEST(ReportText, RecordsAreToldOnlyWhereTheyReachBeyondTheGraph)
{
    ReportContents contents;
    contents.from = kMarch;
    contents.to = kMarch + kDay;
    EXPECT_EQ(recordsText(contents, kBritish), "");
    contents.firstRecord = kMarch - 60;
    contents.lastRecord = kMarch + kDay;
    EXPECT_EQ(recordsText(contents, kBritish), "");
    contents.lastRecord = kMarch + 2 * kDay;
    EXPECT_TRUE(recordsText(contents, kBritish).contains(QStringLiteral("Sunday, 3 March 2024")));
}

TEST(ReportText, LinesThatTheGraphCutsOffAreTold)
{
    ReportContents contents;
    contents.to = kDay;
    EXPECT_EQ(noteText(contents, kBritish), "");
    contents.outside = QStringList{"Power", "Volume"};
    EXPECT_EQ(noteText(contents, kBritish), "Outside the values shown: Power, Volume");
    contents.firstRecord = -kDay;
    contents.lastRecord = kDay;
    EXPECT_TRUE(noteText(contents, kBritish).contains(QStringLiteral("Volume · The figures")));
}

TEST(ReportText, FiguresHaveTheDigitsOfTheTableOnTheScreen)
{
    const FiguresText figures = figuresText(row(17.04, 24, 20.512), kBritish);
    EXPECT_EQ(figures.minimum, "17.04");
    EXPECT_EQ(figures.maximum, "24.00");
    EXPECT_EQ(figures.average, "20.512");
    EXPECT_EQ(figures.points, "1,000");
}

TEST(ReportText, NoDigitIsMadeUpThatWasRoundedAway)
{
    EXPECT_EQ(figuresText(row(20.5F, 24.40833F, 21.43F), kBritish).average, "21.43");
    EXPECT_EQ(figuresText(row(20.5F, 24.40833F, 21.4F), kBritish).average, "21.40") << "it was rounded to hundredths";
    EXPECT_EQ(figuresText(row(0, 100, 50), kBritish).maximum, "100");
}

TEST(ReportText, FiguresAreWrittenAsTheReaderDoes)
{
    const FiguresText figures = figuresText(row(-1234567.5, 2234567.5, 0), kGerman);
    EXPECT_EQ(figures.minimum, "-1.234.568");
    EXPECT_EQ(figuresText(row(0.5, 1.5, 0.75), kGerman).average, "0,75");
}

TEST(ReportText, SmallFiguresAreNotRoundedToNothing)
{
    EXPECT_EQ(figuresText(row(0, 2e-9, 1e-9), kBritish).average, "1E-09");
}

TEST(ReportText, WithoutValuesThereAreNoFigures)
{
    const FiguresText figures = figuresText(row(0, 0, 0, 0), kBritish);
    EXPECT_EQ(figures.average, "–");
    EXPECT_EQ(figures.points, "0");
}

TEST(ReportText, TheUnitOfAllRowsIsShared)
{
    ReportContents contents;
    EXPECT_EQ(sharedUnit(contents), "");
    contents.rows = {row(0, 1, 0), row(0, 1, 0)};
    EXPECT_EQ(sharedUnit(contents), "°C");
    contents.rows[1].unit = QStringLiteral("hPa");
    EXPECT_EQ(sharedUnit(contents), "");
}

TEST(ReportText, AUnitThatTheGraphNamesIsNotWrittenAboveIt)
{
    ReportContents contents;
    contents.rows = {row(0, 1, 0), row(0, 1, 0)};
    contents.areUnitsInGraph = true;
    EXPECT_EQ(sharedUnit(contents), "");
}

}  // namespace
}  // namespace plotix
