#include "records/clickhouse/PackedCache.h"

namespace plotix {

namespace {

/// That an entry takes beside its bytes.
constexpr std::size_t kOwnBytes = 256;

}  // namespace

std::shared_ptr<const PackedCache::Column> PackedCache::find(std::uint64_t chunk, RowId property)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_places.find({chunk, property});
    if (found == m_places.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return found->second->column;
}

std::shared_ptr<const PackedCache::Column> PackedCache::keep(std::uint64_t chunk, RowId property,
                                                             const AgentReading::Segment& segment)
{
    auto column = std::make_shared<Column>();
    column->codec = segment.codec;
    column->valid.assign(segment.valid.begin(), segment.valid.end());
    column->data.assign(segment.data.begin(), segment.data.end());
    return keep(chunk, property, std::move(column));
}

std::shared_ptr<const PackedCache::Column> PackedCache::keep(std::uint64_t chunk, RowId property,
                                                             std::shared_ptr<const Column> column)
{
    const std::lock_guard lock(m_mutex);
    if (const auto found = m_places.find({chunk, property}); found != m_places.end())
        return found->second->column;
    m_bytes += column->bytes() + kOwnBytes;
    m_entries.push_front({{chunk, property}, column});
    m_places[{chunk, property}] = m_entries.begin();
    while (m_bytes > kMostBytes) {
        m_bytes -= m_entries.back().column->bytes() + kOwnBytes;
        m_places.erase(m_entries.back().key);
        m_entries.pop_back();
    }
    return column;
}

}  // namespace plotix
