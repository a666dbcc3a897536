#pragma once

#include "tests/records/sqlite/SqliteFile.h"

#include <QtCore/QByteArray>

#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

/// A column of a row in a file's tables, whose bits can be changed.
struct StoredCell {
    QByteArray table, column;
    plotix::RowId id = 0;
    std::size_t bytes = 0;  ///< of a number: 8

    std::size_t bits() const { return bytes * 8; }
};

/// Those that hold something, by row.
inline std::vector<StoredCell> cellsOf(const SqliteFile& file, const QByteArray& table, const QByteArray& column,
                                       const QByteArray& where = "1")
{
    std::vector<StoredCell> cells;
    const plotix::Database database = file.open(plotix::Database::Access::ReadOnly);
    const QByteArray sql = "SELECT rowid, CASE typeof(" + column + ") WHEN 'blob' THEN length(" + column +
                           ") ELSE 8 END FROM " + table + " WHERE " + where + " AND length(" + column +
                           ") > 0 ORDER BY rowid";
    plotix::Statement rows(database, sql.constData());
    while (rows.step())
        cells.push_back({table, column, rows.integer(0), static_cast<std::size_t>(rows.integer(1))});
    return cells;
}

/// One bit of a cell is the other one, for as long as this lives.
class FlippedBit {
public:
    /// Requires: bit < cell.bits().
    FlippedBit(const SqliteFile& file, const StoredCell& cell, std::size_t bit) : m_database(file.open()), m_cell(cell)
    {
        {
            const QByteArray sql =
                "SELECT " + cell.column + ", typeof(" + cell.column + ") FROM " + cell.table + " WHERE rowid = ?";
            plotix::Statement row(m_database, sql.constData());
            row.bind(1, cell.id).step();
            m_kind = row.text(1);
            m_before = m_kind == "blob" ? row.bytes(0) : bytesOf(row);
        }
        m_after = m_before;
        m_after[static_cast<qsizetype>(bit / 8)] =
            static_cast<char>(m_after[static_cast<qsizetype>(bit / 8)] ^ (1 << (bit % 8)));
        put(m_after, cell.id);
    }
    ~FlippedBit() { put(m_before, isKey() ? numberOf<qint64>(m_after) : m_cell.id); }
    FlippedBit(const FlippedBit&) = delete;
    FlippedBit& operator=(const FlippedBit&) = delete;

    plotix::RowId id() const { return m_cell.id; }

private:
    bool isKey() const
    {
        plotix::Statement key(m_database, "SELECT pk FROM pragma_table_info(?) WHERE name = ?");
        key.bind(1, QString(m_cell.table)).bind(2, QString(m_cell.column)).step();
        return key.integer(0) != 0;
    }
    template <class Number>
    static Number numberOf(const QByteArray& bytes)
    {
        Number number = 0;
        std::memcpy(&number, bytes.constData(), sizeof number);
        return number;
    }
    QByteArray bytesOf(const plotix::Statement& row) const
    {
        const std::uint64_t bits =
            m_kind == "real" ? std::bit_cast<std::uint64_t>(row.real(0)) : static_cast<std::uint64_t>(row.integer(0));
        return QByteArray(reinterpret_cast<const char*>(&bits), sizeof bits);
    }
    void put(const QByteArray& bytes, plotix::RowId id)
    {
        const QByteArray sql = "UPDATE " + m_cell.table + " SET " + m_cell.column + " = ? WHERE rowid = ?";
        plotix::Statement update(m_database, sql.constData());
        if (m_kind == "blob")
            update.bind(1, bytes);
        else if (m_kind == "real")
            update.bind(1, numberOf<double>(bytes));
        else
            update.bind(1, numberOf<qint64>(bytes));
        update.bind(2, id).run();
    }

    plotix::Database m_database;
    StoredCell m_cell;
    QString m_kind;
    QByteArray m_before, m_after;
};
