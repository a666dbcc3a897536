#include "records/sqlite/AmendmentTable.h"

namespace plotix {

struct AmendmentTable::Statements {
    explicit Statements(const Database& database)
        : insert(database, "INSERT INTO amendment(property, kind, t0, t1, first, last) VALUES(?, ?, ?, ?, ?, ?)"),
          removeWithin(database, "DELETE FROM amendment WHERE property = ? AND kind = ? AND t1 >= ? AND t1 <= ? "
                                 "AND t0 >= ?3"),
          last(database, "SELECT id, t0, t1, first, last FROM amendment "
                         "WHERE property = ? AND kind = ? AND t1 < ? ORDER BY t1 DESC, id DESC LIMIT 1"),
          other(database, "SELECT 1 FROM amendment WHERE property = ? AND kind IN (1, 2) AND t1 > ? AND t0 < ? "
                          "AND id <> ?"),
          remove(database, "DELETE FROM amendment WHERE id = ?")
    {
    }
    Statement insert, removeWithin, last, other, remove;
};

AmendmentTable::AmendmentTable(const Database& database) : m_database(database) {}
AmendmentTable::~AmendmentTable() = default;

AmendmentTable::Statements& AmendmentTable::statements()
{
    if (!m_statements)
        m_statements = std::make_unique<Statements>(m_database);
    return *m_statements;
}

bool AmendmentTable::exists() const
{
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'amendment'");
    return table.step();
}

std::vector<AmendmentTable::Row> AmendmentTable::rowsBetween(RowId property, double from, double to) const
{
    std::vector<Row> rows;
    Statement found(m_database, "SELECT id, kind, t0, t1, first, last FROM amendment "
                                "WHERE property = ? AND t0 <= ? AND t1 >= ? ORDER BY t0, t1, id");
    found.bind(1, property).bind(2, to).bind(3, from);
    while (found.step())
        rows.push_back({found.integer(0),
                        {property, static_cast<Amendment::Kind>(found.integer(1)), found.real(2), found.real(3),
                         found.real(4), found.real(5)}});
    return rows;
}

std::vector<Amendment> AmendmentTable::between(std::span<const RowId> properties, double from, double to) const
{
    std::vector<Amendment> amendments;
    if (!exists())
        return amendments;
    for (const RowId property : properties)
        for (const Row& row : rowsBetween(property, from, to))
            amendments.push_back(row.amendment);
    return amendments;
}

void AmendmentTable::insert(const Amendment& amendment)
{
    statements()
        .insert.bind(1, amendment.property)
        .bind(2, static_cast<qint64>(amendment.kind))
        .bind(3, amendment.from)
        .bind(4, amendment.to)
        .bind(5, amendment.first)
        .bind(6, amendment.last)
        .run();
}

/// Of the other kind, stored by the same transaction.
bool AmendmentTable::isAnyBetween(const Amendment& before, qint64 id, const Amendment& next)
{
    Statement& other = statements().other;
    const bool isAny = other.bind(1, next.property).bind(2, before.to).bind(3, next.from).bind(4, id).step();
    other.reset();
    return isAny;
}

void AmendmentTable::addApart(const Amendment& amendment)
{
    statements()
        .removeWithin.bind(1, amendment.property)
        .bind(2, static_cast<qint64>(amendment.kind))
        .bind(3, amendment.from)
        .bind(4, amendment.to)
        .run();
    insert(amendment);
}

void AmendmentTable::add(const Amendment& amendment, const std::function<bool(double from, double to)>& areNeighbours)
{
    Statement& last = statements().last;
    if (last.bind(1, amendment.property).bind(2, static_cast<qint64>(amendment.kind)).bind(3, amendment.from).step()) {
        const qint64 id = last.integer(0);
        const Amendment before{amendment.property, amendment.kind, last.real(1),
                               last.real(2),       last.real(3),   last.real(4)};
        last.reset();
        if (goesOn(before, amendment) && !isAnyBetween(before, id, amendment) &&
            areNeighbours(before.to, amendment.from)) {
            Amendment joined = before;
            joined.to = amendment.to;
            joined.last = amendment.last;
            addApart(joined);
            return;
        }
    }
    last.reset();
    addApart(amendment);
}

void AmendmentTable::remove(std::span<const RowId> properties, double from, double to)
{
    for (const RowId property : properties)
        for (const Row& row : rowsBetween(property, from, to)) {
            statements().remove.bind(1, row.id).run();
            for (const Amendment& part : without(row.amendment, from, to))
                insert(part);
        }
}

}  // namespace plotix
