#include "benchmarks/archive/RowStore.h"

#include "benchmarks/data/BenchmarkFiles.h"

#include <QtCore/QFile>

#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace plotix_bench {

RowStore::RowStore(const QString& path, Mode mode, int pageSize)
{
    if (mode == Mode::Create)
        removeDatabase(path);
    check(sqlite3_open_v2(QFile::encodeName(path).constData(), &m_handle,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr));
    if (mode == Mode::Create)
        execute(("PRAGMA page_size=" + std::to_string(pageSize)).c_str());
    execute("PRAGMA journal_mode=WAL");
    execute("PRAGMA synchronous=NORMAL");
    execute("PRAGMA cache_size=-65536");
    execute("PRAGMA mmap_size=1099511627776");
    if (mode == Mode::Create)
        execute("CREATE TABLE record(time INTEGER PRIMARY KEY, temperature REAL, humidity REAL, pressure REAL, "
                "windSpeed REAL, radiation REAL)");
    m_begin = prepare("BEGIN IMMEDIATE");
    m_commit = prepare("COMMIT");
    m_insert = prepare("INSERT INTO record VALUES(?, ?, ?, ?, ?, ?)");
    m_read = prepare("SELECT time, temperature, humidity, pressure, windSpeed, radiation FROM record "
                     "WHERE time BETWEEN ? AND ? ORDER BY time");
    m_summaries = prepare("SELECT min(temperature), max(temperature), avg(temperature), min(humidity), max(humidity), "
                          "avg(humidity), min(pressure), max(pressure), avg(pressure), min(windSpeed), max(windSpeed), "
                          "avg(windSpeed), min(radiation), max(radiation), avg(radiation) FROM record "
                          "GROUP BY time / ?");
}

RowStore::~RowStore()
{
    for (sqlite3_stmt* each : {m_insert, m_read, m_summaries, m_begin, m_commit})
        sqlite3_finalize(each);
    sqlite3_close(m_handle);
}

void RowStore::begin()
{
    check(sqlite3_step(m_begin));
    sqlite3_reset(m_begin);
}

void RowStore::commit()
{
    check(sqlite3_step(m_commit));
    sqlite3_reset(m_commit);
}

void RowStore::insert(const Station::Record& record)
{
    sqlite3_bind_int64(m_insert, 1, static_cast<sqlite3_int64>(record.time));
    for (std::size_t property = 0; property < kStationProperties; ++property)
        sqlite3_bind_double(m_insert, static_cast<int>(property) + 2, record.values[property]);
    check(sqlite3_step(m_insert));
    sqlite3_reset(m_insert);
}

std::size_t RowStore::read(double from, double to, double* const (&columns)[kStationProperties + 1])
{
    sqlite3_bind_int64(m_read, 1, static_cast<sqlite3_int64>(from));
    sqlite3_bind_int64(m_read, 2, static_cast<sqlite3_int64>(to));
    std::size_t count = 0;
    for (; sqlite3_step(m_read) == SQLITE_ROW; ++count) {
        columns[0][count] = static_cast<double>(sqlite3_column_int64(m_read, 0));
        for (std::size_t property = 1; property <= kStationProperties; ++property)
            columns[property][count] = sqlite3_column_double(m_read, static_cast<int>(property));
    }
    check(sqlite3_reset(m_read));
    return count;
}

std::size_t RowStore::summaries(double seconds)
{
    sqlite3_bind_int64(m_summaries, 1, static_cast<sqlite3_int64>(seconds));
    std::size_t count = 0;
    while (sqlite3_step(m_summaries) == SQLITE_ROW)
        ++count;
    check(sqlite3_reset(m_summaries));
    return count;
}

sqlite3_stmt* RowStore::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(m_handle, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    return statement;
}

void RowStore::execute(const char* sql)
{
    check(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr));
}

void RowStore::check(int result) const
{
    if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE)
        return;
    std::fprintf(stderr, "rows: %s\n", sqlite3_errmsg(m_handle));
    std::exit(1);
}

QString fullRows()
{
    const QString path = dataFile(QStringLiteral("rows.sqlite"));
    if (!QFile::exists(path)) {
        const QString unfinished = path + QStringLiteral(".new");
        {
            RowStore store(unfinished, RowStore::Mode::Create);
            Station records;
            store.begin();
            for (std::size_t done = 0; done < kStationRecords; ++done)
                store.insert(records.next());
            store.commit();
        }
        QFile::rename(unfinished, path);
    }
    return path;
}

}  // namespace plotix_bench
