#include "plugins/PlotixPlugIn/reading/missing/LaneStretches.h"

#include <gtest/gtest.h>

namespace {

using namespace plotix;
using Stretches = std::vector<MissingStretch>;

constexpr auto kNotRecorded = Missing::NotRecorded;
constexpr auto kNotValid = Missing::NotValid;

TEST(LaneStretchesTest, ALoneLinesAreItsOwn)
{
    const Stretches line{{0, 1, kNotRecorded}, {5, 9, kNotValid}};
    EXPECT_EQ(missingInAll({line}), line);
}

TEST(LaneStretchesTest, OnlyWhatAllLinesMissIsMissing)
{
    EXPECT_EQ(missingInAll({{{0, 10, kNotRecorded}, {20, 30, kNotRecorded}}, {{5, 25, kNotRecorded}}}),
              (Stretches{{5, 10, kNotRecorded}, {20, 25, kNotRecorded}}));
    EXPECT_TRUE(missingInAll({{{0, 10, kNotRecorded}}, {}}).empty());
}

TEST(LaneStretchesTest, NotValidOfOneIsNotValidOfAll)
{
    EXPECT_EQ(missingInAll({{{0, 10, kNotRecorded}}, {{5, 25, kNotValid}}}), (Stretches{{5, 10, kNotValid}}));
}

TEST(LaneStretchesTest, NoLinesMissNothing)
{
    EXPECT_TRUE(missingInAll({}).empty());
}

}  // namespace
