#include "plotkit/raster/PartGroups.h"

#include <gtest/gtest.h>

namespace {

using plotkit::groupsOfParts;
using plotkit::PartExtent;
using Groups = std::vector<std::size_t>;

TEST(PartGroups, FarPartsShareAGroup)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{0, 10}, {20, 30}, {40, 50}}, 5, 8), (Groups{0, 0, 0}));
}

TEST(PartGroups, NearPartsTakeTurns)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{0, 10}, {12, 30}, {32, 50}}, 5, 8), (Groups{0, 1, 0}));
}

TEST(PartGroups, ManyTinyPartsTakeAsManyAsMeet)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{0, 0}, {2, 2}, {4, 4}, {6, 6}}, 5, 8), (Groups{0, 1, 2, 0}));
}

TEST(PartGroups, MirroredPartsAreShared)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{40, 50}, {20, 30}, {18, 19}}, 5, 8), (Groups{0, 0, 1}));
}

TEST(PartGroups, PartsThatTurnBackAreNot)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{0, 10}, {20, 30}, {5, 6}}, 5, 8), Groups());
}

TEST(PartGroups, NeitherAreTooMany)
{
    EXPECT_EQ(groupsOfParts(std::vector<PartExtent>{{0, 0}, {1, 1}, {2, 2}}, 5, 2), Groups());
}

}  // namespace
