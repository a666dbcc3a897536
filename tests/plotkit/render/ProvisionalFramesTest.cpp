#include "plotkit/render/GraphFrames.h"
#include "tests/plotkit/model/PagedSeriesMaking.h"
#include "tests/plotkit/render/CrossLayer.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include <chrono>
#include <semaphore>

// A graph of more pages than a frame waits for is drawn from its runs, and exactly when the pages are there.

namespace {

using namespace plotkit;
using namespace plotkit_test;

const QSize kSize(160, 90);

/// Points that cannot be read.
class UnreadablePoints : public CPTPagedPoints {
public:
    UnreadablePoints(std::shared_ptr<plotix::PageCache> cache, std::size_t elements)
        : CPTPagedPoints(std::move(cache), elements)
    {
    }

private:
    bool writePoints(CPTPointWriter& /*into*/) const noexcept override { return false; }
};

class ProvisionalFramesTest : public testing::Test {
protected:
    ProvisionalFramesTest()
    {
        for (int second = 0; second < 3'000'000; ++second)
            twin.add(second, 30 + 20 * std::sin(second / 30'000.0) + second % 10);
        twin.cutRuns(20'000, 1);  // longer than a pixel shows
        show(twin.paged());
    }

    void show(const CPTPointSeriesPtr& series)
    {
        shown.addPlot(Qt::red, series, 1);
        zoomTo(0.1, 0.6);
        looksBefore = twin.looks();
    }
    void zoomTo(double from, double share) { shown.graph.defaultPlotSpace()->setXRange({from * 3e6, share * 3e6}); }

    QImage painted(GraphFrames& by, FrameTruth truth = FrameTruth::MayBeProvisional,
                   GraphChange change = GraphChange::Anything)
    {
        QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter to(&image);
        by.paint(to, shown.graph, QRectF(QPointF(), kSize), change, truth);
        return image;
    }
    QImage exact()
    {
        GraphFrames anew;
        return painted(anew, FrameTruth::Exact);
    }
    bool canSettle() { return settles.try_acquire_for(std::chrono::seconds(20)); }
    std::size_t looks() const { return twin.looks() - looksBefore; }

    TwinSeries twin;
    RenderedGraph shown;
    std::size_t looksBefore = 0;
    std::counting_semaphore<> settles{0};
    GraphFrames frames{[this] { settles.release(); }};
};

TEST_F(ProvisionalFramesTest, SettleToTheExactPicture)
{
    const QImage provisional = painted(frames);
    EXPECT_TRUE(frames.isProvisional());
    EXPECT_NE(provisional, exact());
    ASSERT_TRUE(canSettle());
    EXPECT_EQ(painted(frames), exact());
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, SettleBelowLayersToo)
{
    shown.graph.addLayer(std::make_shared<CrossLayer>());
    painted(frames);
    EXPECT_TRUE(frames.isProvisional());
    ASSERT_TRUE(canSettle());
    EXPECT_EQ(painted(frames), exact());
}

TEST_F(ProvisionalFramesTest, AreDrawnWithoutALookAtThePoints)
{
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    QPainter to(&image);
    FrameParts parts;
    GraphPainter().paint(to, shown.graph, QRectF(QPointF(), kSize), &parts);
    EXPECT_EQ(looks(), 0U);
    ASSERT_FALSE(parts.lacking.empty());
    EXPECT_LE(parts.lacking.back().end, static_cast<std::size_t>(2.8e6));
}

TEST_F(ProvisionalFramesTest, AreOnlyThoseOfManyPages)
{
    zoomTo(0.5, 0.05);
    EXPECT_EQ(painted(frames), exact());
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, AreNoneWhereThePagesAreThere)
{
    const CPTPointSeries::Hold all = shown.graph.allPlots().front()->series()->hold(0, twin.size());
    EXPECT_EQ(painted(frames), exact());
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, AreNoneForPointsWithoutALine)
{
    shown.graph.allPlots().front()->setInterpolation(CPTScatterPlotInterpolation::PointsOnly);
    EXPECT_EQ(painted(frames), exact());
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, LeaveAPictureForSomebodyExactAndSettleAllTheSame)
{
    shown.graph.addLayer(std::make_shared<CrossLayer>());
    painted(frames);
    EXPECT_EQ(painted(frames, FrameTruth::Exact, GraphChange::LayersOnly), exact());
    ASSERT_TRUE(canSettle());
    EXPECT_EQ(painted(frames), exact());
}

TEST_F(ProvisionalFramesTest, SettleWhereTheViewIsAfterAMove)
{
    painted(frames);
    zoomTo(0.2, 0.7);
    painted(frames);
    while (frames.isProvisional()) {
        ASSERT_TRUE(canSettle());
        painted(frames);
    }
    EXPECT_EQ(painted(frames), exact());
}

TEST_F(ProvisionalFramesTest, SettleThoughPagesCannotBeRead)
{
    const auto unreadable = std::make_shared<UnreadablePoints>(std::make_shared<plotix::PageCache>(0), twin.size());
    shown.graph.removePlot(shown.graph.allPlots().front());
    show(twin.pagedBy(unreadable));
    painted(frames);
    EXPECT_TRUE(frames.isProvisional());
    ASSERT_TRUE(canSettle());
    painted(frames);
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, AndPansOfWhatIsSettledStayExact)
{
    painted(frames);
    ASSERT_TRUE(canSettle());
    painted(frames);
    zoomTo(0.101, 0.6);
    EXPECT_EQ(painted(frames), exact());
    EXPECT_FALSE(frames.isProvisional());
}

TEST_F(ProvisionalFramesTest, CanBeLeftAlone)
{
    GraphFrames leaving;
    painted(leaving);
    EXPECT_TRUE(leaving.isProvisional());
}

}  // namespace
