#include "plotkit/raster/PolylineRasteriser.h"
#include "tests/plotkit/raster/SampledStroke.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

// Two references hold the pictures: the definition of a stroke with round joins and caps, every sample of a fine grid
// being inside when some segment is no farther away than half the pen; and, for lines that are not crowded, the
// painter's own stroke. (On crowded lines the painter adds up the partial coverages of neighbouring joints, which makes
// them fatter than they are.)

namespace {

using namespace sampled_stroke;
using Points = std::vector<QPointF>;

Points randomWalk(int count, double step, unsigned seed)
{
    std::mt19937 random(seed);
    std::normal_distribution<double> change(0, step);
    Points points;
    double y = kHeight / 2.0;
    for (int index = 0; index < count; ++index) {
        y = std::clamp(y + change(random), -20.0, kHeight + 20.0);
        points.emplace_back(kWidth * (index + 0.5) / count, y);
    }
    return points;
}

class PolylineRasteriserTest : public testing::Test {
protected:
    plotkit::PixelBuffer bufferOf(QImage& image)
    {
        return {reinterpret_cast<quint32*>(image.bits()), image.width(), image.height(), image.bytesPerLine() / 4};
    }

    void strokeInto(QImage& image, const Points& points, double width, const QColor& color, const QRect& clip)
    {
        const std::vector<std::size_t> ends{points.size()};
        rasteriser.stroke(bufferOf(image), {points, ends}, width, color, clip);
    }

    QImage stroked(const Points& points, double width = 3, const QColor& color = Qt::white)
    {
        QImage image = emptyImage();
        strokeInto(image, points, width, color, image.rect());
        return image;
    }

    QImage sampled(const Points& points, double width, const QColor& color)
    {
        SampledStroke stroke(width);
        for (std::size_t index = 1; index < points.size(); ++index)
            stroke.addSegment(points[index - 1], points[index]);
        return stroke.image(color);
    }

    QImage painted(const Points& points, double width, const QColor& color)
    {
        QImage image = emptyImage();
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
        return image;
    }

    static void expectAlike(const QImage& picture, const QImage& reference)
    {
        const Difference difference = differenceOf(picture, reference);
        EXPECT_GT(difference.touched, 0);
        EXPECT_LE(difference.mean, 4.0);
        EXPECT_LE(difference.farOff, 0.005);
    }

    void expectRight(const Points& points, double width = 3, const QColor& color = Qt::white)
    {
        expectAlike(stroked(points, width, color), sampled(points, width, color));
    }

    void expectLikePainter(const Points& points, double width = 3, const QColor& color = Qt::white)
    {
        expectAlike(stroked(points, width, color), painted(points, width, color));
    }

    plotkit::PolylineRasteriser rasteriser;
};

/// Whether the painter's own stroke can serve as a reference too.
enum class Painter { Agrees, Differs };

struct Shape {
    std::string name;
    std::function<Points()> points;
    double width = 3;
    Painter painter = Painter::Agrees;
};

class ShapeTest : public PolylineRasteriserTest, public testing::WithParamInterface<Shape> {};

class PainterShapeTest : public ShapeTest {};

TEST_P(ShapeTest, CoversWhatThePenTouches)
{
    expectRight(GetParam().points(), GetParam().width);
}

TEST_P(ShapeTest, CoversWhatATranslucentPenTouches)
{
    expectRight(GetParam().points(), GetParam().width, QColor(255, 120, 30, 128));
}

TEST_P(PainterShapeTest, LooksAsThePainterDrawsIt)
{
    expectLikePainter(GetParam().points(), GetParam().width);
}

TEST_P(ShapeTest, LooksTheSameRunBackward)
{
    Points backward = GetParam().points();
    const QImage forward = stroked(backward, GetParam().width);
    std::reverse(backward.begin(), backward.end());
    EXPECT_LE(differenceOf(forward, stroked(backward, GetParam().width)).mean, 0.1);  // rounding at half columns
}

Points spikes()
{
    std::mt19937 random(5);
    Points points;
    for (int index = 0; index < 4000; ++index)
        points.emplace_back(index * 0.1, random() % 97 == 0 ? 20.0 + random() % 100 : 200.0);
    return points;
}

Points steps()
{
    Points points;
    for (int index = 0; index < 40; ++index) {
        const double y = 30.0 + (index * 37) % 180;
        points.emplace_back(index * 10.13, y);
        points.emplace_back((index + 1) * 10.13, y);
    }
    return points;
}

Points slopes(double slope)
{
    Points points;
    double x = 5.3;
    for (int index = 0; x < kWidth - 5; ++index) {
        points.emplace_back(x, index % 2 == 0 ? 20.4 : 220.7);
        x += 200.3 / slope;
    }
    return points;
}

Points noise(int perPixel)
{
    std::mt19937 random(11);
    std::normal_distribution<double> value(kHeight / 2.0, 25);
    Points points;
    for (int index = 0; index < kWidth * perPixel; ++index)
        points.emplace_back((index + 0.5) / perPixel, value(random));
    return points;
}

std::vector<Shape> allShapes()
{
    return {Shape{"SparseWalk", [] { return randomWalk(20, 40, 1); }},
            Shape{"Walk", [] { return randomWalk(400, 4, 2); }},
            Shape{"RoughWalk", [] { return randomWalk(400, 20, 3); }},
            Shape{"DenseWalk", [] { return randomWalk(8000, 2, 4); }, 3, Painter::Differs},
            Shape{"SmoothDenseWalk", [] { return randomWalk(8000, 0.2, 4); }, 3, Painter::Differs},
            Shape{"Spikes", spikes, 3, Painter::Differs},
            Shape{"Steps", steps},
            Shape{"ThinSteps", steps, 1},
            Shape{"Noise", [] { return noise(1); }},
            Shape{"DenseNoise", [] { return noise(10); }, 3, Painter::Differs},
            Shape{"Flat",
                  [] {
                      return Points{{10, 100.3}, {200, 100.3}, {390, 100.3}};
                  }},
            Shape{"Gentle", [] { return slopes(0.7); }},
            Shape{"Diagonal", [] { return slopes(1); }},
            Shape{"Steep", [] { return slopes(5); }},
            Shape{"VerySteep", [] { return slopes(20); }},
            Shape{"NearlyVertical", [] { return slopes(60); }},
            Shape{"Hairline", [] { return randomWalk(100, 10, 6); }, 1, Painter::Differs},
            Shape{"PenTwo", [] { return randomWalk(100, 10, 6); }, 2},
            Shape{"PenFourAndAHalf", [] { return randomWalk(100, 10, 6); }, 4.5},
            Shape{"PenSix", [] { return randomWalk(100, 10, 6); }, 6},
            Shape{"WidePen", [] { return randomWalk(10, 60, 7); }, 41.3},
            Shape{"VeryWidePen", [] { return randomWalk(5, 60, 8); }, 150},
            Shape{"Dot",
                  [] {
                      return Points{{100.3, 90.7}, {100.3, 90.7}, {100.31, 90.7}};
                  },
                  9, Painter::Differs}};
}

/// The painter draws crowded lines too fat, hairlines by another rule, and small dots as rough polygons.
std::vector<Shape> shapesThePainterAgreesOn()
{
    std::vector<Shape> shapes = allShapes();
    std::erase_if(shapes, [](const Shape& shape) { return shape.painter == Painter::Differs; });
    return shapes;
}

INSTANTIATE_TEST_SUITE_P(Shapes, ShapeTest, testing::ValuesIn(allShapes()),
                         [](const testing::TestParamInfo<Shape>& shape) { return shape.param.name; });
INSTANTIATE_TEST_SUITE_P(Shapes, PainterShapeTest, testing::ValuesIn(shapesThePainterAgreesOn()),
                         [](const testing::TestParamInfo<Shape>& shape) { return shape.param.name; });

TEST_F(PolylineRasteriserTest, ALineThatTurnsBackCoversWhatThePenTouches)
{
    Points loops;
    for (int index = 0; index < 300; ++index)
        loops.emplace_back(200 + 150 * std::sin(index * 0.21), 120 + 100 * std::sin(index * 0.13));
    expectRight(loops);
    expectRight(loops, 1.5, QColor(255, 0, 0, 100));
}

TEST_F(PolylineRasteriserTest, TranslucentInkIsBlendedOncePerPixel)
{
    const QImage image = stroked(randomWalk(4000, 6, 9), 3, QColor(255, 255, 255, 128));
    int most = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            most = std::max(most, qAlpha(image.pixel(x, y)));
    EXPECT_EQ(most, 128);
}

TEST_F(PolylineRasteriserTest, TranslucentInkOfACrossingLineIsBlendedOncePerPixel)
{
    const QImage image = stroked({{50, 50}, {300, 200}, {300, 50}, {50, 200}}, 9, QColor(255, 255, 255, 128));
    EXPECT_EQ(qAlpha(image.pixel(175, 125)), 128);
    EXPECT_EQ(qAlpha(image.pixel(299, 125)), 128);
}

TEST_F(PolylineRasteriserTest, InkIsLaidOverWhatIsThere)
{
    QImage image = emptyImage();
    image.fill(Qt::blue);
    strokeInto(image, {{-10, 100}, {500, 100}}, 20, QColor(255, 0, 0, 128), image.rect());
    EXPECT_EQ(image.pixelColor(200, 100), QColor(128, 0, 127));
    EXPECT_EQ(image.pixelColor(200, 50), QColor(Qt::blue));
}

TEST_F(PolylineRasteriserTest, NothingIsDrawnOutsideTheClip)
{
    const QRect clip(37, 41, 151, 83);
    for (const Points& points : {randomWalk(3000, 20, 10), Points{{0, 0}, {399, 239}, {399, 0}, {0, 239}}}) {
        QImage image = emptyImage();
        strokeInto(image, points, 7, Qt::white, clip);
        const QImage whole = stroked(points, 7);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                ASSERT_EQ(image.pixel(x, y), clip.contains(x, y) ? whole.pixel(x, y) : 0U) << x << ", " << y;
    }
}

TEST_F(PolylineRasteriserTest, TilesDrawnApartMeetWithoutASeam)
{
    const Points points = randomWalk(2000, 15, 12);
    QImage tiled = emptyImage();
    for (const QRect& tile :
         {QRect(0, 0, 133, 100), QRect(133, 0, 267, 100), QRect(0, 100, 71, 140), QRect(71, 100, 329, 140)})
        strokeInto(tiled, points, 3, QColor(200, 100, 50, 170), tile);
    EXPECT_LE(differenceOf(tiled, stroked(points, 3, QColor(200, 100, 50, 170))).mean, 0.01);
}

TEST_F(PolylineRasteriserTest, DrawnTwiceIsTheSamePicture)
{
    const Points points = randomWalk(3000, 9, 13);
    const QImage first = stroked(points);
    stroked({{0, 0}, {390, 200}, {0, 200}}, 31);
    EXPECT_EQ(stroked(points), first);
}

TEST_F(PolylineRasteriserTest, APartOfOnePointIsADotAsWideAsThePen)
{
    const QImage image = stroked({{100.5, 80.5}}, 9);
    EXPECT_EQ(qAlpha(image.pixel(100, 80)), 255);
    EXPECT_EQ(qAlpha(image.pixel(103, 80)), 255);
    EXPECT_EQ(qAlpha(image.pixel(106, 80)), 0);
    EXPECT_EQ(qAlpha(image.pixel(104, 84)), 0);
}

TEST_F(PolylineRasteriserTest, PartsAreNotJoined)
{
    QImage image = emptyImage();
    const Points points{{10, 50}, {100, 50}, {200, 50}, {300, 50}, {350.5, 100.5}};
    const std::vector<std::size_t> ends{2, 4, 5};
    rasteriser.stroke(bufferOf(image), {points, ends}, 3, Qt::white, image.rect());
    EXPECT_EQ(qAlpha(image.pixel(50, 50)), 255);
    EXPECT_EQ(qAlpha(image.pixel(150, 50)), 0);
    EXPECT_EQ(qAlpha(image.pixel(250, 50)), 255);
    EXPECT_EQ(qAlpha(image.pixel(350, 100)), 255);
}

TEST_F(PolylineRasteriserTest, PointsFarOutsideKeepTheSlopeInside)
{
    const QImage image = stroked({{-1e7, 120 - 1e6}, {200, 120}, {1e9, 1e8 + 100}});
    const QImage expected = stroked({{-100, 90}, {200, 120}, {500, 150}});
    EXPECT_LE(differenceOf(image, expected).mean, 0.5);
}

TEST_F(PolylineRasteriserTest, PointsThatAreNotFiniteArePassedOver)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(stroked({{10, 20}, {nan, 30}, {200, 50}, {210, -infinity}, {300, 90}}),
              stroked({{10, 20}, {200, 50}, {300, 90}}));
    EXPECT_EQ(stroked({{nan, nan}}), emptyImage());
}

TEST_F(PolylineRasteriserTest, NothingToDrawWithDrawsNothing)
{
    const Points points{{10, 20}, {200, 50}};
    EXPECT_EQ(stroked(points, 0), emptyImage());
    EXPECT_EQ(stroked(points, -3), emptyImage());
    EXPECT_EQ(stroked(points, std::numeric_limits<double>::infinity()), emptyImage());
    EXPECT_EQ(stroked(points, 3, QColor()), emptyImage());
    EXPECT_EQ(stroked(points, 3, QColor(0, 0, 0, 0)), emptyImage());
    EXPECT_EQ(stroked({}), emptyImage());
    QImage image = emptyImage();
    strokeInto(image, points, 3, Qt::white, QRect(500, 500, 10, 10));
    strokeInto(image, points, 3, Qt::white, QRect());
    EXPECT_EQ(image, emptyImage());
}

TEST_F(PolylineRasteriserTest, AnEnormousPenCoversEverything)
{
    QImage full = emptyImage();
    full.fill(Qt::white);
    EXPECT_EQ(stroked({{100, 100}, {200, 150}}, 1e12), full);
    EXPECT_EQ(stroked({{100, 100}, {200, 150}, {50, 50}}, 1e12), full);
}

TEST_F(PolylineRasteriserTest, APenWiderThanThePictureIsLongStaysWithinMemory)
{
    QImage image(3, 5, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    strokeInto(image, {{1, 2}, {2, 3}}, 3000, Qt::white, image.rect());
    EXPECT_EQ(qAlpha(image.pixel(1, 1)), 255);
}

}  // namespace
