#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <cmath>

namespace {

QImage plain(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green);
    return image;
}

struct ScalingRow {
    const char* name;
    QSize from;
    QSizeF into;
    QSize to;
};

class ImageScaling : public testing::TestWithParam<ScalingRow> {};

TEST_P(ImageScaling, FitsInsideWithTheAspectRatioKept)
{
    const ScalingRow& row = GetParam();
    const QImage scaled = imageByScalingProportionallyToSize(plain(row.from.width(), row.from.height()), row.into);
    EXPECT_EQ(scaled.size(), row.to);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ImageScaling,
                         testing::Values(ScalingRow{"RoundsUp", {900, 300}, {320, 320}, {320, 107}},
                                         ScalingRow{"Enlarges", {100, 50}, {320, 320}, {320, 160}},
                                         ScalingRow{"Tall", {300, 900}, {320, 320}, {107, 320}},
                                         ScalingRow{"Same", {320, 320}, {320, 320}, {320, 320}},
                                         ScalingRow{"NeverBelowOnePixel", {10000, 1}, {320, 320}, {320, 1}},
                                         ScalingRow{"FractionOfAPixel", {100, 100}, {10.6, 20}, {11, 11}}),
                         [](const auto& row) { return row.param.name; });

TEST(ImageByScaling, KeepsTheColour)
{
    const QImage scaled = imageByScalingProportionallyToSize(plain(900, 300), {320, 320});
    EXPECT_EQ(scaled.pixelColor(160, 50), QColor(Qt::green));
}

TEST(ImageByScaling, NothingScalesToNothing)
{
    EXPECT_TRUE(imageByScalingProportionallyToSize({}, {320, 320}).isNull());
    EXPECT_TRUE(imageByScalingProportionallyToSize(plain(10, 10), {0, 320}).isNull());
    EXPECT_TRUE(imageByScalingProportionallyToSize(plain(10, 10), {-1, 320}).isNull());
    EXPECT_TRUE(imageByScalingProportionallyToSize(plain(10, 10), {std::nan(""), 320}).isNull());
}

class ViewImageTest : public testing::Test {
protected:
    ViewImageTest()
    {
        colour(root, Qt::blue);
        root.resize(40, 20);
        auto* child = new QWidget(&root);
        colour(*child, Qt::yellow);
        child->setGeometry(20, 0, 20, 20);
    }
    static void colour(QWidget& widget, Qt::GlobalColor color)
    {
        QPalette palette;
        palette.setColor(QPalette::Window, color);
        widget.setPalette(palette);
        widget.setAutoFillBackground(true);
    }
    QWidget root;
};

TEST_F(ViewImageTest, ShowsTheViewWithItsSubviews)
{
    const QImage image = imageRepresentation(&root);
    EXPECT_EQ(image.size(), QSize(40, 20));
    EXPECT_EQ(image.pixelColor(5, 10), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(30, 10), QColor(Qt::yellow));
    EXPECT_FALSE(root.isVisible());
}

TEST_F(ViewImageTest, ScalesWithoutStretchingTheLayout)
{
    const QImage image = imageRepresentation(&root, 1.5);
    EXPECT_EQ(image.size(), QSize(60, 30));
    EXPECT_EQ(image.devicePixelRatio(), 1.5);
    EXPECT_EQ(image.pixelColor(45, 15), QColor(Qt::yellow));
    EXPECT_EQ(root.size(), QSize(40, 20));
}

TEST_F(ViewImageTest, NothingToShowIsANullImage)
{
    EXPECT_TRUE(imageRepresentation(nullptr).isNull());
    EXPECT_TRUE(imageRepresentation(&root, 0).isNull());
    root.resize(0, 20);
    EXPECT_TRUE(imageRepresentation(&root).isNull());
}

}  // namespace
