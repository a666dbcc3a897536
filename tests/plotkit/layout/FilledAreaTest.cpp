#include "plotkit/layout/FilledArea.h"

#include "tests/plotkit/layout/LinePictureTest.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

// An area with its lines is right when the picture is the one that a vertical stroke at every instant makes beneath the
// lines through every point: reckoned here from every point, in slices much narrower than columns.

namespace {

using namespace plotkit;

/// A line through points, and what it reaches in a slice.
struct PointLine {
    std::vector<QPointF> places;
    bool holds = false;

    double at(double x) const
    {
        const auto after = std::upper_bound(places.begin(), places.end(), x,
                                            [](double value, const QPointF& place) { return value < place.x(); });
        if (after == places.begin() || after == places.end())
            return std::nan("");
        const QPointF& from = *(after - 1);
        return holds ? from.y() : from.y() + (x - from.x()) / (after->x() - from.x()) * (after->y() - from.y());
    }
    /// Lowest and highest over [left, right]; NaN where the line is not.
    std::pair<double, double> reach(double left, double right) const
    {
        double low = at((left + right) / 2);
        double high = low;
        const auto first = std::lower_bound(places.begin(), places.end(), left,
                                            [](const QPointF& place, double value) { return place.x() < value; });
        for (auto place = first; place != places.end() && place->x() <= right; ++place) {
            low = std::fmin(low, place->y());
            high = std::fmax(high, place->y());
        }
        return {low, high};
    }
};

class FilledAreaTest : public LinePictureTest {
protected:
    FilledAreaTest()
    {
        view.yRange = {-60, 120};
        view.margin = 4;
    }

    static SeriesBuilder noise(int count, double step, float spread, unsigned seed)
    {
        std::mt19937 random(seed);
        std::normal_distribution<float> change(0, spread);
        SeriesBuilder built;
        for (int index = 0; index < count; ++index)
            built.add(index * step, 30 * std::sin(static_cast<float>(index * step) * 4e-4F + static_cast<float>(seed)) +
                                        change(random));
        return built;
    }
    PointLine lineOf(const SeriesBuilder& built) const
    {
        PointLine line;
        line.holds = view.holdsValues;
        for (std::size_t element = 0; element < built.x().size(); ++element)
            line.places.emplace_back((built.x()[element] - view.xRange.location) / view.xRange.length * kWidth,
                                     kHeight - (static_cast<double>(built.y()[element]) - view.yRange.location) /
                                                   view.yRange.length * kHeight);
        return line;
    }
    PointLine level(double value) const
    {
        const double y = kHeight - (value - view.yRange.location) / view.yRange.length * kHeight;
        return {{{-1e9, y}, {1e9, y}}};
    }

    /// Coverage between two lines, slice by slice.
    static QImage everyInstantFilled(const PointLine& one, const PointLine& other)
    {
        constexpr int kSlices = 60;  // a pixel
        QImage image = emptyImage();
        for (int x = 0; x < kWidth; ++x) {
            std::vector<double> covered(kHeight, 0);
            for (int slice = 0; slice < kSlices; ++slice) {
                const double left = x + static_cast<double>(slice) / kSlices;
                const auto [oneLow, oneHigh] = one.reach(left, left + 1.0 / kSlices);
                const auto [otherLow, otherHigh] = other.reach(left, left + 1.0 / kSlices);
                const double top = std::min(oneLow, otherLow);
                const double bottom = std::max(oneHigh, otherHigh);
                if (std::isnan(oneLow) || std::isnan(otherLow))
                    continue;
                for (int y = std::max(0, static_cast<int>(top)); y < kHeight && y < bottom; ++y)
                    covered[static_cast<std::size_t>(y)] +=
                        std::max(0.0, std::min(bottom, y + 1.0) - std::max(top, static_cast<double>(y))) / kSlices;
            }
            for (int y = 0; y < kHeight; ++y) {
                const int alpha = static_cast<int>(std::lround(covered[static_cast<std::size_t>(y)] * 255));
                image.setPixel(x, y, qRgba(alpha, alpha, alpha, alpha));
            }
        }
        return image;
    }

    void envelopeOf(PlotEnvelope& envelopeOfSeries, const SeriesBuilder& built, std::size_t slot)
    {
        ASSERT_TRUE(enveloping.envelopeInto(envelopeOfSeries, *built.series(), view, slot, PlotEnveloping::kAnyPoints));
    }
    QImage areaDrawn()
    {
        QImage image = emptyImage();
        rasteriser.begin(bufferOf(image), image.rect());
        rasteriser.add(AreaColumns{filled.left, filled.top, filled.bottom}, Qt::white);
        rasteriser.finish();
        return image;
    }
    QImage withLine(QImage image, const PointLine& line)
    {
        std::vector<QPointF> points;
        for (const QPointF& place : line.places) {
            if (line.holds && !points.empty())
                points.emplace_back(place.x(), points.back().y());
            points.push_back(place);
        }
        const std::vector<std::size_t> ends{points.size()};
        rasteriser.stroke(bufferOf(image), PolylineSet{points, ends}, 2, Qt::white, image.rect());
        return image;
    }
    void expectFilledToZero(const SeriesBuilder& built)
    {
        envelopeOf(envelope, built, 0);
        fillToLevel(filled, envelope, level(0).places.front().y(), view.area);
        const PointLine line = lineOf(built);
        expectSame(withLine(areaDrawn(), line), withLine(everyInstantFilled(line, level(0)), line), 1000);
    }
    void expectFilledBetween(const SeriesBuilder& one, const SeriesBuilder& two)
    {
        envelopeOf(envelope, one, 0);
        envelopeOf(other, two, 1);
        fillBetween(filled, envelope, other, view.area);
        const PointLine first = lineOf(one);
        const PointLine second = lineOf(two);
        expectSame(withLine(withLine(areaDrawn(), first), second),
                   withLine(withLine(everyInstantFilled(first, second), first), second), 1000);
    }

    PlotEnvelope other;
    FilledArea filled;
};

TEST_F(FilledAreaTest, ReachesFromZeroToEveryPoint)
{
    for (const double step : {1.0, 40.0, 900.0})
        for (const bool holds : {false, true}) {
            SCOPED_TRACE(std::to_string(step) + (holds ? " held" : ""));
            view.xRange = {20e3, 30e3};
            view.holdsValues = holds;
            expectFilledToZero(noise(static_cast<int>(60000 / step), step, 3, 1));
        }
}

TEST_F(FilledAreaTest, LiesBetweenTwoLinesOfDifferentTimes)
{
    view.xRange = {20e3, 30e3};
    expectFilledBetween(noise(60000, 1, 2, 1), noise(60000, 1, 2, 3));
    expectFilledBetween(noise(60000, 1, 2, 1), noise(90, 700, 2, 3));
    expectFilledBetween(noise(70, 900, 2, 1), noise(90, 700, 2, 3));
}

TEST_F(FilledAreaTest, EndsWhereEitherLineEnds)
{
    view.xRange = {0, 60e3};
    expectFilledBetween(noise(300, 100, 2, 1), noise(40000, 1, 2, 3));
    EXPECT_EQ(qAlpha(areaDrawn().pixel(kWidth * 45 / 60, kHeight / 2)), 0);
}

TEST_F(FilledAreaTest, AGapIsNotFilled)
{
    SeriesBuilder built;
    for (int index = 0; index < 60000; ++index)
        if (index < 20000 || index > 40000)
            built.add(index, 40);
    view.xRange = {0, 60e3};
    view.gap = 500;
    envelopeOf(envelope, built, 0);
    fillToLevel(filled, envelope, level(0).places.front().y(), view.area);
    const QImage image = areaDrawn();
    const int row = kHeight / 2 - 20;
    EXPECT_EQ(qAlpha(image.pixel(kWidth / 6, row)), 255);
    EXPECT_EQ(qAlpha(image.pixel(kWidth / 2, row)), 0);
    EXPECT_EQ(qAlpha(image.pixel(kWidth * 5 / 6, row)), 255);
}

TEST_F(FilledAreaTest, StaysInsideThePlotArea)
{
    view.area = QRectF(20.5, 10.25, 200, 100);
    view.yRange = {10, 30};
    SeriesBuilder built;
    built.add(0, 20);
    built.add(100, 20);
    view.xRange = {10, 50};
    envelopeOf(envelope, built, 0);
    fillToLevel(filled, envelope, 1e6, view.area);
    const QImage image = areaDrawn();
    EXPECT_EQ(qAlpha(image.pixel(100, 109)), 255);
    EXPECT_EQ(qAlpha(image.pixel(100, 111)), 0);
    EXPECT_EQ(qAlpha(image.pixel(19, 80)), 0);
    EXPECT_EQ(qAlpha(image.pixel(222, 80)), 0);
}

TEST_F(FilledAreaTest, EnvelopesOfDifferentColumnsFillNothing)
{
    view.xRange = {0, 60e3};
    envelopeOf(envelope, noise(60000, 1, 2, 1), 0);
    view.xRange = {0, 50e3};
    envelopeOf(other, noise(60000, 1, 2, 2), 1);
    fillBetween(filled, envelope, other, view.area);
    EXPECT_EQ(areaDrawn(), emptyImage());
}

}  // namespace
