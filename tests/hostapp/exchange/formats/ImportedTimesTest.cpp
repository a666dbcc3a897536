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

}  // namespace

}  // namespace plotix
