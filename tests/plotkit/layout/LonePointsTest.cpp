#include "plotkit/layout/LonePoints.h"

#include <gtest/gtest.h>

namespace {

using namespace plotkit;

TEST(LonePointsTest, ArePartsOfOnePoint)
{
    ReducedPlot plot;
    plot.points = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
    plot.partEnds = {2, 3, 4};
    std::vector<QPointF> places{{9, 9}};
    lonePointsInto(places, plot);
    EXPECT_EQ(places, (std::vector<QPointF>{{5, 6}, {7, 8}}));
}

TEST(LonePointsTest, OfAnEnvelopeArePartsWithinAPixel)
{
    constexpr float kNone = std::numeric_limits<float>::infinity();
    std::vector<float> low(60, 5), high(60, 5.5F);
    for (int column = 20; column < 60; ++column)
        if (column != 40) {
            low[std::size_t(column)] = kNone;
            high[std::size_t(column)] = -kNone;
        }
    PlotEnvelope envelope;
    envelope.left = 100;
    envelope.low = low;
    envelope.high = high;
    envelope.partEnds = {30, 60};
    std::vector<QPointF> places;
    lonePointsInto(places, envelope);
    ASSERT_EQ(places.size(), 1U) << "the first part is longer";
    EXPECT_DOUBLE_EQ(places[0].x(), 100 + 40.5 / PlotEnvelope::kColumnsPerPixel);
    EXPECT_DOUBLE_EQ(places[0].y(), 5.25);
}

TEST(LonePointsTest, ALineThatNowhereBreaksHasNone)
{
    std::vector<float> low(12, 5), high(12, 5);
    PlotEnvelope envelope;
    envelope.low = low;
    envelope.high = high;
    envelope.partEnds = {12};
    std::vector<QPointF> places{{1, 1}};
    lonePointsInto(places, envelope);
    EXPECT_TRUE(places.empty());
}

}  // namespace
