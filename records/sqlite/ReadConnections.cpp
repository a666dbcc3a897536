#include "records/sqlite/ReadConnections.h"

#include "base/ReportableError.h"

#include <QtCore/QFileInfo>

#include <sqlite3.h>

namespace plotix {

namespace {

/// As many as one read takes at most.
constexpr std::size_t kMostKept = 4;
/// Pages are copied once and not needed again: a small page cache stays in the processor's.
constexpr auto kCachePragma = "PRAGMA cache_size=-1024";

}  // namespace

ReadConnection::ReadConnection(const QString& file, const DatabaseSchema& schema)
    : database(file, schema, Database::Access::BestAvailable),
      chunks(database),
      segmentHead(database, "SELECT codec, valid FROM segment WHERE id = ?"),
      index(database),
      outlines(database),
      propertyCount(database, "SELECT count(*) FROM property WHERE agent = ?")
{
    database.execute(kCachePragma);
}

// A statement that an error interrupted would hold the snapshot, and the log it needs, as long as the connection is
// kept.
ReadTransaction::~ReadTransaction()
{
    sqlite3* handle = m_database.handle();
    for (sqlite3_stmt* each = sqlite3_next_stmt(handle, nullptr); each; each = sqlite3_next_stmt(handle, each))
        sqlite3_reset(each);
    m_database.rollBack();
}

ReadConnections::Lease::Lease(Lender lender, std::unique_ptr<ReadConnection> connection)
    : m_lender(std::move(lender)), m_connection(std::move(connection))
{
}

ReadConnections::Lease::~Lease()
{
    if (m_connection)
        m_lender->giveBack(std::move(m_connection));
}

std::shared_ptr<ReadConnections> ReadConnections::ofFile(const QString& file, const DatabaseSchema& schema)
{
    return std::shared_ptr<ReadConnections>(new ReadConnections(file, schema));
}

ReadConnections::ReadConnections(const QString& file, const DatabaseSchema& schema)
    : m_file(file), m_schema(schema), m_opened(file)
{
    m_kept.reserve(kMostKept);  // so that giving back never allocates
}

ReadConnections::~ReadConnections() = default;

void ReadConnections::requireInPlace()
{
    const std::lock_guard lock(m_mutex);
    if (m_opened.place() != OpenedFile::Place::Replaced)
        return;
    m_kept.clear();  // while they are open nobody can open the new file
    throw FileReplaced(
        QStringLiteral("“%1” was replaced by another file while it was open: open it again to see the new one.")
            .arg(QFileInfo(m_file).fileName()));
}

ReadConnections::Lease ReadConnections::lease()
{
    requireInPlace();
    std::unique_ptr<ReadConnection> connection;
    {
        const std::lock_guard lock(m_mutex);
        if (m_opened.place() != OpenedFile::Place::Same)
            m_kept.clear();
        if (!m_kept.empty()) {
            connection = std::move(m_kept.back());
            m_kept.pop_back();
        }
    }
    if (!connection)
        connection = std::make_unique<ReadConnection>(m_file, m_schema);
    requireInPlace();
    const std::lock_guard lock(m_mutex);
    ++m_inUse;
    return Lease(shared_from_this(), std::move(connection));
}

void ReadConnections::closeKept()
{
    const std::lock_guard lock(m_mutex);
    m_kept.clear();
}

void ReadConnections::keepNone()
{
    const std::lock_guard lock(m_mutex);
    m_keepsNone = true;
    m_kept.clear();
}

int ReadConnections::inUse() const
{
    const std::lock_guard lock(m_mutex);
    return m_inUse;
}

// A read-only connection may have been opened on the assumption that the file never changes, so it serves only once.
void ReadConnections::giveBack(std::unique_ptr<ReadConnection> connection) noexcept
{
    sqlite3_db_release_memory(connection->database.handle());
    const bool isKept = !connection->database.isReadOnly();
    const std::lock_guard lock(m_mutex);
    --m_inUse;
    if (isKept && !m_keepsNone && m_opened.place() == OpenedFile::Place::Same && m_kept.size() < kMostKept)
        m_kept.push_back(std::move(connection));
}

}  // namespace plotix
