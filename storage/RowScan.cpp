#include "storage/RowScan.h"

#include <sqlite3.h>

#include <exception>

namespace plotix {

namespace {

constexpr const char* kFunction = "plotix_row";
constexpr const char* kTaking = "plotix taking";  // what kind of pointer it is handed

/// The function answers 0, so that no row leaves the query.
QByteArray queryOf(const char* table, const char* columns)
{
    return "SELECT 1 FROM " + QByteArray(table) + " WHERE id >= ?1 AND id <= ?2 AND " + kFunction + "(?3, id, " +
           columns + ") ORDER BY id";
}

}  // namespace

bool ScannedRow::isNothing(int column) const
{
    return sqlite3_value_type(m_columns[column]) == SQLITE_NULL;
}

qint64 ScannedRow::integer(int column) const
{
    return sqlite3_value_int64(m_columns[column]);
}

double ScannedRow::real(int column) const
{
    return sqlite3_value_double(m_columns[column]);
}

std::span<const std::byte> ScannedRow::bytes(int column) const
{
    const auto* start = static_cast<const std::byte*>(sqlite3_value_blob(m_columns[column]));
    return {start, static_cast<std::size_t>(sqlite3_value_bytes(m_columns[column]))};
}

struct RowScan::Taking {
    const Take& take;
    std::exception_ptr failure;
};

RowScan::RowScan(const Database& database, const char* table, const char* columns)
    : m_rows(database, queryOf(table, columns).constData())
{
}

void RowScan::each(qint64 first, qint64 last, const Take& take)
{
    Taking taking{take, nullptr};
    m_rows.bind(1, first).bind(2, last).bindPointer(3, &taking, kTaking);
    try {
        m_rows.run();
    } catch (...) {
        if (taking.failure)
            std::rethrow_exception(taking.failure);
        throw;
    }
}

void RowScan::addFunction(sqlite3* connection)
{
    sqlite3_create_function_v2(connection, kFunction, -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, &RowScan::takeRow,
                               nullptr, nullptr, nullptr);
}

/// Nothing may be thrown through the database.
void RowScan::takeRow(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    auto* taking = count > 1 ? static_cast<Taking*>(sqlite3_value_pointer(arguments[0], kTaking)) : nullptr;
    if (taking == nullptr)
        return sqlite3_result_error(context, "rows are taken by a scan alone", -1);
    try {
        taking->take(ScannedRow(arguments + 1));
        sqlite3_result_int(context, 0);
    } catch (...) {
        taking->failure = std::current_exception();
        sqlite3_result_error(context, "a row was not taken", -1);
    }
}

}  // namespace plotix
