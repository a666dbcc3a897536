#pragma once

#include "records/sqlite/IndexStore.h"
#include "storage/Database.h"

#include <memory>
#include <mutex>
#include <vector>

/// Connections of one site document for reading, kept open from one read to the next: opening a file, checking its
/// schema and preparing statements take as long as reading a hundred thousand values.
namespace plotix {

/// A connection with its statements. One thread at a time.
struct ReadConnection {
    ReadConnection(const QString& file, const DatabaseSchema& schema);

    Database database;
    ChunkStore chunks;
    Statement segmentHead;  ///< codec and validity of a segment, by its id
    IndexStore index;
    OutlineTable outlines;
    Statement propertyCount;  ///< of an agent

    /// So many bytes, undefined, until it is called again. Kept, because fresh memory costs more than what is read into
    /// it.
    std::span<std::byte> room(std::size_t size)
    {
        if (m_room.size() < size)
            m_room.resize(size);
        return std::span(m_room).first(size);
    }

private:
    std::vector<std::byte> m_room;
};

/// A snapshot of the document for as long as it lives. Borrows its connection.
class ReadTransaction {
public:
    explicit ReadTransaction(Database& database) : m_database(database) { m_database.execute("BEGIN"); }
    ~ReadTransaction();
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    Database& m_database;
};

/// Lends connections. *Shared* by the readers of a document; any thread.
class ReadConnections : public std::enable_shared_from_this<ReadConnections> {
public:
    /// Holds a connection as long as it lives; *shares* the lender. Moved, not copied.
    class Lease {
    public:
        Lease(Lease&&) = default;
        Lease& operator=(Lease&&) = delete;
        ~Lease();
        ReadConnection& operator*() const { return *m_connection; }
        ReadConnection* operator->() const { return m_connection.get(); }

    private:
        friend class ReadConnections;
        using Lender = std::shared_ptr<ReadConnections>;
        Lease(Lender lender, std::unique_ptr<ReadConnection> connection);
        Lender m_lender;
        std::unique_ptr<ReadConnection> m_connection;
    };

    static std::shared_ptr<ReadConnections> ofFile(const QString& file, const DatabaseSchema& schema);
    ~ReadConnections();

    /// A kept connection, or a new one. Throws ReportableError; FileReplaced when another file has taken the name.
    Lease lease();

    /// Throws FileReplaced when another file has taken the name of the one that was there at first.
    void requireInPlace();

    /// Closes those that nobody uses.
    void closeKept();

    /// From now on each lease opens a connection of its own: whoever still reads shall not keep the file open.
    void keepNone();

    /// Leases under way.
    int inUse() const;

private:
    ReadConnections(const QString& file, const DatabaseSchema& schema);
    void giveBack(std::unique_ptr<ReadConnection> connection) noexcept;

    const QString m_file;
    const DatabaseSchema m_schema;
    mutable std::mutex m_mutex;
    OpenedFile m_opened;  // guarded, as the others
    std::vector<std::unique_ptr<ReadConnection>> m_kept;
    int m_inUse = 0;
    bool m_keepsNone = false;
};

}  // namespace plotix
