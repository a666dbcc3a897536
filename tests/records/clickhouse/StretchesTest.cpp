#include "records/clickhouse/StoredChunk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace plotix {

namespace {

/// Which chunk says what is there at a time.
class StretchesTest : public testing::Test {
protected:
    void add(double begin, double end, std::uint64_t version)
    {
        chunks.push_back({chunks.size() + 1, version, begin, end, begin, end, 1, {}});
    }
    /// The id of the chunk at a time; 0: none.
    std::uint64_t at(double time) const
    {
        std::uint64_t found = 0;
        for (const ChunkStretch& stretch : stretchesOf(chunks))
            if (stretch.begin <= time && time <= stretch.end)
                found = found == 0 ? stretch.chunk->id : 1000;
        return found;
    }
    std::vector<StoredChunk> chunks;
};

TEST_F(StretchesTest, ChunksBesideEachOtherAreWhole)
{
    add(10, 19, 2);
    add(0, 9, 1);
    for (const ChunkStretch& stretch : stretchesOf(chunks))
        EXPECT_TRUE(stretch.isWhole());
    EXPECT_EQ(at(5), 2U);
    EXPECT_EQ(at(9.5), 0U);
}

TEST_F(StretchesTest, TheHighestVersionCountsWhicheverCameFirst)
{
    add(0, 100, 5);
    add(40, 60, 9);
    add(50, 80, 7);
    EXPECT_EQ(at(39), 1U);
    EXPECT_EQ(at(40), 2U);
    EXPECT_EQ(at(60), 2U);
    EXPECT_EQ(at(std::nextafter(60, 61)), 3U);
    EXPECT_EQ(at(81), 1U);
}

TEST_F(StretchesTest, AnyTimeHasTheChunkOfTheHighestVersion)
{
    std::mt19937 random(7);
    for (std::uint64_t version = 1; version <= 60; ++version) {
        const double begin = static_cast<double>(random() % 100);
        add(begin, begin + static_cast<double>(random() % 30), version * 7919 % 61);
    }
    for (double time = -1; time < 140; time += 0.5) {
        const StoredChunk* wanted = nullptr;
        for (const StoredChunk& chunk : chunks)
            if (chunk.begin <= time && time <= chunk.end && (!wanted || chunk.version > wanted->version))
                wanted = &chunk;
        EXPECT_EQ(at(time), wanted ? wanted->id : 0U) << time;
    }
}

/// Young records over those of a chunk.
class JoinedTest : public testing::Test {
protected:
    void add(double time, std::uint64_t version, RowId property, double value)
    {
        young.push_back({time, 1, version, 0, version, {property}, {value}, {1}});
    }
    double valueAt(double time, RowId property)
    {
        std::vector<const YoungRecord*> all;
        for (const YoungRecord& record : young)
            all.push_back(&record);
        const Records now = joined(old.view(), all, nullptr);
        for (const RecordsView::Column& column : now.view().columns)
            for (std::size_t i = 0; i < now.size(); ++i)
                if (column.property == property && now.view().times[i] == time)
                    return column.values[i];
        return NAN;
    }
    Records old{{1, 2, 3}, {{7, {10, 20, 30}, {7}}}};
    std::vector<YoungRecord> young;
};

TEST_F(JoinedTest, AnElementReplacesItsOwnAlone)
{
    add(2, 1, 8, 5);
    EXPECT_EQ(valueAt(2, 7), 20);
    EXPECT_EQ(valueAt(2, 8), 5);
    EXPECT_TRUE(std::isnan(valueAt(1, 8)));
}

TEST_F(JoinedTest, OfOneTimeTheHighestVersionCounts)
{
    add(2, 9, 7, 99);
    add(2, 4, 7, 44);
    EXPECT_EQ(valueAt(2, 7), 99);
}

TEST_F(JoinedTest, ATimeOfItsOwnIsARecordMore)
{
    add(2.5, 1, 7, 25);
    EXPECT_EQ(valueAt(2.5, 7), 25);
    EXPECT_EQ(valueAt(3, 7), 30);
}

}  // namespace

}  // namespace plotix
