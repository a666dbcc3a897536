#include "plotkit/render/GraphRendering.h"
#include "tests/plotkit/model/PagedSeriesMaking.h"
#include "tests/plotkit/render/RenderedGraph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

// A paged series makes the picture of the same series in memory, with a cache that keeps nothing.

namespace {

using namespace plotkit;
using namespace plotkit_test;

const QSize kSize(160, 90);

class PagedPixelsTest : public testing::Test {
protected:
    struct Looks {
        CPTScatterPlotInterpolation interpolation = CPTScatterPlotInterpolation::Linear;
        double pointSize = 0;
        double gap = std::numeric_limits<double>::infinity();
        bool isFilled = false;
        bool isDashed = false;
    };
    void take(TwinSeries made)
    {
        twin = std::move(made);
        inMemory = twin.inMemory();
        paged = twin.paged();
    }
    RenderedGraph& graphOf(RenderedGraph& shown, const CPTPointSeriesPtr& series, const Looks& looks)
    {
        const CPTScatterPlotPtr plot = shown.addPlot(Qt::red, series);
        plot->setInterpolation(looks.interpolation);
        plot->setPointSize(looks.pointSize);
        plot->setGapThreshold(looks.gap);
        if (looks.isFilled)
            plot->setAreaFill({.color = CPTColor(0, 0, 255, 90)});
        if (looks.isDashed) {
            CPTLineStyle style = plot->dataLineStyle();
            style.dashPattern = {6, 4};
            plot->setDataLineStyle(style);
        }
        const double length = twin.x().back() - twin.x().front();
        shown.graph.defaultPlotSpace()->setXRange({twin.x().front() + from * length, share * length});
        shown.graph.defaultPlotSpace()->setYRange({-40, 80});
        return shown;
    }
    QImage imageOf(const CPTPointSeriesPtr& series, const Looks& looks)
    {
        RenderedGraph shown;
        return imageOfGraph(graphOf(shown, series, looks).graph, kSize, 1, DrawingReport::Silent);
    }
    QByteArray pageOf(const CPTPointSeriesPtr& series, const Looks& looks)
    {
        RenderedGraph shown;
        return svgOfGraph(graphOf(shown, series, looks).graph, kSize, DrawingReport::Silent);
    }
    std::vector<Looks> everyLooks() const
    {
        const double pixel = share * (twin.x().back() - twin.x().front()) / kSize.width();
        using Between = CPTScatterPlotInterpolation;
        return {{},
                {.interpolation = Between::HoldLast},
                {.interpolation = Between::PointsOnly},
                {.pointSize = 5, .gap = 3 * pixel},
                {.gap = 2 * pixel, .isFilled = true},
                {.interpolation = Between::HoldLast, .gap = 5 * pixel, .isDashed = true}};
    }
    void expectSamePictures()
    {
        for (const Looks& looks : everyLooks()) {
            EXPECT_EQ(imageOf(paged, looks), imageOf(inMemory, looks));
            EXPECT_EQ(pageOf(paged, looks), pageOf(inMemory, looks));
        }
    }
    /// The largest difference of a channel, on average over all pixels.
    static double difference(const QImage& one, const QImage& other)
    {
        double sum = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x) {
                const QRgb a = one.pixel(x, y), b = other.pixel(x, y);
                sum += std::max(
                    {std::abs(qRed(a) - qRed(b)), std::abs(qAlpha(a) - qAlpha(b)), std::abs(qBlue(a) - qBlue(b))});
            }
        return sum / (one.width() * one.height());
    }

    TwinSeries twin;
    CPTPointSeriesPtr inMemory, paged;
    double share = 1;
    double from = 0;
    std::mt19937 random{11};
};

TEST_F(PagedPixelsTest, AreTheSameAtEveryZoomAndLook)
{
    for (unsigned seed = 1; seed <= 3; ++seed) {
        take(oddTwin({.count = 50'000,
                      .dropped = seed == 1 ? 0.0 : 0.3,
                      .odd = seed == 3 ? 0.01 : 0.0,
                      .gap = seed == 2 ? 0.001 : 0.0,
                      .isRegular = seed == 1,
                      .seed = seed}));
        for (const double each : {0.3, 0.1, 0.01, 1e-3, 1e-4}) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << each << " of all");
            share = each;
            from = static_cast<double>(random() % 100) / 100 * (1 - share);
            expectSamePictures();
        }
    }
}

TEST_F(PagedPixelsTest, OfManyRunsCannotBeToldApart)
{
    take(oddTwin({.count = 3'000'000, .dropped = 0.1, .gap = 1e-5}));
    share = 1.1;
    from = -0.05;
    for (const Looks& looks : everyLooks())
        EXPECT_LT(difference(imageOf(paged, looks), imageOf(inMemory, looks)), 0.6);
}

TEST_F(PagedPixelsTest, OfManyRunsShowASpikeOfOneElement)
{
    TwinSeries flat;
    for (int second = 0; second < 3'000'000; ++second)
        flat.add(second, second == 1'500'017 ? 30 : 0);
    flat.cutRuns(512, 1);
    take(flat);
    const QImage picture = imageOf(paged, {});
    const QRgb spike = picture.pixel(kSize.width() / 2, 25);
    EXPECT_GT(qRed(spike), 60);
    EXPECT_EQ(imageOf(inMemory, {}).pixel(kSize.width() / 2, 25), spike);
}

}  // namespace
