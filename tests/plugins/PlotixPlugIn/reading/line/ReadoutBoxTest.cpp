#include "plugins/PlotixPlugIn/reading/line/ReadoutBox.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <gtest/gtest.h>

namespace {

using namespace plotix;

const QRectF kBounds(0, 0, 600, 300);
const QSizeF kSize(200, 100);

Readout threeRows()
{
    Readout readout{.title = "Fri 8 Feb, 18:00", .state = "held", .rows = {}};
    readout.rows.push_back({.color = Qt::red, .name = "Air", .value = "0.0 °C", .note = "3 h before"});
    readout.rows.push_back({.color = Qt::blue, .name = "Dew\tpoint", .value = "−1 °C", .note = {}});
    readout.rows.push_back({.color = Qt::green, .name = "Wind", .value = "not recorded", .note = {}, .isFaint = true});
    return readout;
}

TEST(ReadoutBoxTest, StandsAtTheRightOfTheLineWhereThereIsRoom)
{
    EXPECT_GT(placeBeside(kSize, 100, 50, kBounds, {}).left(), 100);
    EXPECT_LT(placeBeside(kSize, 500, 50, kBounds, {}).right(), 500);
}

TEST(ReadoutBoxTest, IsNeverUnderThePointerAndNeverOutside)
{
    for (double lineX = 0; lineX <= 600; lineX += 7)
        for (double pointerX = 0; pointerX <= 600; pointerX += 23)
            for (double y = 0; y <= 300; y += 11) {
                const QRectF box = placeBeside(kSize, lineX, 6, kBounds, QPointF(pointerX, y));
                ASSERT_FALSE(box.contains(pointerX, y)) << lineX << " " << pointerX << " " << y;
                ASSERT_GE(box.left(), 0);
                ASSERT_LE(box.right(), 600);
            }
}

TEST(ReadoutBoxTest, RowsThatHaveNoRoomAreCounted)
{
    const Readout shorter = shortened(threeRows(), 2, "… and %1 more");
    ASSERT_EQ(shorter.rows.size(), 2U);
    EXPECT_EQ(shorter.rows.back().name, "… and 2 more");
    EXPECT_EQ(shortened(threeRows(), 3, "%1").rows.size(), 3U);
    EXPECT_GE(rowsWithin(10), 1U);
}

Readout compared()
{
    Readout readout = threeRows();
    readout.rows.resize(1);
    readout.rows[0].differences = "+2 K against a day earlier";
    readout.rows.push_back({.color = Qt::red, .name = "Air, a day earlier", .value = "−2 °C", .note = "far"});
    readout.rows[1].besideName = "a day earlier";
    readout.rows[1].lessBy = "+2 K";
    return readout;
}

TEST(ReadoutBoxTest, ALineComparedOnceHasTheEarlierValueInItsOwnRow)
{
    const Readout box = folded(compared());
    ASSERT_EQ(box.rows.size(), 1U);
    EXPECT_EQ(box.rows[0].differences, "a day earlier: −2 °C (+2 K), far");
    EXPECT_EQ(box.rows[0].note, "3 h before");
    EXPECT_EQ(readoutAsTable(compared()).count('\n'), 3) << "as text each has a row";
}

TEST(ReadoutBoxTest, WhatHasNoValueAnywhereTakesNoRoom)
{
    Readout twice = compared();
    twice.rows.push_back(twice.rows[1]);
    twice.rows[2].hasValues = false;
    EXPECT_EQ(folded(twice).rows.size(), 1U);
    EXPECT_EQ(readoutAsTable(twice).count('\n'), 4);
}

TEST(ReadoutBoxTest, LinesComparedSeveralTimesKeepTheirRows)
{
    Readout twice = compared();
    twice.rows.push_back(twice.rows[1]);
    EXPECT_EQ(folded(twice).rows.size(), 3U);
    EXPECT_EQ(folded(threeRows()).rows.size(), 3U);
}

TEST(ReadoutBoxTest, AsTextItIsATableOrSentences)
{
    EXPECT_EQ(readoutAsTable(threeRows()),
              "Fri 8 Feb, 18:00\nAir\t0.0 °C\t3 h before\nDew point\t−1 °C\nWind\tnot recorded\n");
    EXPECT_TRUE(readoutAsSentences(threeRows()).startsWith("Fri 8 Feb, 18:00. Air: 0.0 °C, 3 h before. "));
}

TEST(ReadoutBoxTest, ThatAValueIsTheGreatestComesBeforeWhatItDiffersBy)
{
    Readout greatest = compared();
    greatest.rows[0].extreme = "maximum";
    EXPECT_TRUE(readoutAsSentences(greatest).contains("0.0 °C, maximum, +2 K against a day earlier, 3 h before."));
}

TEST(ReadoutBoxTest, IsLightOnAGraphWithDarkWriting)
{
    CPTXYGraph graph;
    graph.applyTheme(CPTTheme::themeNamed(kCPTDarkGradientTheme));
    EXPECT_LT(readoutLookFor(graph).ground.lightnessF(), 0.3F);
    for (const CPTXYAxisPtr& axis : graph.axisSet()->axes()) {
        CPTTextStyle style = axis->labelTextStyle();
        style.color = Qt::black;
        axis->setLabelTextStyle(style);
    }
    EXPECT_GT(readoutLookFor(graph).ground.lightnessF(), 0.9F);
}

TEST(ReadoutBoxTest, PaintsWithinItsBox)
{
    QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QRectF box(QPointF(20, 20), sizeOfReadout(threeRows()));
    paintReadout(painter, threeRows(), box, readoutLookFor(CPTXYGraph()));
    painter.end();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ASSERT_TRUE(qAlpha(image.pixel(x, y)) == 0 || box.adjusted(-1, -1, 1, 1).contains(x, y)) << x << " " << y;
}

}  // namespace
