#include "plotkit/layout/PlotDots.h"

#include "tests/plotkit/layout/LinePictureTest.h"

#include <cmath>
#include <random>
#include <string>

// The cells that hold points are right when dots there make the picture that a dot at every point makes.

namespace {

using namespace plotkit;

class PlotDotsTest : public LinePictureTest {
protected:
    PlotDotsTest() { view.yRange = {-60, 120}; }

    /// A band of noise around slow swings, with a few values far off, dropped elements and values that are no numbers.
    void addNoise(int count, float spread, unsigned seed = 1)
    {
        std::mt19937 random(seed);
        std::normal_distribution<float> noise(0, spread);
        for (int index = 0; index < count; ++index) {
            const float swing = 25 * std::sin(static_cast<float>(index) * 6e-5F);
            const float y = random() % 4000 == 0 ? std::nanf("") : random() % 900 == 0 ? 50 : swing + noise(random);
            builder.add(index, y, random() % 30 != 0);
        }
    }
    std::vector<QPointF> everyPlace() const
    {
        std::vector<QPointF> places;
        for (std::size_t element = 0; element < builder.x().size(); ++element)
            if (builder.isPoint(element))
                places.push_back(placeOf(element));
        return places;
    }
    QImage placesDrawn(const std::vector<QPointF>& places, double diameter)
    {
        QImage image = emptyImage();
        rasteriser.begin(bufferOf(image), image.rect());
        rasteriser.addDots(places, diameter, Qt::white);
        rasteriser.finish();
        return image;
    }
    QImage cellsDrawn(double diameter)
    {
        QImage image = emptyImage();
        const DotCells cells = dots.cells(*series(), view, 0);
        rasteriser.begin(bufferOf(image), image.rect());
        rasteriser.addDots(DotColumns{cells.left, cells.top, cells.columns, cells.bytes, cells.first, cells.stride},
                           diameter, Qt::white);
        rasteriser.finish();
        return image;
    }
    void expectSameDots(double diameter)
    {
        std::vector<QPointF> places;
        ASSERT_FALSE(PlotDots::placesInto(places, *series(), view));
        // Dots of a pixel are nearly all edge, and an edge may stand a sixteenth of a pixel off.
        expectSame(cellsDrawn(diameter), placesDrawn(everyPlace(), diameter), 300, diameter < 2 ? 13 : 4);
    }

    PlotDots dots;
};

TEST_F(PlotDotsTest, CellsLookLikeADotAtEveryPoint)
{
    addNoise(200000, 6);
    for (const double length : {200e3, 61e3, 9e3})
        for (const double diameter : {1.0, 3.0, 5.0, 9.0}) {
            SCOPED_TRACE(std::to_string(length) + ", " + std::to_string(diameter));
            view.xRange = {20e3 + 0.37, length};
            expectSameDots(diameter);
        }
}

TEST_F(PlotDotsTest, BetweenTwoValuesNothingIsMarked)
{
    for (int index = 0; index < 50000; ++index)
        builder.add(index, index % 2 == 0 ? 30 : -30);
    view.xRange = {0, 50000};
    expectSame(cellsDrawn(4), placesDrawn(everyPlace(), 4), 300, 7);
    EXPECT_EQ(qAlpha(cellsDrawn(4).pixel(kWidth / 2, kHeight / 2)), 0);
}

TEST_F(PlotDotsTest, APanMarksTheSameCells)
{
    addNoise(120000, 3);
    for (const double start : {0.0, 400.0, 500.0, 20000.0, 100.0}) {
        view.xRange = {start, 80e3};
        expectSameDots(3);
    }
    view.yRange = {-30, 60};
    expectSameDots(3);
    view.area = QRectF(0, 0, kWidth, kHeight);
}

TEST_F(PlotDotsTest, TheSameMirrored)
{
    addNoise(100000, 5);
    view.xRange = {90e3, -80e3};
    expectSameDots(4);
}

TEST_F(PlotDotsTest, TimesThatTurnBackAreMarkedToo)
{
    addNoise(20000, 5);
    SeriesBuilder turned;
    for (std::size_t element = builder.x().size(); element-- > 0;)
        turned.add(builder.x()[element], builder.y()[element], builder.isPoint(element));
    builder = turned;
    view.xRange = {1000, 18e3};
    expectSame(cellsDrawn(3), placesDrawn(everyPlace(), 3), 300);
}

TEST_F(PlotDotsTest, AFewPointsStandWhereTheyAre)
{
    for (int index = 0; index < 50; ++index)
        builder.add(index * 20, static_cast<float>(index));
    view.xRange = {0, 1000};
    std::vector<QPointF> places;
    ASSERT_TRUE(PlotDots::placesInto(places, *series(), view));
    ASSERT_EQ(places.size(), 50U);
    EXPECT_EQ(places[7], placeOf(7));
}

TEST_F(PlotDotsTest, ViewsThatShowNothingHaveNoCells)
{
    addNoise(5000, 5);
    view.xRange = {0, 0};
    EXPECT_EQ(dots.cells(*series(), view, 0).columns, 0U);
    view.xRange = {0, 5000};
    view.yRange = {0, 0};
    EXPECT_EQ(dots.cells(*series(), view, 0).columns, 0U);
}

}  // namespace
