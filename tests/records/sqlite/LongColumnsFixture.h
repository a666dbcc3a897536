#pragma once

#include "base/PageCache.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <cstddef>
#include <memory>
#include <vector>

/// Records of six chunks, told as columns that are unpacked only while they are held.
class LongColumnsFixture : public ArchiveFixture {
protected:
    static constexpr std::size_t kChunk = 16384;
    static constexpr std::size_t kRecords = 6 * kChunk;

    /// Not looked at yet.
    plotix::RecordColumns columnsOf(const std::vector<plotix::RowId>& properties)
    {
        return *opened()->columns(agent, properties, {}, {}, std::make_shared<plotix::PageCache>(0));
    }
};
