#include "plugins/PlotixPlugIn/logic/ColorText.h"

#include <gtest/gtest.h>

namespace {

TEST(ColorTextTest, AnOpaqueColourNamesItsThreeChannels)
{
    EXPECT_EQ(plotix::colorText(QColor(255, 128, 0)), "rgb(255, 128, 0)");
}

TEST(ColorTextTest, ATransparentColourNamesItsAlphaToo)
{
    EXPECT_EQ(plotix::colorText(QColor(1, 2, 3, 51)), "rgba(1, 2, 3, 0.20)");
    EXPECT_EQ(plotix::colorText(QColor(1, 2, 3, 0)), "rgba(1, 2, 3, 0.00)");
}

TEST(ColorTextTest, AColourGivenInAnotherModelReadsInRedGreenAndBlue)
{
    EXPECT_EQ(plotix::colorText(QColor::fromHsv(0, 255, 255)), "rgb(255, 0, 0)");
}

TEST(ColorTextTest, AnAbsentColourReadsAsAnAbsentObject)
{
    EXPECT_EQ(plotix::colorText(QColor()), "(null)");
}

}  // namespace
