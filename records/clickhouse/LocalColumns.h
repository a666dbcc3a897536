#pragma once

#include "records/clickhouse/PackedCache.h"
#include "storage/Database.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

/// Columns of chunks that came from servers, kept in a file of this computer, so that the next look at them needs no
/// server. They never change there, and each says by its checksum whether it is still what came. Those not looked at
/// for the longest time go first. `docs/formats.md` has the file.
///
/// Whatever goes wrong here costs time only: nothing throws, and what is damaged or cannot be written is fetched again.
/// *Shared*; any thread, and several programs at once.
namespace plotix {

class LocalColumns {
public:
    /// `file` is made when it is needed. Takes up so many bytes, or some more.
    LocalColumns(QString file, std::uint64_t mostBytes) : m_file(std::move(file)), m_mostBytes(mostBytes) {}

    /// For all sites that this program opens from now on; null: none are kept, as at first.
    static void use(std::shared_ptr<LocalColumns> columns);
    static std::shared_ptr<LocalColumns> used();

    /// `site`: who has the chunks, the same at each call. In the order of the chunks; null: it is not here.
    std::vector<std::shared_ptr<PackedCache::Column>> find(const QString& site, RowId property,
                                                           std::span<const std::uint64_t> chunks);
    struct Kept {
        std::uint64_t chunk = 0;
        std::shared_ptr<const PackedCache::Column> column;
    };
    void keep(const QString& site, RowId property, std::span<const Kept> columns);

private:
    bool open();
    void make() const;
    void fail() noexcept;
    void makeRoom();

    const QString m_file;
    const std::uint64_t m_mostBytes;
    std::mutex m_mutex;                    // guards what follows
    std::unique_ptr<Database> m_database;  // null: not yet, or not any more
    int m_failures = 0;
    bool m_isGivenUp = false;
};

}  // namespace plotix
