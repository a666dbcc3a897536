#include "records/clickhouse/PackedCache.h"

namespace plotix {

std::shared_ptr<const PackedCache::Column> PackedCache::find(std::uint64_t chunk, RowId property)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_places.find({chunk, property});
    if (found == m_places.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return found->second->column;
}

void PackedCache::keep(std::uint64_t chunk, RowId property, const AgentReading::Segment& segment)
{
    auto column = std::make_shared<Column>();
    column->codec = segment.codec;
    column->valid.assign(segment.valid.begin(), segment.valid.end());
    column->data.assign(segment.data.begin(), segment.data.end());
    const std::lock_guard lock(m_mutex);
    if (m_places.contains({chunk, property}))
        return;
    m_bytes += column->bytes();
    m_entries.push_front({{chunk, property}, std::move(column)});
    m_places[{chunk, property}] = m_entries.begin();
    while (m_bytes > kMostBytes) {
        m_bytes -= m_entries.back().column->bytes();
        m_places.erase(m_entries.back().key);
        m_entries.pop_back();
    }
}

}  // namespace plotix
