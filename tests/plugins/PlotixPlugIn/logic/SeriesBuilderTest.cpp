#include "plugins/PlotixPlugIn/logic/SeriesBuilder.h"

#include "plotkit/model/CPTSeriesIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Times = plotix::SharedArray<double>;

class SeriesBuilderTest : public testing::Test {
protected:
    static Times times(std::size_t count)
    {
        std::vector<double> values(count);
        for (std::size_t i = 0; i < count; ++i)
            values[i] = 1.7e9 + static_cast<double>(i);
        return Times::fromVector(values);
    }
    static plotix::ValidityBitmap validity(std::vector<std::uint64_t> words)
    {
        return plotix::ValidityBitmap(plotix::SharedArray<std::uint64_t>::fromVector(std::move(words)));
    }
    static CPTPointSeriesPtr build(const std::vector<double>& values, const plotix::ValidityBitmap& valid = {})
    {
        plotix::SeriesBuilder builder(times(values.size()), values.size());
        builder.setBlock(0, values, valid);
        return builder.finish();
    }
};

/// The index after building equals the one made from the finished series.
void expectIndexOfItsOwn(const CPTPointSeries& series)
{
    const CPTSeriesIndex anew(series.y().span(), series.points());
    ASSERT_EQ(series.index().fine().count, anew.fine().count);
    for (std::size_t block = 0; block < anew.fine().count; ++block) {
        EXPECT_EQ(series.index().fine().least()[block], anew.fine().least()[block]) << block;
        EXPECT_EQ(series.index().fine().greatest()[block], anew.fine().greatest()[block]) << block;
        const float first = series.index().fine().first()[block];
        EXPECT_TRUE(first == anew.fine().first()[block] ||
                    (std::isnan(first) && std::isnan(anew.fine().first()[block])));
    }
}

TEST_F(SeriesBuilderTest, TheIndexIsThatOfTheSeries)
{
    std::vector<double> values(1000);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = i % 131 == 0 ? std::nan("") : static_cast<double>(i * 7919 % 503);
    values[700] = 1e300;
    const CPTPointSeriesPtr series = build(values);
    EXPECT_EQ(series->count(), 992U);
    expectIndexOfItsOwn(*series);
    expectIndexOfItsOwn(*build(values, validity(std::vector<std::uint64_t>(16, 0xffff0000ffff00f1))));
}

TEST_F(SeriesBuilderTest, WhatIsSetLaterOrLeftOutIsIndexedToo)
{
    plotix::SeriesBuilder builder(times(700), 700);
    builder.setBlock(128, std::vector<double>(200, 5), {});
    builder.setPoint(150, -3);
    builder.dropPoint(128);
    builder.setPoint(650, 9);
    const CPTPointSeriesPtr series = builder.finish();
    EXPECT_EQ(series->count(), 200U);
    EXPECT_EQ(series->extent()->minY, -3);
    EXPECT_EQ(series->extent()->maxY, 9);
    expectIndexOfItsOwn(*series);
}

TEST_F(SeriesBuilderTest, NoElementsMakeAnEmptySeries)
{
    EXPECT_EQ(build({})->count(), 0U);
}

TEST_F(SeriesBuilderTest, ValuesAreStoredAsFloatsAndTimesAsDoubles)
{
    const CPTPointSeriesPtr series = build({20.123456789});
    EXPECT_EQ(series->pointAt(0).y, static_cast<double>(20.123456789F));
    EXPECT_EQ(series->pointAt(0).x, 1.7e9);
}

TEST_F(SeriesBuilderTest, TimesAreSharedAndNotCopied)
{
    const Times time = times(3);
    plotix::SeriesBuilder builder(time, 3);
    EXPECT_EQ(builder.finish()->x().data(), time.data());
}

TEST_F(SeriesBuilderTest, InvalidElementsAreDropped)
{
    const CPTPointSeriesPtr series = build({1, 2, 3}, validity({0b101}));
    ASSERT_EQ(series->count(), 2U);
    EXPECT_EQ(series->pointAt(1).y, 3);
}

TEST_F(SeriesBuilderTest, NoNumbersAreDropped)
{
    EXPECT_EQ(build({1, std::numeric_limits<double>::quiet_NaN(), 3})->count(), 2U);
}

TEST_F(SeriesBuilderTest, ColumnShorterThanTimeEndsTheSeries)
{
    plotix::SeriesBuilder builder(times(5), 3);
    builder.setBlock(0, std::vector<double>{1, 2, 3}, {});
    EXPECT_EQ(builder.finish()->count(), 3U);
}

TEST_F(SeriesBuilderTest, ColumnLongerThanTimeIsCut)
{
    EXPECT_EQ(plotix::SeriesBuilder(times(2), 9).elementCount(), 2U);
}

TEST_F(SeriesBuilderTest, ElementsNobodySetAreDropped)
{
    EXPECT_EQ(plotix::SeriesBuilder(times(70), 70).finish()->count(), 0U);
}

TEST_F(SeriesBuilderTest, OddElementsOverwriteTheBlock)
{
    plotix::SeriesBuilder builder(times(3), 3);
    builder.setBlock(0, std::vector<double>{1, 2, 3}, validity({0b011}));
    builder.dropPoint(0);
    builder.setPoint(2, 30);
    const CPTPointSeriesPtr series = builder.finish();
    ASSERT_EQ(series->count(), 2U);
    EXPECT_EQ(series->pointAt(0).y, 2);
    EXPECT_EQ(series->pointAt(1).y, 30);
}

TEST_F(SeriesBuilderTest, OddElementsOutsideAreIgnored)
{
    plotix::SeriesBuilder builder(times(2), 2);
    builder.setPoint(2, 1);
    builder.dropPoint(99);
    EXPECT_EQ(builder.finish()->count(), 0U);
}

TEST_F(SeriesBuilderTest, BlocksMeetAtWordsOfTheBitmap)
{
    plotix::SeriesBuilder builder(times(130), 130);
    const std::vector<double> ones(64, 1.0);
    builder.setBlock(0, ones, {});
    builder.setBlock(64, ones, validity({0, ~std::uint64_t{1}, 0}));
    builder.setBlock(128, std::vector<double>{1, 1}, {});
    EXPECT_EQ(builder.finish()->count(), 129U);
}

TEST_F(SeriesBuilderTest, BitmapThatEndsEarlyDropsTheRest)
{
    const std::vector<double> values(100, 1.0);
    EXPECT_EQ(build(values, validity({~std::uint64_t{0}}))->count(), 64U);
}

}  // namespace
