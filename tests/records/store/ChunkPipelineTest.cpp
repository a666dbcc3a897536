#include "records/store/ChunkPipeline.h"

#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

namespace {

using plotix::EncodedChunk;
using plotix::RecordsView;

class ChunkPipelineTest : public testing::Test {
protected:
    ChunkPipelineTest() : times(kChunks * kRecords)
    {
        std::iota(times.begin(), times.end(), 0.0);
        for (std::size_t i = 0; i < kChunks; ++i)
            chunks.push_back({times.data() + i * kRecords, kRecords, {{{times.data() + i * kRecords, nullptr, 0}, 1}}});
    }

    static constexpr std::size_t kChunks = 200, kRecords = 1000;
    std::vector<double> times;
    std::vector<RecordsView> chunks;
};

TEST_F(ChunkPipelineTest, ChunksComeOnceEachAndInOrder)
{
    std::vector<double> begins;
    plotix::encodeInOrder(chunks, [&](EncodedChunk&& chunk) { begins.push_back(chunk.t0); });
    ASSERT_EQ(begins.size(), kChunks);
    for (std::size_t i = 0; i < kChunks; ++i)
        EXPECT_EQ(begins[i], static_cast<double>(i * kRecords));
}

TEST_F(ChunkPipelineTest, TheyAreWhatOneThreadMakes)
{
    std::size_t index = 0;
    plotix::encodeInOrder(chunks, [&](EncodedChunk&& chunk) {
        const EncodedChunk alone = plotix::encodedChunk(chunks[index++]);
        ASSERT_EQ(chunk.segments.size(), alone.segments.size());
        for (std::size_t i = 0; i < alone.segments.size(); ++i)
            EXPECT_EQ(chunk.segments[i].values.bytes, alone.segments[i].values.bytes);
    });
}

TEST_F(ChunkPipelineTest, WhatTheSinkThrowsEndsIt)
{
    std::size_t taken = 0;
    const auto sink = [&](EncodedChunk&&) {
        if (++taken == 10)
            throw std::runtime_error("full");
    };
    EXPECT_THROW(plotix::encodeInOrder(chunks, sink), std::runtime_error);
    EXPECT_EQ(taken, 10U);
}

TEST_F(ChunkPipelineTest, NothingToDoIsNothingDone)
{
    plotix::encodeInOrder({}, [](EncodedChunk&&) { FAIL(); });
}

}  // namespace
