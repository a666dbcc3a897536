#include "records/sqlite/SqliteRecordStore.h"

#include "records/sqlite/ArchiveCompaction.h"
#include "records/sqlite/ArchiveVerification.h"
#include "records/sqlite/SharedSpans.h"
#include "records/sqlite/SqliteAppender.h"
#include "records/sqlite/SqliteReader.h"
#include "records/sqlite/SqliteTransaction.h"

namespace plotix {

namespace {

std::shared_ptr<RecordStore> storeOf(const Database& database)
{
    return std::make_shared<SqliteRecordStore>(database.file(), database.schema());
}

}  // namespace

SqliteRecordStore::SqliteRecordStore(QString file, DatabaseSchema schema)
    : m_file(std::move(file)),
      m_schema(std::move(schema)),
      m_connections(ReadConnections::ofFile(m_file, m_schema)),
      m_spans(std::make_unique<SharedSpans>())
{
}

// Columns that outlive the store still read, one connection at a time.
SqliteRecordStore::~SqliteRecordStore()
{
    m_connections->keepNone();
}

std::unique_ptr<RecordTransaction> SqliteRecordStore::join(Database& site)
{
    return std::make_unique<SqliteTransaction>(site, &storeOf);
}

std::optional<RecordExtent> SqliteRecordStore::extent(RowId agent)
{
    return SqliteReader(m_connections).extent(agent);
}

std::optional<RecordExtent> SqliteRecordStore::extent()
{
    return SqliteReader(m_connections).extent();
}

RecordOverview SqliteRecordStore::overview(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                           std::optional<double> to)
{
    return SqliteReader(m_connections).overview(agent, properties, from, to);
}

bool SqliteRecordStore::hasMoreThan(std::size_t records, RowId agent, std::optional<double> from,
                                    std::optional<double> to)
{
    return SqliteReader(m_connections).hasMoreThan(records, agent, from, to);
}

RecordIndex SqliteRecordStore::index(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                                     std::optional<double> to, RecordIndex::Detail detail)
{
    return SqliteReader(m_connections).index(agent, properties, from, to, detail);
}

std::optional<RecordBlock> SqliteRecordStore::read(RowId agent, std::span<const RowId> properties,
                                                   std::optional<double> from, std::optional<double> to,
                                                   const ArchiveProgress& progress)
{
    return SqliteReader(m_connections).read(agent, properties, from, to, progress);
}

std::optional<RecordColumns> SqliteRecordStore::columns(RowId agent, std::span<const RowId> properties,
                                                        std::optional<double> from, std::optional<double> to,
                                                        const std::shared_ptr<PageCache>& cache,
                                                        const ArchiveProgress& progress)
{
    return SqliteReader(m_connections).columns(agent, properties, from, to, cache, progress, *m_spans);
}

ColumnStatistics SqliteRecordStore::statistics(RowId agent, RowId property, std::optional<double> from,
                                               std::optional<double> to, StatisticsFrom source)
{
    return SqliteReader(m_connections).statistics(agent, property, from, to, source);
}

std::vector<Amendment> SqliteRecordStore::amendments(RowId, std::span<const RowId> properties,
                                                     std::optional<double> from, std::optional<double> to)
{
    return SqliteReader(m_connections).amendments(properties, from, to);
}

std::unique_ptr<RecordTransaction> SqliteRecordStore::begin()
{
    requireInPlace();
    return std::make_unique<SqliteTransaction>(
        std::make_unique<Database>(m_file, m_schema, Database::Access::ReadWrite), &storeOf);
}

std::unique_ptr<RecordAppender> SqliteRecordStore::appender()
{
    requireInPlace();
    return std::make_unique<SqliteAppender>(m_file, m_schema, &storeOf);
}

CompactionResult SqliteRecordStore::compact(const CompactionRequest& request, const ArchiveProgress& progress)
{
    requireInPlace();
    // A kept connection would keep the log from being merged wholly into the file.
    m_connections->closeKept();
    return compactArchive(m_file, m_schema, request, progress);
}

VerificationResult SqliteRecordStore::verify(const ArchiveProgress& progress, std::uint64_t memory)
{
    requireInPlace();
    return verifyArchive(m_file, m_schema, progress, memory);
}

void SqliteRecordStore::closeIdle()
{
    m_connections->closeKept();
}

}  // namespace plotix
