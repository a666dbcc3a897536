#include "records/clickhouse/LocalColumns.h"

#include "base/ReportableError.h"
#include "records/columns/Checksum.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <array>
#include <chrono>
#include <utility>

namespace plotix {

namespace {

constexpr SchemaPart::Table kTables[] = {{"cached_column", 1}};
constexpr const char* kCreate =
    "CREATE TABLE cached_column (site INTEGER NOT NULL, property INTEGER NOT NULL, chunk INTEGER NOT NULL, "
    "used INTEGER NOT NULL, codec INTEGER NOT NULL, valid BLOB NOT NULL, data BLOB NOT NULL, checksum INTEGER NOT "
    "NULL, "
    "UNIQUE (site, property, chunk));"
    "CREATE INDEX cached_column_used ON cached_column (used);";

const DatabaseSchema& schema()
{
    static const DatabaseSchema schema{0x506C7463, 1, 16384, {{kTables, kCreate, {}}}};
    return schema;
}

qint64 keyOf(const QString& site)
{
    const QByteArray text = site.toUtf8();
    return static_cast<qint64>(checksum::of(std::as_bytes(std::span(text.constData(), text.size()))));
}

qint64 checksumOf(qint64 site, RowId property, std::uint64_t chunk, const PackedCache::Column& column)
{
    const std::array<std::uint64_t, 5> head{static_cast<std::uint64_t>(site), static_cast<std::uint64_t>(property),
                                            chunk, static_cast<std::uint64_t>(column.codec), column.valid.size()};
    return static_cast<qint64>(checksum::of(column.data, checksum::of(column.valid, checksum::of(head))));
}

constexpr int kFailuresOfDamaged = 3, kMostFailures = 12;

/// Hours: nearer nobody needs to know what was used last.
qint64 now()
{
    using std::chrono::system_clock;
    return std::chrono::duration_cast<std::chrono::hours>(system_clock::now().time_since_epoch()).count();
}

qint64 pragma(const Database& database, const char* text)
{
    Statement statement(database, text);
    return statement.step() ? statement.integer(0) : 0;
}

/// Also none, which are not nothing.
void bind(Statement& statement, int place, const std::vector<std::byte>& bytes)
{
    statement.bindBytes(place, bytes.empty() ? reinterpret_cast<const std::byte*>("") : bytes.data(), bytes.size());
}

std::mutex usedMutex;
std::shared_ptr<LocalColumns> usedColumns;  // under the mutex

}  // namespace

void LocalColumns::use(std::shared_ptr<LocalColumns> columns)
{
    const std::lock_guard lock(usedMutex);
    usedColumns = std::move(columns);
}

std::shared_ptr<LocalColumns> LocalColumns::used()
{
    const std::lock_guard lock(usedMutex);
    return usedColumns;
}

/// False: nothing can be kept.
bool LocalColumns::open()
{
    if (m_database || m_isGivenUp)
        return m_database != nullptr;
    try {
        if (!QFileInfo::exists(m_file))
            make();
        m_database = std::make_unique<Database>(m_file, schema(), Database::Access::ReadWrite);
        m_database->setPatience(100);
        m_database->execute("PRAGMA synchronous = OFF");  // what is lost is fetched again
        m_database->execute("PRAGMA wal_autocheckpoint = 128");
        return true;
    } catch (const std::exception&) {
        fail();
    }
    return false;
}

/// Under another name first: whoever sees the file sees all of it.
void LocalColumns::make() const
{
    QDir().mkpath(QFileInfo(m_file).path());
    const QString unfinished = QStringLiteral("%1.%2.new").arg(m_file).arg(QCoreApplication::applicationPid());
    QFile::remove(unfinished);
    Database::create(unfinished, schema());
    QFile::setPermissions(unfinished, QFile::ReadOwner | QFile::WriteOwner);
    if (!QFile::rename(unfinished, m_file))  // another program made it just now
        QFile::remove(unfinished);
}

/// Another program may be writing, and the next time it works. What goes wrong again and again is damaged, or of
/// another version, and made anew: it only repeats what servers have. At last nothing is kept any more.
void LocalColumns::fail() noexcept
{
    m_database.reset();
    ++m_failures;
    if (m_failures == kFailuresOfDamaged)
        for (const char* part : {"-wal", "-shm", ""})
            QFile::remove(m_file + QLatin1String(part));
    m_isGivenUp = m_failures == kMostFailures;
}

std::vector<std::shared_ptr<PackedCache::Column>> LocalColumns::find(const QString& site, RowId property,
                                                                     std::span<const std::uint64_t> chunks)
{
    std::vector<std::shared_ptr<PackedCache::Column>> found(chunks.size());
    const std::lock_guard lock(m_mutex);
    try {
        if (!open())
            return found;
        const qint64 key = keyOf(site), hour = now();
        bool isStale = false;
        Statement select(*m_database,
                         "SELECT codec, valid, data, checksum, used FROM cached_column WHERE site = ? AND property = ? "
                         "AND chunk = ?");
        for (std::size_t i = 0; i < chunks.size(); ++i) {
            select.reset();
            select.bind(1, key).bind(2, qint64(property)).bind(3, static_cast<qint64>(chunks[i]));
            if (!select.step())
                continue;
            auto column = std::make_shared<PackedCache::Column>();
            column->codec = static_cast<int>(select.integer(0));
            const auto bytesAt = [&](int place) {
                const auto* bytes = static_cast<const std::byte*>(select.rawBytes(place));
                return std::vector<std::byte>(bytes, bytes + select.byteCount(place));
            };
            column->valid = bytesAt(1);
            column->data = bytesAt(2);
            if (checksumOf(key, property, chunks[i], *column) != select.integer(3))
                continue;
            isStale = isStale || select.integer(4) != hour;
            found[i] = std::move(column);
        }
        select.reset();
        if (!isStale)
            return found;
        m_database->beginWriting();
        Statement update(*m_database,
                         "UPDATE cached_column SET used = ? WHERE site = ? AND property = ? AND chunk = ?");
        for (std::size_t i = 0; i < chunks.size(); ++i)
            if (found[i])
                update.bind(1, hour)
                    .bind(2, key)
                    .bind(3, qint64(property))
                    .bind(4, static_cast<qint64>(chunks[i]))
                    .run();
        m_database->commit();
    } catch (const std::exception&) {
        fail();
    }
    return found;
}

void LocalColumns::keep(const QString& site, RowId property, std::span<const Kept> columns)
{
    const std::lock_guard lock(m_mutex);
    try {
        if (columns.empty() || !open())
            return;
        const qint64 key = keyOf(site), hour = now();
        m_database->beginWriting();
        Statement insert(*m_database,
                         "INSERT OR REPLACE INTO cached_column (site, property, chunk, used, codec, valid, data, "
                         "checksum) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
        for (const Kept& each : columns) {
            insert.bind(1, key).bind(2, qint64(property)).bind(3, static_cast<qint64>(each.chunk)).bind(4, hour);
            insert.bind(5, qint64(each.column->codec));
            bind(insert, 6, each.column->valid);
            bind(insert, 7, each.column->data);
            insert.bind(8, checksumOf(key, property, each.chunk, *each.column)).run();
        }
        makeRoom();
        m_database->commit();
    } catch (const std::exception&) {
        fail();
    }
}

/// Requires: a transaction.
void LocalColumns::makeRoom()
{
    const auto isTooMuch = [this] {
        const qint64 pages = pragma(*m_database, "PRAGMA page_count") - pragma(*m_database, "PRAGMA freelist_count");
        return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(schema().pageSize) > m_mostBytes;
    };
    while (isTooMuch()) {
        const qint64 rows = pragma(*m_database, "SELECT count(*) FROM cached_column");
        if (rows == 0)
            return;
        Statement(*m_database,
                  "DELETE FROM cached_column WHERE rowid IN (SELECT rowid FROM cached_column ORDER BY used, "
                  "rowid LIMIT ?)")
            .bind(1, rows / 8 + 1)
            .run();
    }
}

}  // namespace plotix
