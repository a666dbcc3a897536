#include "base/PageCache.h"
#include "base/PagedMemory.h"
#include "records/clickhouse/LocalColumns.h"
#include "tests/records/clickhouse/RecordsOnServerFixture.h"

#include <QtCore/QTemporaryDir>

#include <cmath>

namespace plotix {

namespace {

TEST_F(RecordsOnServerTest, AColumnThatCannotBeFetchedHasStandInsUntilItCan)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    store(ramp(air, 0, 100'000));
    const auto columns = opened()->columns(agent, std::vector{air}, {}, {}, std::make_shared<PageCache>(0));
    const PagedArray<double>& values = columns->columns[0].values;
    ServerForTests::running().kill();
    {
        const PagedMemory::Hold held = values.hold(50'000, 50'001);
        EXPECT_TRUE(std::isnan(values[50'000]));
    }
    EXPECT_TRUE(columns->failure->message()->contains("cannot be reached"));
    ServerForTests::running().restart();
    const PagedMemory::Hold held = values.hold(50'000, 50'001);
    EXPECT_EQ(values[50'000], 50'000);
}

TEST_F(RecordsOnServerTest, WhoGoesOnReadingHasWhatFollowsHere)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    store(ramp(air, 0, 300'000));
    const auto columns = opened()->columns(agent, std::vector{air}, {}, {}, std::make_shared<PageCache>(0));
    const PagedArray<double>& values = columns->columns[0].values;
    const auto at = [&](std::size_t element) {
        const PagedMemory::Hold held = values.hold(element, element + 1);
        return values[element];
    };
    EXPECT_EQ(at(0), 0);
    EXPECT_EQ(at(100'000), 100'000);
    ServerForTests::running().kill();
    EXPECT_EQ(at(200'000), 200'000);
    EXPECT_EQ(at(0), 0);
    EXPECT_FALSE(columns->failure->message());
    ServerForTests::running().restart();
}

/// A computer that keeps what servers send.
class KeptOnThisComputerOnServerTest : public RecordsOnServerTest {
protected:
    KeptOnThisComputerOnServerTest()
    {
        LocalColumns::use(std::make_shared<LocalColumns>(folder.filePath(QStringLiteral("columns")), 1 << 30));
    }
    ~KeptOnThisComputerOnServerTest() override { LocalColumns::use(nullptr); }
    /// As a program that starts anew and shows all records.
    RecordColumns shown()
    {
        return *opened()->columns(agent, std::vector{air, wind}, {}, {}, std::make_shared<PageCache>(0));
    }
    static std::vector<double> valuesOf(const PagedArray<double>& column)
    {
        const PagedMemory::Hold held = column.holdAll();
        return {column.span().begin(), column.span().end()};
    }

    QTemporaryDir folder;
};

TEST_F(KeptOnThisComputerOnServerTest, TheSecondLookNeedsNoServer)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    store(ramp(air, 0, 100'000));
    const std::vector<double> first = valuesOf(shown().columns[0].values);
    const RecordColumns again = shown();
    ServerForTests::running().kill();
    EXPECT_EQ(valuesOf(again.columns[0].values), first);
    EXPECT_FALSE(again.failure->message());
    ServerForTests::running().restart();
}

TEST_F(KeptOnThisComputerOnServerTest, WhatIsCorrectedIsNotShownAsItWas)
{
    store(ramp(air, 0, 100'000));
    valuesOf(shown().columns[0].values);
    store(block({50'000}, {column(air, {-1})}));
    EXPECT_EQ(valuesOf(shown().columns[0].values)[50'000], -1);
}

TEST_F(RecordsOnServerTest, WhatIsExpectedComesTogether)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    store(ramp(air, 0, 1'000'000));
    const auto columns = opened()->columns(agent, std::vector{air}, {}, {}, std::make_shared<PageCache>(0));
    const PagedArray<double>& values = columns->columns[0].values;
    for (std::size_t element = 100'000; element < 900'000; element += 200'000)
        values.expect(element, element + 1);
    const PagedMemory::Hold first = values.hold(100'000, 100'001);
    ServerForTests::running().kill();
    for (std::size_t element = 100'000; element < 900'000; element += 200'000)
        EXPECT_EQ(values.valueAt(element), static_cast<double>(element));
    ServerForTests::running().restart();
}

TEST(PackedCacheTest, WhatWasUsedLastStays)
{
    PackedCache cache;
    const std::vector<std::byte> quarter(PackedCache::kMostBytes / 4 - 1024);
    for (std::uint64_t chunk = 1; chunk <= 4; ++chunk)
        cache.keep(chunk, 1, {0, {}, quarter});
    EXPECT_TRUE(cache.find(1, 1));
    cache.keep(5, 1, {0, {}, quarter});
    EXPECT_TRUE(cache.find(1, 1));
    EXPECT_FALSE(cache.find(2, 1));
    EXPECT_FALSE(cache.find(5, 2));
}

}  // namespace

}  // namespace plotix
