#pragma once

#include "records/sqlite/ChunkStore.h"
#include "records/sqlite/RecordSchema.h"
#include "storage/RowScan.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

/// Rows that stand under `chunk × 1,048,576 + property`, of many chunks and some of their agent's properties at once.
///
/// A value; one thread.
namespace plotix {

class ChunkRows {
public:
    /// `ofAgent`: how many properties the agent has.
    ChunkRows(std::span<const RowId> properties, std::size_t ofAgent)
        : m_oneByOne(ofAgent > kMostPassedOver * properties.size())
    {
        for (std::size_t place = 0; place < properties.size(); ++place)
            m_places.emplace_back(properties[place], place);
        std::sort(m_places.begin(), m_places.end());
    }

    /// Calls `take` with a place in `chunks`, one in the properties, and the row, for each there is.
    template <class Take>
    void each(RowScan& rows, std::span<const Chunk> chunks, const Take& take) const
    {
        if (m_oneByOne)
            lookUp(rows, chunks, take);
        else
            goThrough(rows, chunks, take);
    }

private:
    /// With more properties of the agent than this for each one asked for, looking rows up is faster than going through
    /// all.
    static constexpr std::size_t kMostPassedOver = 3;

    static qint64 idOf(const Chunk& chunk, RowId property) { return chunk.id * schema::kPropertiesPerChunk + property; }

    template <class Take>
    void lookUp(RowScan& rows, std::span<const Chunk> chunks, const Take& take) const
    {
        for (std::size_t chunk = 0; chunk < chunks.size(); ++chunk)
            for (const auto& [property, place] : m_places) {
                const qint64 id = idOf(chunks[chunk], property);
                rows.each(id, id, [&, at = place](const ScannedRow& row) { take(chunk, at, row); });
            }
    }
    template <class Take>
    void goThrough(RowScan& rows, std::span<const Chunk> chunks, const Take& take) const
    {
        for (std::size_t first = 0, end = 0; first < chunks.size(); first = end) {
            // Chunks with ascending, neighbouring ids.
            for (end = first + 1; end < chunks.size() && chunks[end].id == chunks[end - 1].id + 1;)
                ++end;
            const qint64 last = idOf(chunks[end - 1], schema::kPropertiesPerChunk - 1);
            auto next = m_places.begin();
            rows.each(idOf(chunks[first], 0), last, [&](const ScannedRow& row) {
                const qint64 id = row.integer(0);
                const qint64 chunk = id / schema::kPropertiesPerChunk - chunks[first].id;
                const RowId property = id % schema::kPropertiesPerChunk;
                // Mostly the one after the row before.
                if (next == m_places.end() || next->first != property)
                    next = std::lower_bound(m_places.begin(), m_places.end(), std::pair(property, std::size_t{0}));
                for (; next != m_places.end() && next->first == property; ++next)
                    take(first + static_cast<std::size_t>(chunk), next->second, row);
            });
        }
    }

    std::vector<std::pair<RowId, std::size_t>> m_places;  // by property
    bool m_oneByOne;
};

}  // namespace plotix
