#pragma once

#include "benchmarks/data/StationRecords.h"

#include <QtCore/QString>

#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The usual way to keep records: a database table with one row a record, through SQLite's C interface.
///
/// The same settings as a site document's writer: write-ahead log, synchronous NORMAL, the file mapped, 64 MB of cache;
/// statements are prepared once and kept. One thread. A failure ends the program with a message.
namespace plotix_bench {

class RowStore {
public:
    enum class Mode { Create, Open };

    /// A file is created with pages of so many bytes.
    RowStore(const QString& path, Mode mode, int pageSize = 4096);
    ~RowStore();
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;

    void begin();
    void commit();
    void insert(const Station::Record& record);

    /// Records with from ≤ time ≤ to into columns that are long enough, the times' first; answers how many.
    std::size_t read(double from, double to, double* const (&columns)[kStationProperties + 1]);

    /// Minimum, maximum and average of every property, a row for each `seconds` of time; answers how many rows.
    std::size_t summaries(double seconds);

private:
    sqlite3_stmt* prepare(const char* sql);
    void execute(const char* sql);
    void check(int result) const;

    sqlite3* m_handle = nullptr;
    sqlite3_stmt *m_insert = nullptr, *m_read = nullptr, *m_summaries = nullptr;
    sqlite3_stmt *m_begin = nullptr, *m_commit = nullptr;
};

/// The file with all of the station's records, made when it is not there.
QString fullRows();

}  // namespace plotix_bench
