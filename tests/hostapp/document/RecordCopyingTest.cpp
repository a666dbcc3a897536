#include "hostapp/document/RecordCopying.h"

#include "records/store/MemoryRecordStore.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();

/// An agent with the properties 1 and 2, which are 11 and 12 of the agent 5 in the other store.
class RecordCopyingTest : public testing::Test {
protected:
    RecordCopyingTest()
    {
        for (const RowId property : {1, 2})
            from.addProperty(1, property);
        for (const RowId property : {11, 12})
            to.addProperty(5, property);
    }

    void put(RowId property, double time, double value, bool isValid = true)
    {
        RecordBlock block;
        block.times = SharedArray<double>::fromVector({time});
        ValidityBitmap validity;
        if (!isValid)
            validity = ValidityBitmap(SharedArray<std::uint64_t>::fromVector({0}));
        block.columns.push_back({property, SharedArray<double>::fromVector({value}), validity});
        const auto writer = from.begin();
        writer->store(1, block);
        writer->commit();
    }
    std::optional<std::size_t> copy(std::vector<CopiedSpan> spans, const ArchiveProgress& progress = {})
    {
        return copyRecords(from, to, {1, 5, {{1, 11}, {2, 12}}, std::move(spans)}, progress);
    }
    RecordBlock copied()
    {
        const RowId both[] = {11, 12};
        return *to.read(5, both, {}, {}, {});
    }
    std::vector<double> timesOf(std::size_t column)
    {
        const RecordBlock block = copied();
        std::vector<double> times;
        for (std::size_t i = 0; i < block.times.size(); ++i)
            if (block.columns[column].validity.isValid(i))
                times.push_back(block.times[i]);
        return times;
    }

    MemoryRecordStore from, to;
};

TEST_F(RecordCopyingTest, TakesTheSpanWithItsBounds)
{
    for (int i = 0; i < 10; ++i)
        put(1, i, i);
    EXPECT_EQ(copy({{3, 5}}), 5U);
    EXPECT_EQ(timesOf(0), (std::vector<double>{2, 3, 4, 5, 6}));
}

TEST_F(RecordCopyingTest, TakesOfEachPropertyItsOwnNeighbours)
{
    put(2, 1, 7);
    put(1, 2, 1);
    put(1, 3, 2);
    put(1, 10, 3);
    put(1, 20, 4);
    put(2, 22, 8);
    copy({{10, 10}});
    EXPECT_EQ(timesOf(0), (std::vector<double>{3, 10, 20}));
    EXPECT_EQ(timesOf(1), (std::vector<double>{1, 22}));
}

TEST_F(RecordCopyingTest, ANeighbourThatIsNotValidIsPassedOver)
{
    put(1, 1, 1);
    put(1, 2, 2, false);
    put(1, 3, 3);
    copy({{3, 4}});
    EXPECT_EQ(timesOf(0), (std::vector<double>{1, 3}));
}

TEST_F(RecordCopyingTest, ElementsKeepTheirBitsAndValidity)
{
    const double payload = std::bit_cast<double>(std::uint64_t{0x7FF8'0000'0000'1234});
    put(1, 1, -0.0);
    put(1, 2, payload);
    put(1, 3, 42, false);
    copy({{1, 3}});
    const RecordBlock block = copied();
    EXPECT_TRUE(std::signbit(block.columns[0].values[0]));
    EXPECT_EQ(std::bit_cast<std::uint64_t>(block.columns[0].values[1]), std::bit_cast<std::uint64_t>(payload));
    EXPECT_EQ(block.columns[0].values[2], 42);
    EXPECT_FALSE(block.columns[0].validity.isValid(2));
}

TEST_F(RecordCopyingTest, WhatCameLateOrWasCorrectedIsNotedThereToo)
{
    for (int i = 0; i < 10; ++i)
        put(1, i, i);
    const auto writer = from.begin();
    writer->addAmendment(1, {1, Amendment::Kind::Corrected, 2, 6, 100, 100});
    writer->commit();
    copy({{4, 8}});
    const RowId asked[] = {11};
    const std::vector<Amendment> found = to.amendments(5, asked, {}, {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front(), (Amendment{11, Amendment::Kind::Corrected, 4, 6, 100, 100}));
}

TEST_F(RecordCopyingTest, SpansMayOverlapAndComeInAnyOrder)
{
    for (int i = 0; i < 20; ++i)
        put(1, i, i);
    EXPECT_EQ(copy({{14, 15}, {3, 5}, {4, 6}}), 10U);
    EXPECT_EQ(timesOf(0), (std::vector<double>{2, 3, 4, 5, 6, 7, 13, 14, 15, 16}));
}

TEST_F(RecordCopyingTest, AnOpenSpanTakesEverythingBefore)
{
    for (int i = 0; i < 5; ++i)
        put(1, i, i);
    copy({{-kOpen, 2}});
    EXPECT_EQ(timesOf(0), (std::vector<double>{0, 1, 2, 3}));
}

TEST_F(RecordCopyingTest, SpansWithoutRecordsHaveTheirNeighboursAlone)
{
    put(1, 1, 1);
    put(1, 9, 9);
    EXPECT_EQ(copy({{4, 5}}), 2U);
    EXPECT_EQ(copy({}), 0U);
}

TEST_F(RecordCopyingTest, ProgressStopsIt)
{
    put(1, 1, 1);
    EXPECT_FALSE(copy({{0, 5}}, [](double) { return false; }));
}

TEST_F(RecordCopyingTest, WhatCameLateCameLateInTheCopyToo)
{
    put(1, 1, 1);
    put(1, 9, 9);
    const auto writer = from.begin();
    writer->noteAmendments(100);
    const std::vector<double> times{3, 4, 5, 6};
    writer->store(1, {SharedArray<double>::fromVector(std::vector(times)),
                      {{1, SharedArray<double>::fromVector(std::vector(times)), {}}}});
    writer->commit();
    copy({{4, 8}});
    const RowId both[] = {11, 12};
    EXPECT_EQ(to.amendments(5, both, {}, {}), (std::vector<Amendment>{{11, Amendment::Kind::Late, 4, 6, 100, 100}}));
}

}  // namespace

}  // namespace plotix
