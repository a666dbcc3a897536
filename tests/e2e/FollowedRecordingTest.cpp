#include "hostapp/app/Composition.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/live/LiveRecorder.h"
#include "hostapp/live/sources/ReadingSources.h"
#include "hostapp/site/TrendFollower.h"
#include "hostapp/site/WaitForRecords.h"
#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "records/store/RecordStore.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <algorithm>
#include <gtest/gtest.h>

// A real trend over a real archive, followed while this computer is recorded fifty times a second.

namespace plotix {

namespace {

class FollowedRecordingTest : public testing::Test {
protected:
    FollowedRecordingTest()
    {
        recorder = std::make_unique<LiveRecorder>(site(), makeReadingSource(QStringLiteral("computer")), 0.02);
        document = SiteDocument::open(site());
        agent = document->agentNamed(recorder->agentName());
        recorder->start();
        waitForRecords(3);
        now = currentDate().seconds;
        trend =
            KTVPlotixPlugIn::initWithAgent(agent, nullptr, agent->properties().objects(), Date{now - 60}, Date{now});
        trend->view()->show();
        plotix::waitForRecords(*agent);
    }
    ~FollowedRecordingTest() override { recorder.reset(); }

    QString site() const { return folder.filePath("computer.plotix"); }
    void waitForRecords(int count)
    {
        QEventLoop loop;
        int seen = 0;
        QObject::connect(recorder.get(), &LiveRecorder::recorded, &loop, [&] {
            if (++seen == count)
                loop.quit();
        });
        QTimer::singleShot(10'000, &loop, &QEventLoop::quit);
        loop.exec();
        ASSERT_GE(seen, count);
    }
    void lookAfterAt(double seconds)
    {
        now = seconds;
        follower.moveThoseDue();
        plotix::waitForRecords(*agent);
    }
    std::vector<double> plottedTimes() const
    {
        const auto times = trend->plotData()->time();
        return times ? std::vector<double>(times->span().begin(), times->span().end()) : std::vector<double>();
    }
    std::vector<double> storedTimes(double from, double to) const
    {
        const auto block = document->records()->read(agent->id(), {}, from, to);
        return {block->times.span().begin(), block->times.span().end()};
    }

    Composition composition{Composition::Audience::Nobody};
    QTemporaryDir folder;
    std::unique_ptr<LiveRecorder> recorder;
    std::shared_ptr<SiteDocument> document;
    std::shared_ptr<SiteAgent> agent;
    KTVPlotixPlugIn::Ptr trend;
    double now = currentDate().seconds;
    TrendFollower follower{[this] { return now; }};
};

TEST_F(FollowedRecordingTest, TheTrendEndsNowAndHoldsExactlyWhatIsStored)
{
    const double span = trend->shownRange()[1].toDouble() - trend->shownRange()[0].toDouble();
    now = currentDate().seconds;
    follower.follow(trend);
    plotix::waitForRecords(*agent);
    for (int move = 1; move <= 5; ++move) {
        waitForRecords(4);
        lookAfterAt(currentDate().seconds + 3 * move);  // the follower's clock runs ahead, so that each move is due
        ASSERT_TRUE(follower.isFollowing(trend.get()));
        const QVariantList shown = trend->shownRange();
        EXPECT_NEAR(shown[1].toDouble(), now, 0.01);
        EXPECT_NEAR(shown[1].toDouble() - shown[0].toDouble(), std::max(span, 10.0), 0.01);
        // Records went on arriving: what is plotted is a piece of what is stored, without gap or repetition.
        const std::vector<double> plotted = plottedTimes();
        ASSERT_FALSE(plotted.empty());
        EXPECT_EQ(plotted, storedTimes(plotted.front(), plotted.back()));
    }
}

TEST_F(FollowedRecordingTest, APanEndsIt)
{
    now = currentDate().seconds;
    follower.follow(trend);
    plotix::waitForRecords(*agent);
    CPTXYPlotSpace& space = *trend->graph()->defaultPlotSpace();
    space.setXRange({space.xRange().location - 5, space.xRange().length});
    const QVariantList panned = trend->shownRange();
    lookAfterAt(now + 10);
    EXPECT_FALSE(follower.isFollowing(trend.get()));
    EXPECT_EQ(trend->shownRange(), panned);
}

}  // namespace

}  // namespace plotix
