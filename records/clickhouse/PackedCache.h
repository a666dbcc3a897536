#pragma once

#include "records/clickhouse/AgentReading.h"

#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

/// Columns of chunks as they came from the server, so that those fetched ahead are here when they are looked at, and
/// those looked at again need no server. They never change. The ones used last stay, up to kMostBytes.
///
/// *Shared* by whoever reads a site; any thread.
namespace plotix {

class PackedCache {
public:
    static constexpr std::size_t kMostBytes = 64 << 20;

    struct Column {
        int codec = 0;
        std::vector<std::byte> valid, data;

        AgentReading::Segment segment() const { return {codec, valid, data}; }
        std::size_t bytes() const { return valid.size() + data.size(); }  ///< packed
    };

    /// Null: it is not here.
    std::shared_ptr<const Column> find(std::uint64_t chunk, RowId property);
    std::shared_ptr<const Column> keep(std::uint64_t chunk, RowId property, const AgentReading::Segment& segment);
    std::shared_ptr<const Column> keep(std::uint64_t chunk, RowId property, std::shared_ptr<const Column> column);

private:
    using Key = std::pair<std::uint64_t, RowId>;
    struct Entry {
        Key key;
        std::shared_ptr<const Column> column;
    };

    std::mutex m_mutex;          // guards what follows
    std::list<Entry> m_entries;  // used last: first
    std::map<Key, std::list<Entry>::iterator> m_places;
    std::size_t m_bytes = 0;
};

}  // namespace plotix
