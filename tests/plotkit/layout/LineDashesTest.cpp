#include "plotkit/layout/LineDashes.h"

#include "plotkit/layout/PlotReduction.h"
#include "tests/plotkit/layout/LinePictureTest.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace plotkit;

constexpr double kPen = 3;

class LineDashesTest : public LinePictureTest {
protected:
    LineDashesTest()
    {
        view.yRange = {0, 160};
        view.xRange = {0, 300};
        view.margin = 10;
    }

    static CPTLineStyle styleOf(std::vector<double> lengths)
    {
        return {.width = kPen, .color = Qt::white, .dashPattern = std::move(lengths)};
    }
    static DashPattern pattern(double drawn, double gap) { return *DashPattern::of(styleOf({drawn, gap}), 1); }
    DashOrigin origin() const
    {
        return {view.area.left() - view.margin, -view.xRange.location / view.xRange.length * kWidth};
    }
    QImage pointsDrawn(const DashPattern& dashes)
    {
        QImage image = emptyImage();
        ReducedPlot dashed;
        dashPoints(dashed, reducePlot(*series(), view), dashes, origin());
        rasteriser.stroke(bufferOf(image), PolylineSet{dashed.points, dashed.partEnds}, kPen, Qt::white, image.rect());
        return image;
    }
    QImage columnsDrawn(const std::optional<DashPattern>& dashes)
    {
        QImage image = emptyImage();
        EXPECT_TRUE(enveloping.envelopeInto(envelope, *series(), view, 0, PlotEnveloping::kAnyPoints));
        if (dashes)
            dashColumns(envelope, *dashes, origin());
        rasteriser.stroke(bufferOf(image),
                          LineColumns{envelope.left, envelope.atLeft, envelope.atRight, envelope.low, envelope.high,
                                      envelope.partEnds},
                          kPen, Qt::white, image.rect());
        return image;
    }
    /// Where the row's pixels change between more and less than half covered.
    static std::vector<int> changesIn(const QImage& image, int row)
    {
        std::vector<int> changes;
        for (int x = 1; x < kWidth; ++x)
            if ((qAlpha(image.pixel(x, row)) > 127) != (qAlpha(image.pixel(x - 1, row)) > 127))
                changes.push_back(x);
        return changes;
    }
    /// The last dash may be cut off.
    static double meanDistance(const std::vector<int>& changes, std::size_t first)
    {
        double sum = 0;
        int count = 0;
        for (std::size_t index = first; index + 3 < changes.size(); index += 2, ++count)
            sum += changes[index + 1] - changes[index];
        return sum / count;
    }
};

TEST_F(LineDashesTest, DashesAreSeenAsLongAsTheyAreSaidToBe)
{
    builder.add(20, 80);
    builder.add(280, 80);
    for (const QImage& image : {pointsDrawn(pattern(12, 8)), columnsDrawn(pattern(12, 8))}) {
        const std::vector<int> changes = changesIn(image, 79);
        ASSERT_GT(changes.size(), 20U);
        EXPECT_NEAR(changes.front(), 18.5, 1);  // the first dash begins with the line's own cap
        EXPECT_NEAR(meanDistance(changes, 0), 12, 1);
        EXPECT_NEAR(meanDistance(changes, 1), 8, 1);
        EXPECT_NEAR(changes[20] - changes[0], 10 * 20, 1);
    }
}

TEST_F(LineDashesTest, DashesAsShortAsThePenAreDots)
{
    builder.add(20, 80);
    builder.add(280, 80);
    for (const QImage& image : {pointsDrawn(pattern(3, 6)), columnsDrawn(pattern(3, 6))})
        EXPECT_NEAR(static_cast<double>(changesIn(image, 79).size()), 2 * 260 / 9.0, 3);
}

TEST_F(LineDashesTest, AreMeasuredAlongTheLine)
{
    builder.add(0, 0);
    builder.add(120, 160);  // three to four
    ReducedPlot dashed;
    dashPoints(dashed, reducePlot(*series(), view), pattern(23, 20), origin());
    ASSERT_GT(dashed.partEnds.size(), 3U);
    EXPECT_NEAR(dashed.points[1].x() - dashed.points[0].x(), 20 * 0.6, 1e-9);
    EXPECT_NEAR(dashed.points[2].x() - dashed.points[1].x(), 23 * 0.6, 1e-9);
}

TEST_F(LineDashesTest, CrowdedLinesHaveTheDashesOfTheSameLineByFewPoints)
{
    for (int index = 0; index <= 260000; ++index)
        builder.add(20 + index * 1e-3, static_cast<float>(80 + 30 * std::sin(index * 2.4e-5)));
    const DashPattern dashes = pattern(15, 9);
    const QImage crowded = columnsDrawn(dashes);
    ReducedPlot few, dashed;
    for (std::size_t element = 0; element < builder.x().size(); element += 1000)
        few.points.push_back(placeOf(element));
    few.partEnds = {few.points.size()};
    dashPoints(dashed, few, dashes, origin());
    QImage expected = emptyImage();
    rasteriser.stroke(bufferOf(expected), PolylineSet{dashed.points, dashed.partEnds}, kPen, Qt::white,
                      expected.rect());
    expectSame(crowded, expected, 60);
}

TEST_F(LineDashesTest, ALineThatFillsItsColumnsStaysWhole)
{
    std::mt19937 random(1);
    for (int index = 0; index <= 100000; ++index)
        builder.add(index * 3e-3, static_cast<float>(40 + random() % 80));
    const DashPattern dashes = pattern(12, 8);
    EXPECT_EQ(columnsDrawn(dashes), columnsDrawn(std::nullopt));
}

TEST_F(LineDashesTest, StayOnALevelLineThatIsPanned)
{
    for (int index = -1000; index <= 4000; ++index)
        builder.add(index, 80);
    const DashPattern dashes = pattern(12, 8);
    const QImage before = columnsDrawn(dashes);
    const QImage beforeByPoints = pointsDrawn(dashes);
    view.xRange.location += 7;
    EXPECT_EQ(columnsDrawn(dashes).copy(20, 0, 250, kHeight), before.copy(27, 0, 250, kHeight));
    EXPECT_EQ(pointsDrawn(dashes).copy(20, 0, 250, kHeight), beforeByPoints.copy(27, 0, 250, kHeight));
}

TEST_F(LineDashesTest, EachPartBeginsWithADash)
{
    ReducedPlot plot, dashed;
    plot.points = {{20, 80}, {25, 80}, {100, 80}, {101, 80}};
    plot.partEnds = {2, 4};
    dashPoints(dashed, plot, pattern(12, 8), origin());
    EXPECT_EQ(dashed.points, plot.points);
    EXPECT_EQ(dashed.partEnds, plot.partEnds);
}

TEST_F(LineDashesTest, WhatIsNoPatternIsASolidLine)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const std::vector<double>& lengths : std::initializer_list<std::vector<double>>{
             {}, {5}, {5, 3, 5}, {0, 0}, {5, 0}, {-1, 5}, {5, std::nan("")}, {infinity, 5}})
        EXPECT_FALSE(DashPattern::of(styleOf(lengths), 1));
    EXPECT_TRUE(DashPattern::of(styleOf({5, 3}), 1));
}

TEST_F(LineDashesTest, ColumnsBecomePointsOfTheSamePicture)
{
    for (int index = 0; index <= 90000; ++index)
        builder.add(index * 3e-3, static_cast<float>(80 + 40 * std::sin(index * 1e-3)));
    const QImage columns = columnsDrawn(std::nullopt);
    ReducedPlot plot;
    pointsOfColumns(plot, envelope, 1);
    QImage points = emptyImage();
    rasteriser.stroke(bufferOf(points), PolylineSet{plot.points, plot.partEnds}, kPen, Qt::white, points.rect());
    expectSame(points, columns, 300);
}

}  // namespace
