#include "storage/RowFunction.h"

#include <sqlite3.h>

namespace plotix {

namespace {

/// Nothing may be thrown through the database.
void takeRow(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    auto* taking = count > 1 ? static_cast<RowTaking*>(sqlite3_value_pointer(arguments[0], kRowTaking)) : nullptr;
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

int addRowFunction(sqlite3* connection)
{
    return sqlite3_create_function_v2(connection, kRowFunction, -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, &takeRow,
                                      nullptr, nullptr, nullptr);
}

}  // namespace plotix
