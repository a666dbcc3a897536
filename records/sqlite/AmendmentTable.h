#pragma once

#include "records/store/AmendmentFinder.h"
#include "storage/Database.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

/// The stretches of late and corrected records in a site document.
///
/// A stretch that lies within a newer one of its kind goes: what was corrected every second stays one stretch. Borrows
/// its connection and works inside the caller's transaction; one thread. A document of a version before has no such
/// table: it reads as empty, and must not be written. Throws ReportableError.
namespace plotix {

class AmendmentTable {
public:
    explicit AmendmentTable(const Database& database);
    ~AmendmentTable();
    AmendmentTable(const AmendmentTable&) = delete;
    AmendmentTable& operator=(const AmendmentTable&) = delete;

    bool exists() const;

    /// Those that share a time with [from, to], by property in this order, then by time.
    std::vector<Amendment> between(std::span<const RowId> properties, double from, double to) const;

    /// `areNeighbours` answers whether nothing is recorded of the property between two times.
    void add(const Amendment& amendment, const std::function<bool(double from, double to)>& areNeighbours);
    /// The same for one that goes on nowhere.
    void addApart(const Amendment& amendment);

    /// Cuts [from, to] out of the stretches of these properties.
    void remove(std::span<const RowId> properties, double from, double to);

private:
    struct Row {
        qint64 id = 0;
        Amendment amendment;
    };
    std::vector<Row> rowsBetween(RowId property, double from, double to) const;
    struct Statements;
    Statements& statements();  ///< made when they are first needed
    bool isAnyBetween(const Amendment& before, qint64 id, const Amendment& next);
    void insert(const Amendment& amendment);

    const Database& m_database;
    std::unique_ptr<Statements> m_statements;
};

}  // namespace plotix
