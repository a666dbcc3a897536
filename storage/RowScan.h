#pragma once

#include "storage/Database.h"

#include <functional>
#include <span>

struct sqlite3_context;
struct sqlite3_value;

namespace plotix {

/// A row that a scan stands on, by its columns, of which the first is its id. Valid while it is handed over.
class ScannedRow {
public:
    explicit ScannedRow(sqlite3_value** columns) : m_columns(columns) {}

    bool isNothing(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;  ///< nothing answers 0
    std::span<const std::byte> bytes(int column) const;

private:
    sqlite3_value** m_columns;
};

/// Hands over the rows of a table by their ids. Of many short rows this takes two thirds of the time of a statement
/// that is stepped from row to row: the rows are taken inside the query, by a function of ours.
///
/// Borrows its database; one thread, and one scan at a time.
class RowScan {
public:
    /// `columns`, with commas between: what is wanted beside the id.
    RowScan(const Database& database, const char* table, const char* columns);

    using Take = std::function<void(const ScannedRow& row)>;
    /// Rows [first, last], ids ascending. Passes on what `take` throws.
    void each(qint64 first, qint64 last, const Take& take);

    /// Every connection knows the function that takes rows.
    static void addFunction(sqlite3* connection);

private:
    struct Taking;
    static void takeRow(sqlite3_context* context, int count, sqlite3_value** arguments);

    Statement m_rows;
};

}  // namespace plotix
