#include "hostapp/document/PropertyPalette.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using plotix::kPaletteSize;
using plotix::paletteColor;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

TEST(PropertyPaletteTest, EveryColourStandsOutFromTheDarkGreyGround)
{
    const double ground = luminance(QColor::fromRgbF(0.3F, 0.3F, 0.3F));
    for (std::size_t i = 0; i < kPaletteSize; ++i)
        EXPECT_GE((luminance(paletteColor(i)) + 0.05) / (ground + 0.05), 3.0) << i;
}

TEST(PropertyPaletteTest, ColoursDifferAndStartOver)
{
    std::set<QRgb> colours;
    for (std::size_t i = 0; i < kPaletteSize; ++i)
        colours.insert(paletteColor(i).rgba());
    EXPECT_EQ(colours.size(), kPaletteSize);
    EXPECT_EQ(paletteColor(kPaletteSize), paletteColor(0));
    EXPECT_EQ(paletteColor(0).alpha(), 255);
}

}  // namespace
