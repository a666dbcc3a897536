#include "plotkit/model/PartFilling.h"

#include "plotkit/model/CPTSeriesRuns.h"
#include "tests/plotkit/model/PagedSeriesMaking.h"

#include <gtest/gtest.h>

#include <chrono>
#include <semaphore>
#include <thread>

namespace {

using namespace plotkit;
using namespace plotkit_test;

class PartFillingTest : public testing::Test {
protected:
    PartFillingTest()
    {
        for (int second = 0; second < 3'000'000; ++second)
            twin.add(second, second % 100);
        twin.cutRuns(500, 1);
        series = twin.paged();
    }

    SeriesParts part(std::size_t first, std::size_t end) const { return {{series, first, end}}; }
    bool isThere(std::size_t first, std::size_t end) const
    {
        plotix::PagedMemory::Hold hold;
        return series->x().memory()->holdIfThere(first, end, hold) &&
               series->y().memory()->holdIfThere(first, end, hold);
    }
    bool comesThere(std::size_t first, std::size_t end) const
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isThere(first, end) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return isThere(first, end);
    }
    bool isFilled() { return fills.try_acquire_for(std::chrono::seconds(20)); }

    TwinSeries twin;
    CPTPointSeriesPtr series;
    std::counting_semaphore<> fills{0};
    PartFilling filling{[this] { fills.release(); }};
};

TEST_F(PartFillingTest, HoldsWhatWasAskedForUntilItLetsGo)
{
    filling.fill(part(100'000, 2'000'000));
    ASSERT_TRUE(isFilled());
    EXPECT_TRUE(isThere(100'000, 2'000'000));
    ASSERT_EQ(filling.held().size(), 1U);
    filling.letGo();
    EXPECT_FALSE(isThere(100'000, 2'000'000));  // the cache keeps nothing
    EXPECT_TRUE(filling.held().empty());
}

TEST_F(PartFillingTest, FillsWhatWasAskedForLast)
{
    for (std::size_t first = 0; first < 1'000'000; first += 100'000)
        filling.fill(part(first, first + 2'000'000));
    while (filling.held().empty())
        ASSERT_TRUE(isFilled());
    EXPECT_TRUE(isThere(900'000, 2'900'000));
    EXPECT_FALSE(isThere(0, 100'000));
}

TEST_F(PartFillingTest, EndsWhileItFills)
{
    for (int time = 0; time < 20; ++time) {
        PartFilling ending([] {});
        ending.fill(part(0, 3'000'000));
        if (time % 2 == 0)
            ending.letGo();
    }
    EXPECT_EQ(series.use_count(), 1);
}

TEST_F(PartFillingTest, FillsAgainAfterItLetGo)
{
    filling.fill(part(0, 3'000'000));
    filling.letGo();
    filling.fill(part(0, 200'000));
    ASSERT_TRUE(isFilled());
    EXPECT_TRUE(isThere(0, 200'000));
}

class PartBringingTest : public PartFillingTest {
protected:
    static constexpr std::size_t kPlenty = 256 << 20;  // bytes
    PartBringingTest() { series = twin.paged(kPlenty); }
};

TEST_F(PartBringingTest, BringsWhatTheCacheKeeps)
{
    filling.bring(part(100'000, 2'000'000));
    EXPECT_TRUE(comesThere(100'000, 2'000'000));
    EXPECT_TRUE(filling.held().empty());
}

TEST_F(PartBringingTest, FillsFirstAndBringsThen)
{
    filling.bring(part(2'000'000, 3'000'000));
    filling.fill(part(0, 200'000));
    ASSERT_TRUE(isFilled());
    EXPECT_TRUE(comesThere(2'000'000, 3'000'000));
}

TEST_F(PartBringingTest, BringsWhatWasAskedForLast)
{
    filling.bring(part(0, 2'000'000));
    filling.bring(part(2'900'000, 3'000'000));
    EXPECT_TRUE(comesThere(2'900'000, 3'000'000));
    EXPECT_FALSE(isThere(1'900'000, 2'000'000));
}

TEST_F(PartBringingTest, BringsNothingOfASeriesThatCouldNotBeRead)
{
    const auto points = std::make_shared<UnreadablePoints>(std::make_shared<plotix::PageCache>(kPlenty), twin.size());
    series = twin.pagedBy(points);
    const std::size_t before = points->looks();
    ASSERT_GT(before, 0U);  // its end was looked at when it was made
    filling.bring(part(0, 3'000'000));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(points->looks(), before);
}

TEST_F(PartBringingTest, EndsWhileItBrings)
{
    for (int time = 0; time < 20; ++time) {
        const CPTPointSeriesPtr brought = twin.paged(kPlenty);
        {
            PartFilling ending([] {});
            ending.bring({{brought, 0, 3'000'000}});
            if (time % 2 == 0)
                ending.letGo();
        }
        ASSERT_EQ(brought.use_count(), 1);
    }
}

TEST_F(PartFillingTest, IsReadBesidesByOthers)
{
    filling.fill(part(0, 3'000'000));
    double sum = 0;
    for (std::size_t element = 0; element < 3'000'000; element += 50'000)
        sum += series->y().valueAt(element) + series->x().valueAt(element);
    EXPECT_EQ(sum, 60 * 1'475'000.0);
    ASSERT_TRUE(isFilled());
}

class RunLookingTest : public PartFillingTest {
protected:
    RunLookingTest()
    {
        many = TwinSeries();
        for (int second = 0; second < 300'000; ++second)
            many.add(second, second % 100);
        many.cutRuns(8, 1);
        crowded = many.paged();
    }

    bool areAllLookedAt() const
    {
        return crowded->runs()->bytesOfRuns() >= 3 * sizeof(float) * crowded->runs()->count();
    }
    bool waitUntilAllAreLookedAt() const
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!areAllLookedAt() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return areAllLookedAt();
    }

    TwinSeries many;
    CPTPointSeriesPtr crowded;
};

TEST_F(RunLookingTest, LooksAtAllRunsOfASeries)
{
    ASSERT_FALSE(areAllLookedAt());
    filling.lookAt({series, crowded});
    EXPECT_TRUE(waitUntilAllAreLookedAt());
}

TEST_F(RunLookingTest, FillsFirstAndLooksThen)
{
    filling.lookAt({crowded});
    filling.fill(part(0, 200'000));
    ASSERT_TRUE(isFilled());
    EXPECT_TRUE(waitUntilAllAreLookedAt());
    EXPECT_TRUE(isThere(0, 200'000));
}

TEST_F(RunLookingTest, EndsWhileItLooks)
{
    for (int time = 0; time < 20; ++time) {
        const CPTPointSeriesPtr looked = many.paged();
        {
            PartFilling ending([] {});
            ending.lookAt({looked});
            if (time % 2 == 0)
                ending.letGo();
        }
        ASSERT_EQ(looked.use_count(), 1);
    }
}

}  // namespace
