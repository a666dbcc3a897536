#include "plotkit/raster/PolylineRasteriser.h"

#include <QtGui/QImage>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

// Strokes blended together, stripe by stripe, against the same strokes one after the other.

namespace {

using namespace plotkit;

constexpr int kWidth = 301;
constexpr int kHeight = 150;

struct Line {
    std::vector<QPointF> points;
    double width;
    QColor color;
};

class ManyStrokesTest : public testing::Test {
protected:
    static Line walk(unsigned seed, double width, const QColor& color)
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> change(0, 3);
        Line line{{}, width, color};
        double y = kHeight / 2.0;
        for (int index = 0; index < 2000; ++index)
            line.points.emplace_back(index * 0.16 - 5, y = y * 0.99 + kHeight * 0.005 + change(random));
        return line;
    }

    static Line loop(const QColor& color)
    {
        Line line{{}, 5, color};
        for (int index = 0; index < 100; ++index)
            line.points.emplace_back(150 + 120 * std::sin(index * 0.3), 75 + 60 * std::cos(index * 0.2));
        return line;
    }

    /// A picture whose rows may begin anywhere in memory.
    static QImage filled(std::vector<quint32>& memory, std::size_t offset)
    {
        memory.assign(offset + std::size_t{kWidth} * kHeight, qRgb(20, 40, 60));
        return {reinterpret_cast<uchar*>(memory.data() + offset), kWidth, kHeight, kWidth * 4,
                QImage::Format_ARGB32_Premultiplied};
    }

    static PixelBuffer bufferOf(QImage& image)
    {
        return {reinterpret_cast<quint32*>(image.bits()), kWidth, kHeight, kWidth};
    }

    QImage together(const std::vector<Line>& lines, std::size_t offset = 0)
    {
        std::vector<quint32> memory;
        QImage image = filled(memory, offset);
        rasteriser.begin(bufferOf(image), clip);
        for (const Line& line : lines) {
            const std::vector<std::size_t> ends{line.points.size()};
            rasteriser.add(PolylineSet{line.points, ends}, line.width, line.color);
        }
        rasteriser.finish();
        return image.copy();
    }

    QImage oneByOne(const std::vector<Line>& lines)
    {
        std::vector<quint32> memory;
        QImage image = filled(memory, 0);
        for (const Line& line : lines) {
            const std::vector<std::size_t> ends{line.points.size()};
            rasteriser.stroke(bufferOf(image), PolylineSet{line.points, ends}, line.width, line.color, clip);
        }
        return image.copy();
    }

    QRect clip{7, 5, 280, 131};
    PolylineRasteriser rasteriser;
};

TEST_F(ManyStrokesTest, AddedStrokesLookAsOneAfterTheOther)
{
    const std::vector<Line> lines{walk(1, 3, Qt::red), walk(2, 1.5, QColor(0, 255, 0, 120)), walk(3, 12, Qt::white)};
    EXPECT_EQ(together(lines), oneByOne(lines));
}

TEST_F(ManyStrokesTest, ALineThatTurnsBackKeepsItsPlaceInTheOrder)
{
    const std::vector<Line> lines{walk(1, 3, Qt::red), loop(Qt::blue), walk(2, 3, QColor(0, 255, 0, 120))};
    EXPECT_EQ(together(lines), oneByOne(lines));
}

TEST_F(ManyStrokesTest, WhereRowsBeginInMemoryMakesNoDifference)
{
    const std::vector<Line> lines{walk(4, 3, Qt::red), walk(5, 2, QColor(0, 255, 0, 120))};
    const QImage expected = together(lines);
    for (std::size_t offset = 1; offset < 17; ++offset)
        EXPECT_EQ(together(lines, offset), expected) << offset;
}

TEST_F(ManyStrokesTest, NothingAddedLeavesThePictureAsItWas)
{
    std::vector<quint32> memory;
    const QImage untouched = filled(memory, 0).copy();
    EXPECT_EQ(together({}), untouched);
    EXPECT_EQ(together({walk(1, 0, Qt::red), walk(1, 3, QColor())}), untouched);
    EXPECT_NE(together({walk(1, 3, Qt::red)}), untouched);
}

}  // namespace
