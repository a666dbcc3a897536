#include "hostapp/window/CopiedRecords.h"

#include "base/ReportableError.h"
#include "tests/support/PinnedZone.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <gtest/gtest.h>

#include <numeric>

namespace plotix {

namespace {

class CopiedRecordsTest : public testing::Test {
protected:
    CopiedRecordsTest() : station(site.addStation()) { zone.use("UTC"); }

    QString copied(double from, double to)
    {
        return copiedRecords(*site.document, *station, {"airTemperature"}, {from, to});
    }
    PinnedZone zone;
    ScratchSite site;
    std::shared_ptr<SiteAgent> station;
};

TEST_F(CopiedRecordsTest, TheSpansRecordsComeAsRowsWithTabs)
{
    site.store(*station, {1'400'000'000, 1'400'000'060, 1'400'000'120}, {20.5, 21, 0.1});
    const QStringList rows = copied(1'400'000'000, 1'400'000'060).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows[0].contains("Air Temperature")) << rows[0].toStdString();
    EXPECT_TRUE(rows[1].startsWith("2014-05-13")) << rows[1].toStdString();
    EXPECT_EQ(rows[1].trimmed().section(u'\t', 1, 1), "20.5");
    EXPECT_EQ(rows[2].trimmed().section(u'\t', 1, 1), "21");
}

TEST_F(CopiedRecordsTest, TimesAreThoseOfAChosenZone)
{
    site.store(*station, {1'400'000'000});
    const QString text = copiedRecords(*site.document, *station, {"airTemperature"}, {1'400'000'000, 1'400'000'001},
                                       QTimeZone("Asia/Kathmandu"));
    EXPECT_TRUE(text.contains("2014-05-13T22:38:20+05:45")) << text.toStdString();
}

TEST_F(CopiedRecordsTest, ASpanWithoutRecordsIsNothing)
{
    site.store(*station, {1'400'000'000});
    EXPECT_TRUE(copied(0, 10).isEmpty());
}

TEST_F(CopiedRecordsTest, TooManyAreRefused)
{
    std::vector<double> times(kMostCopiedRecords + 1);
    std::iota(times.begin(), times.end(), 1'400'000'000);
    site.store(*station, times);
    EXPECT_THROW(copied(0, 2e9), ReportableError);
    EXPECT_FALSE(copied(0, 1'400'000'009).isEmpty());
}

}  // namespace

}  // namespace plotix
