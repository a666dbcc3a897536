#include "storage/RowScan.h"

namespace plotix {

namespace {

/// The function answers 0, so that no row leaves the query.
QByteArray queryOf(const char* table, const char* columns)
{
    return "SELECT 1 FROM " + QByteArray(table) + " WHERE id >= ?1 AND id <= ?2 AND " + kRowFunction + "(?3, id, " +
           columns + ") ORDER BY id";
}

}  // namespace

RowScan::RowScan(const Database& database, const char* table, const char* columns)
    : m_rows(database, queryOf(table, columns).constData())
{
}

void RowScan::each(qint64 first, qint64 last, const Take& take)
{
    RowTaking taking{take, nullptr};
    m_rows.bind(1, first).bind(2, last).bindPointer(3, &taking, kRowTaking);
    try {
        m_rows.run();
        m_rows.bindNothing(3);
    } catch (...) {
        m_rows.bindNothing(3);
        if (taking.failure)
            std::rethrow_exception(taking.failure);
        throw;
    }
}

}  // namespace plotix
