#include "plugins/PlotixPlugIn/reading/looks/DistinctLines.h"

#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

using namespace plotix;

struct Light {
    double red, green, blue;
};

Light lightOf(const QColor& color)
{
    return {linearLight(color.redF()), linearLight(color.greenF()), linearLight(color.blueF())};
}

double luminance(const QColor& color)
{
    const Light light = lightOf(color);
    return 0.2126 * light.red + 0.7152 * light.green + 0.0722 * light.blue;
}

/// L* of the grey that a black and white print gives.
double greyness(const QColor& color)
{
    return 116 * std::cbrt(luminance(color)) - 16;
}

QColor colorFrom(const Light& light)
{
    const auto channel = [](double value) {
        const double cut = std::clamp(value, 0.0, 1.0);
        return static_cast<float>(cut <= 0.0031308 ? 12.92 * cut : 1.055 * std::pow(cut, 1 / 2.4) - 0.055);
    };
    return QColor::fromRgbF(channel(light.red), channel(light.green), channel(light.blue));
}

/// What eyes without cones for red, or for green, see (Machado, Oliveira and Fernandes, 2009).
QColor withoutRed(const QColor& color)
{
    const auto [r, g, b] = lightOf(color);
    return colorFrom({0.152286 * r + 1.052583 * g - 0.204868 * b, 0.114503 * r + 0.786281 * g + 0.099216 * b,
                      -0.003882 * r - 0.048116 * g + 1.051998 * b});
}
QColor withoutGreen(const QColor& color)
{
    const auto [r, g, b] = lightOf(color);
    return colorFrom({0.367322 * r + 0.860646 * g - 0.227968 * b, 0.280085 * r + 0.672501 * g + 0.047413 * b,
                      -0.011820 * r + 0.042940 * g + 0.968881 * b});
}

TEST(DistinctLinesTest, AHundredLinesAreAllDifferent)
{
    std::set<std::pair<QRgb, LineDash>> marks;
    for (std::size_t number = 0; number < 100; ++number) {
        const LineMark mark = distinctLine(number);
        marks.insert({mark.color.rgb(), mark.dash});
    }
    EXPECT_EQ(marks.size(), 100U);
}

TEST(DistinctLinesTest, TenLinesHaveTenColorsAndTenPatterns)
{
    std::set<QRgb> colors;
    std::set<LineDash> dashes;
    for (std::size_t number = 0; number < 10; ++number) {
        colors.insert(distinctLine(number).color.rgb());
        dashes.insert(distinctLine(number).dash);
    }
    EXPECT_EQ(colors.size(), 10U);
    EXPECT_EQ(dashes.size(), 10U);
    EXPECT_EQ(distinctLine(0).dash, LineDash::Solid);
}

TEST(DistinctLinesTest, BlackAndWhiteTellsTwentyLinesApart)
{
    for (std::size_t one = 0; one < 20; ++one)
        for (std::size_t other = 0; other < one; ++other) {
            if (distinctLine(one).dash != distinctLine(other).dash)
                continue;
            const double onScreen = greyness(distinctLine(one).color) - greyness(distinctLine(other).color);
            const double onPaper =
                greyness(colorOnPaper(distinctLine(one).color)) - greyness(colorOnPaper(distinctLine(other).color));
            EXPECT_GT(std::abs(onScreen), 10) << one << ", " << other;
            EXPECT_GT(std::abs(onPaper), 10) << one << ", " << other;
        }
}

TEST(DistinctLinesTest, ColorBlindEyesTellTwentyLinesApart)
{
    for (std::size_t one = 0; one < 20; ++one)
        for (std::size_t other = 0; other < one; ++other) {
            if (distinctLine(one).dash != distinctLine(other).dash)
                continue;
            const QColor first = distinctLine(one).color;
            const QColor second = distinctLine(other).color;
            EXPECT_FALSE(lookAlike(withoutRed(first), withoutRed(second))) << one << ", " << other;
            EXPECT_FALSE(lookAlike(withoutGreen(first), withoutGreen(second))) << one << ", " << other;
        }
}

TEST(DistinctLinesTest, TheTenColorsStandOutFromTheDarkGround)
{
    const double ground = luminance(QColor::fromRgbF(0.2F, 0.2F, 0.2F));
    for (std::size_t number = 0; number < 10; ++number)
        EXPECT_GT((luminance(distinctLine(number).color) + 0.05) / (ground + 0.05), 2) << number;
}

TEST(DistinctLinesTest, OnlyLinesOfLikeColorsGetDashes)
{
    EXPECT_EQ(dashesWhereAlike({Qt::red, Qt::blue, Qt::green}), (std::vector<LineDash>(3, LineDash::Solid)));
    EXPECT_EQ(dashesWhereAlike({Qt::red, Qt::blue, QColor(250, 10, 5), Qt::red}),
              (std::vector<LineDash>{LineDash::Solid, LineDash::Solid, LineDash::Dashed, LineDash::Dotted}));
}

TEST(DistinctLinesTest, BeyondTenLikeLinesPatternsComeAgain)
{
    const std::vector<LineDash> dashes = dashesWhereAlike(std::vector<QColor>(12, Qt::red));
    EXPECT_EQ(std::set<LineDash>(dashes.begin(), dashes.end()).size(), 10U);
    EXPECT_EQ(dashes[10], LineDash::Solid);
    EXPECT_EQ(dashes[11], LineDash::Dashed);
}

TEST(DistinctLinesTest, NoColorIsAlikeNoOther)
{
    EXPECT_FALSE(lookAlike(QColor(), QColor()));
    EXPECT_TRUE(dashesWhereAlike({}).empty());
    EXPECT_EQ(dashesWhereAlike({QColor(), QColor()}), (std::vector<LineDash>(2, LineDash::Solid)));
}

TEST(LineDashTest, NamesAreReadBack)
{
    for (int number = 0; number < kLineDashCount; ++number) {
        const auto dash = static_cast<LineDash>(number);
        EXPECT_EQ(dashNamed(nameOfDash(dash)), dash);
        EXPECT_EQ(dashLengths(dash, 3).size() % 2, 0U);
    }
    EXPECT_FALSE(dashNamed("zigzag"));
}

TEST(LineDashTest, LengthsGrowWithTheLine)
{
    EXPECT_TRUE(dashLengths(LineDash::Solid, 3).empty());
    EXPECT_EQ(dashLengths(LineDash::Dashed, 2), (std::vector<double>{10, 5}));
}

}  // namespace
