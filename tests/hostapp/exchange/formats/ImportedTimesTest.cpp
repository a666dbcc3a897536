#include "tests/hostapp/exchange/formats/ImportFixture.h"

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImportedTimesTest : public ImportFixture {};

TEST_F(ImportedTimesTest, DecidesDayAndMonthOverTheWholeFile)
{
    QByteArray text = "date,a\n";
    for (int row = 0; row < 9000; ++row)  // far beyond the sample
        text += "3/4/2015 0:00,1\n";
    const ImportSummary summary = import(text + "3/14/2015 0:00,2\n");
    EXPECT_EQ(times(), (std::vector<double>{1425427200, 1426291200}));  // March
    EXPECT_EQ(summary.notes, std::vector{ImportFinding{.what = What::DatesHaveMonthFirst}});
}

TEST_F(ImportedTimesTest, RefusesDatesThatStayAmbiguousUntilTheOrderIsSaid)
{
    EXPECT_EQ(failure("date,a\n3/4/2015,1\n"), ImportFinding{.what = What::DateOrderUnknown});
    m_options.dateOrder = DateOrder::DayFirst;
    import("date,a\n3/4/2015,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1428019200}));  // April
}

TEST_F(ImportedTimesTest, ReadsLocalTimesInTheZoneGiven)
{
    m_options.timeZone = QStringLiteral("America/New_York");
    import("time,a\n2015-01-01 00:00,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1420088400}));
}

TEST_F(ImportedTimesTest, TheUsersZoneComesBeforeTheFiles)
{
    const QByteArray text = "Time (CET),a\n2015-01-01 12:00,1\n";
    EXPECT_EQ(*import(text).first, 1420110000);
    m_options.timeZone = QStringLiteral("+02:00");
    m_options.agentName = QStringLiteral("other");
    EXPECT_EQ(*import(text).first, 1420106400);
}

TEST_F(ImportedTimesTest, DatesAndTimesOfDayAreJoinedAsTheUserSays)
{
    m_options.timeColumn = QStringLiteral("day+clock");
    import("clock,other,day,a\n12:00,2014-01-01,2015-01-01,1\n13:00,2014-01-01,2015-01-01,2\n");
    EXPECT_EQ(times(), (std::vector<double>{1420113600, 1420117200}));
}

class SpringNightTest : public ImportFixture {
protected:
    void SetUp() override { m_options.timeZone = QStringLiteral("Europe/Berlin"); }

    const QByteArray m_text = "time,a\n2024-03-31 01:45,1\n2024-03-31 02:00,2\n2024-03-31 02:15,3\n"
                              "2024-03-31 03:00,4\n2024-03-31 03:15,5\n";
    const ImportFinding m_skipped{
        .what = What::NotInZone, .line = 3, .column = "time", .text = "2024-03-31 02:00", .columns = {"Europe/Berlin"}};
};

TEST_F(SpringNightTest, TimesThatTheZoneSkipsAreRefusedWithTheOffsetThatHelps)
{
    const std::optional<ImportFinding> finding = failure(m_text);
    EXPECT_EQ(finding, (ImportFinding{.what = What::TimesNotInZone, .text = "+01:00", .causes = {m_skipped}}));
    EXPECT_EQ(optionOf(*finding), ImportOption::TimeZone);
    m_options.timeZone = finding->text;
    EXPECT_EQ(import(m_text).repeatedTimes, 0U);
    EXPECT_EQ(times(), (std::vector<double>{1711845900, 1711846800, 1711847700, 1711850400, 1711851300}));
}

TEST_F(SpringNightTest, SkippedTimesArePassedOverAndCountedWhereTheUserSaysSo)
{
    m_options.skipBadRows = true;
    const ImportSummary summary = import(m_text);
    EXPECT_EQ(summary.badRows, 2U);
    EXPECT_EQ(summary.firstBadRow, m_skipped);
    EXPECT_EQ(times(), (std::vector<double>{1711845900, 1711846800, 1711847700}));
}

TEST_F(SpringNightTest, DatesAndTimesOfDayAreShownTogether)
{
    const auto finding = failure("date,time,a\n2024-03-31,01:45,1\n2024-03-31,02:00,2\n2024-03-31,03:00,4\n");
    ASSERT_TRUE(finding && !finding->causes.empty());
    EXPECT_EQ(finding->causes.front().text, QStringLiteral("2024-03-31 02:00"));
}

TEST_F(SpringNightTest, TimesInUtcAreNotConcerned)
{
    m_options.timeZone = QStringLiteral("UTC");
    EXPECT_EQ(import(m_text).records, 5U);
}

TEST_F(ImportedTimesTest, ClockDigitsAreAllHoursOrAllHoursAndMinutes)
{
    m_options.timeZone = QStringLiteral("UTC");
    m_options.timeColumn = QStringLiteral("date+time");
    import("date,time,temp\n20240514,2330,20\n20240515,0,22\n20240515,15,23\n20240515,30,24\n20240515,100,26\n");
    EXPECT_EQ(times(), (std::vector<double>{1715729400, 1715731200, 1715732100, 1715733000, 1715734800}));
}

TEST_F(ImportedTimesTest, ClockDigitsWithoutMinutesStayHours)
{
    m_options.timeZone = QStringLiteral("UTC");
    import("date,hour,temp\n20240515,0,22\n20240515,1,23\n20240515,15,24\n");
    EXPECT_EQ(times(), (std::vector<double>{1715731200, 1715734800, 1715785200}));
}

TEST_F(ImportedTimesTest, MinutesBeyondTheHourAreNoTime)
{
    m_options.timeColumn = QStringLiteral("date+time");
    m_options.skipBadRows = true;
    const ImportSummary summary = import("date,time,a\n20240515,2330,1\n20240515,75,2\n20240515,100,3\n");
    EXPECT_EQ(summary.badRows, 1U);
    EXPECT_EQ(summary.records, 2U);
}

TEST_F(ImportedTimesTest, SecondsSince1970AreTold)
{
    EXPECT_EQ(import("time,a\n1422973140,1\n1422973141,2\n").notes,
              std::vector{(ImportFinding{.what = What::TimesAreNumbers, .column = "time", .text = "s"})});
}

TEST_F(ImportedTimesTest, NumbersThatCountFromElsewhereAreRefused)
{
    const ImportFinding finding{.what = What::NumbersAreNoTimes, .column = "Elapsed [s]", .text = "s"};
    m_options.timeColumn = QStringLiteral("Elapsed [s]");
    EXPECT_EQ(failure("Elapsed [s],a\n0,1\n1,2\n2,3\n"), finding);
    EXPECT_EQ(failure("Elapsed [s],a\n3787654321,1\n3787654322,2\n"), finding);
    EXPECT_EQ(failure("Elapsed [s];a\n0,000000000E+00;1\n1,000000000E-01;2\n"), finding);
    EXPECT_EQ(optionOf(finding), ImportOption::TimeColumn);
}

TEST_F(ImportedTimesTest, WhatWeWriteOutsideTheCalendarIsReadAsItIs)
{
    import("time (s),a\n-5,1\n1e300,2\n");
    EXPECT_EQ(times(), (std::vector<double>{-5, 1e300}));
}

TEST_F(ImportedTimesTest, SecondsWithADecimalCommaAreTimes)
{
    import("timestamp;a\n1422973140,5;1\n1422973141,25;2\n");
    EXPECT_EQ(times(), (std::vector<double>{1422973140.5, 1422973141.25}));
}

}  // namespace

}  // namespace plotix
