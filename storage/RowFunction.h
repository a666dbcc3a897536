#pragma once

#include <QtCore/QtGlobal>

#include <cstddef>
#include <exception>
#include <functional>
#include <span>

struct sqlite3;
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

/// The function in SQL that hands rows over while a query runs: `plotix_row(taking, id, …)`, its first argument bound
/// as a pointer to one of these, of kind kRowTaking. It answers 0, or an error where `take` threw, which it keeps.
struct RowTaking {
    const std::function<void(const ScannedRow& row)>& take;
    std::exception_ptr failure;
};
inline constexpr const char* kRowFunction = "plotix_row";
inline constexpr const char* kRowTaking = "plotix taking";

/// Every connection is to know it. Answers SQLite's result.
int addRowFunction(sqlite3* connection);

}  // namespace plotix
