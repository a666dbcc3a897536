#include "plotkit/render/GraphFrames.h"
#include "tests/plotkit/model/PagedSeriesMaking.h"
#include "tests/plotkit/render/CrossLayer.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include <chrono>
#include <semaphore>
#include <thread>

// A graph of more pages than a frame waits for is drawn from its runs, and exactly when the pages are there.

namespace {

using namespace plotkit;
using namespace plotkit_test;

const QSize kSize(160, 90);

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

class FramesAheadTest : public ProvisionalFramesTest {
protected:
    FramesAheadTest()
    {
        constexpr std::size_t kPlenty = 256 << 20;  // bytes
        shown.graph.removePlot(shown.graph.allPlots().front());
        show(twin.paged(kPlenty));
        showFrom(0.4);
    }
    void showFrom(double from)
    {
        zoomTo(from, 0.1);
        painted(frames);
        ASSERT_FALSE(frames.isProvisional());
    }
    bool isThere(double from, double share) const
    {
        const CPTPointSeriesPtr series = shown.graph.allPlots().front()->series();
        plotix::PagedMemory::Hold hold;
        return series->y().memory()->holdIfThere(static_cast<std::size_t>(from * 3e6),
                                                 static_cast<std::size_t>((from + share) * 3e6), hold);
    }
    bool comesThere(double from, double share) const
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isThere(from, share) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return isThere(from, share);
    }
};

TEST_F(FramesAheadTest, ComeFromMemoryWhereAViewMovesOn)
{
    showFrom(0.41);
    EXPECT_TRUE(comesThere(0.51, 0.1));
    EXPECT_FALSE(isThere(0.3, 0.05));
}

TEST_F(FramesAheadTest, ComeFromMemoryWhereAViewMovesBack)
{
    showFrom(0.39);
    EXPECT_TRUE(comesThere(0.29, 0.1));
    EXPECT_FALSE(isThere(0.55, 0.05));
}

TEST_F(FramesAheadTest, AreNotThoughtOfWhereAViewRests)
{
    showFrom(0.4);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(isThere(0.55, 0.05));
    EXPECT_FALSE(isThere(0.3, 0.05));
}

TEST_F(ProvisionalFramesTest, CanBeLeftAlone)
{
    GraphFrames leaving;
    painted(leaving);
    EXPECT_TRUE(leaving.isProvisional());
}

}  // namespace
