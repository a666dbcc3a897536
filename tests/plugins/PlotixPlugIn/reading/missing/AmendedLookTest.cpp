#include "plugins/PlotixPlugIn/reading/missing/AmendedLook.h"

#include <gtest/gtest.h>

// Where amendments are drawn: an hour in 360 points, ten seconds each.

namespace {

using namespace plotix;
using Kind = KTVAmendment::Kind;
using Places = std::vector<std::pair<double, double>>;

class AmendedLookTest : public testing::Test {
protected:
    static constexpr double kLeast = 3;

    static KTVAmendment late(double from, double to) { return {Kind::Late, from, to, 9'000, 9'000}; }
    Places places(const AmendedLines& lines) const { return amendedPlaces(lines, Kind::Late, m_times, m_area, kLeast); }
    Places placesOf(const std::vector<KTVAmendment>& amendments) const
    {
        const AmendedRecords line(amendments);
        return places({&line});
    }

private:
    const QRectF m_area{0, 0, 360, 100};
    const plotkit::AxisMapping m_times{{0, 3'600}, 0, 360};
};

TEST_F(AmendedLookTest, AStretchStandsWhereItsTimesAre)
{
    EXPECT_EQ(placesOf({late(100, 200)}), (Places{{10, 20}}));
}

TEST_F(AmendedLookTest, ARecordIsWideEnoughToBeSeen)
{
    EXPECT_EQ(placesOf({late(100, 100)}), (Places{{8.5, 11.5}}));
}

TEST_F(AmendedLookTest, WhatLeavesTheAreaIsCut)
{
    EXPECT_EQ(placesOf({late(-500, 100), late(3'500, 9'000)}), (Places{{0, 10}, {350, 360}}));
    EXPECT_TRUE(placesOf({late(-500, -1), late(3'601, 3'700)}).empty());
}

TEST_F(AmendedLookTest, WhatTouchesIsOne)
{
    EXPECT_EQ(placesOf({late(100, 200), late(200, 300), late(400, 500)}), (Places{{10, 30}, {40, 50}}));
    EXPECT_EQ(placesOf({late(100, 100), late(120, 120)}), (Places{{8.5, 13.5}}));
}

TEST_F(AmendedLookTest, LinesOfALaneAreDrawnTogether)
{
    const AmendedRecords one({late(100, 200)}), other({late(150, 300), late(1'000, 1'100)});
    EXPECT_EQ(places({&one, &other}), placesOf({late(100, 300), late(1'000, 1'100)}));
    EXPECT_EQ(places({&other, &one}), placesOf({late(100, 300), late(1'000, 1'100)}));
}

TEST_F(AmendedLookTest, AsManyAsRecordsAreNoMoreThanHavePlace)
{
    std::vector<KTVAmendment> many;
    for (int record = 0; record < 36'000; ++record)
        many.push_back(late(record * 0.1, record * 0.1 + 0.01));
    EXPECT_EQ(placesOf(many).size(), 1U);
}

TEST_F(AmendedLookTest, AnAreaWithoutWidthHasNone)
{
    const AmendedRecords line({late(100, 200)});
    EXPECT_TRUE(amendedPlaces({&line}, Kind::Late, {{0, 3'600}, 5, 0}, {5, 0, 0, 100}, kLeast).empty());
}

}  // namespace
