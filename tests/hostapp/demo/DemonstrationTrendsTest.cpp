#include "hostapp/demo/DemonstrationTrends.h"

#include "plugins/PlotixPlugIn/host/KTVArchiveNode.h"
#include "records/store/RecordStore.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr double kHour = 3600;
constexpr double kLeft = 1.7e9;              // the last record when the site was left
constexpr double kNow = kLeft + 20 * kHour;  // the last record now

class DemonstrationTrendsTest : public testing::Test {
protected:
    DemonstrationTrendsTest() : document(plotix::SiteDocument::create(folder.filePath(QStringLiteral("demo.plotix"))))
    {
        const auto agent = document->addAgent(QStringLiteral("Weather Station"));
        agent->addProperty(QStringLiteral("Air"), QStringLiteral("°C"));
        plotix::RecordBlock block;
        block.times = plotix::SharedArray<double>::fromVector({kLeft - kHour, kLeft, kNow});
        block.columns.push_back({agent->siteProperties().front()->description().id,
                                 plotix::SharedArray<double>::fromVector({1, 2, 3}),
                                 {}});
        const auto writer = document->records()->begin();
        writer->store(agent->id(), block);
        writer->commit();
    }
    void leaveTrend(double from, double to)
    {
        KTVArchiveNode dates, root;
        dates.kind = root.kind = KTVArchiveNode::Kind::Object;
        dates.set(QStringLiteral("fromDate"), KTVArchiveNode::of(from));
        dates.set(QStringLiteral("toDate"), KTVArchiveNode::of(to));
        root.set(QStringLiteral("dataClusterViewController"), dates);
        root.set(QStringLiteral("title"), KTVArchiveNode::of(QStringLiteral("Week")));
        document->storePlugIn({0, QStringLiteral("Trend"), writeKeyedArchive(root)});
    }
    KTVArchiveNode archived() { return readKeyedArchive(document->archivedPlugIns().at(0).state); }
    double date(const char* key)
    {
        const KTVArchiveNode root = archived();
        return root.find(QStringLiteral("dataClusterViewController"))->find(QLatin1String(key))->value.toDouble();
    }

    QTemporaryDir folder;
    std::shared_ptr<plotix::SiteDocument> document;
};

TEST_F(DemonstrationTrendsTest, TrendThatEndedAtTheEndStillDoes)
{
    leaveTrend(kLeft - 24 * kHour, kLeft);
    EXPECT_EQ(plotix::letTrendsFollow(*document, kLeft), 1);
    EXPECT_EQ(date("toDate"), kNow);
    EXPECT_EQ(date("fromDate"), kNow - 24 * kHour);
    EXPECT_EQ(archived().find(QStringLiteral("title"))->value.toString(), QStringLiteral("Week"));
}

TEST_F(DemonstrationTrendsTest, TrendThatRanOnPastTheOldEndEndsNow)
{
    leaveTrend(kLeft - 10 * kHour, kLeft + 5 * kHour);
    EXPECT_EQ(plotix::letTrendsFollow(*document, kLeft), 1);
    EXPECT_EQ(date("toDate"), kNow);
    EXPECT_EQ(date("fromDate"), kNow - 15 * kHour);
}

TEST_F(DemonstrationTrendsTest, TrendLeftInThePastStaysThere)
{
    leaveTrend(kLeft - 24 * kHour, kLeft - 2 * kHour);
    EXPECT_EQ(plotix::letTrendsFollow(*document, kLeft), 0);
    EXPECT_EQ(date("toDate"), kLeft - 2 * kHour);
}

TEST_F(DemonstrationTrendsTest, TrendThatEndsInTheFutureStays)
{
    leaveTrend(kLeft, kNow + kHour);
    EXPECT_EQ(plotix::letTrendsFollow(*document, kLeft), 0);
    EXPECT_EQ(date("fromDate"), kLeft);
}

TEST_F(DemonstrationTrendsTest, StateNobodyCanReadStaysAsItIs)
{
    document->storePlugIn({0, QStringLiteral("Newer"), QByteArrayLiteral("?")});
    EXPECT_EQ(plotix::letTrendsFollow(*document, kLeft), 0);
    EXPECT_EQ(document->archivedPlugIns().at(0).state, QByteArrayLiteral("?"));
}

}  // namespace
