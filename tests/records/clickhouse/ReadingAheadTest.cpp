#include "records/clickhouse/ReadingAhead.h"

#include <gtest/gtest.h>

#include <numeric>
#include <set>

namespace plotix {

namespace {

using Places = std::vector<std::size_t>;

/// Of 1000 columns, none of which is here at first.
class ReadingAheadTest : public testing::Test {
protected:
    /// Looks at [first, end), and answers what came besides.
    Places look(std::size_t first, std::size_t end)
    {
        Places besides = ahead.besides(first, end, 1000, [this](std::size_t place) { return !here.contains(place); });
        here.insert(besides.begin(), besides.end());
        for (std::size_t place = first; place < end; ++place)
            here.insert(place);
        return besides;
    }
    /// Columns are about so long.
    void learnLength(std::size_t bytes) { ahead.fetched(1, bytes); }
    static Places from(std::size_t first, std::size_t count)
    {
        Places places(count);
        std::iota(places.begin(), places.end(), first);
        return places;
    }

    ReadingAhead ahead;
    std::set<std::size_t> here;
};

TEST_F(ReadingAheadTest, ASingleLookAtLongColumnsBringsNothingElse)
{
    learnLength(100'000);
    EXPECT_TRUE(look(500, 501).empty());
}

TEST_F(ReadingAheadTest, ShortColumnsBringTheirNeighbours)
{
    learnLength(1000);
    EXPECT_EQ(look(500, 501), from(501, 63));
    EXPECT_TRUE(look(990, 1000).empty());
}

TEST_F(ReadingAheadTest, WhoGoesOnGetsMoreAndMore)
{
    learnLength(65'536 - 32);
    EXPECT_EQ(look(0, 1).size(), 1U);
    EXPECT_EQ(look(2, 3).size(), 2U);
    EXPECT_EQ(look(5, 6).size(), 4U);
    EXPECT_EQ(look(10, 11).size(), 8U);
}

TEST_F(ReadingAheadTest, TwoWhoReadInDifferentPlacesEachGetWhatFollows)
{
    learnLength(65'536 - 32);
    look(0, 1);
    look(500, 501);
    EXPECT_EQ(look(2, 3), from(3, 2));
    EXPECT_EQ(look(502, 503), from(503, 2));
}

TEST_F(ReadingAheadTest, WhatWasSkippedComesToo)
{
    learnLength(65'536 - 32);
    look(0, 1);
    EXPECT_EQ(look(4, 5), (Places{2, 3, 5, 6}));
}

TEST_F(ReadingAheadTest, WhatIsExpectedComesAtOnce)
{
    learnLength(100'000);
    ahead.expect(10, 20);
    ahead.expect(100, 105);
    EXPECT_EQ(look(10, 11), (Places{11, 12, 13, 14, 15, 16, 17, 18, 19, 100, 101, 102, 103, 104}));
}

TEST_F(ReadingAheadTest, WhatIsExpectedComesInPartsThatAreNotTooLong)
{
    learnLength(1 << 20);
    ahead.expect(0, 1000);
    EXPECT_EQ(look(0, 1), from(1, 2));
    EXPECT_EQ(look(3, 4), from(4, 2));
}

TEST_F(ReadingAheadTest, WhatIsHereIsNotFetchedAgain)
{
    learnLength(100'000);
    here = {11, 12};
    ahead.expect(10, 14);
    EXPECT_EQ(look(10, 11), Places{13});
}

TEST_F(ReadingAheadTest, ExpectationsThatMeetAreOne)
{
    learnLength(100'000);
    ahead.expect(20, 30);
    ahead.expect(10, 21);
    EXPECT_EQ(look(10, 11), from(11, 19));
}

}  // namespace

}  // namespace plotix
