#include "records/sqlite/SqliteTransaction.h"

#include "base/ReportableError.h"

#include <limits>

namespace plotix {

namespace {

/// Values that take some megabytes.
constexpr std::size_t kMuch = 4'000'000;

Database& begun(Database& database)
{
    database.beginWriting();
    return database;
}

}  // namespace

SqliteTransaction::SqliteTransaction(std::unique_ptr<Database> connection, AmendmentNoting::MakeStore makeStore)
    : m_own(std::move(connection)),
      m_chunks(begun(*m_own)),
      m_placement(m_chunks),
      m_storable(*m_own),
      m_amendments(*m_own, std::move(makeStore))
{
}

SqliteTransaction::SqliteTransaction(Database& database, AmendmentNoting::MakeStore makeStore)
    : m_chunks(database), m_placement(m_chunks), m_storable(database), m_amendments(database, std::move(makeStore))
{
}

SqliteTransaction::~SqliteTransaction()
{
    if (m_own)
        m_own->rollBack();
}

void SqliteTransaction::store(RowId agent, const RecordBlock& block)
{
    requireOpen();
    const bool doAscend = m_storable.require(agent, block);
    const RecordsView view = RecordsView::of(block);
    if (doAscend)
        storeOrdered(agent, view);
    else
        storeOrdered(agent, Records::ordered(view).view());
}

void SqliteTransaction::storeOrdered(RowId agent, const RecordsView& records)
{
    if (m_now && m_placement.overlaps(agent, records))
        m_amendments.note(agent, records, *m_now);
    m_placement.store(agent, records);
    m_values += records.size * records.columns.size();
    if (m_values >= kMuch)
        m_chunks.database().expectMuch();
}

void SqliteTransaction::addAmendment(RowId agent, const Amendment& amendment)
{
    requireOpen();
    m_amendments.add(agent, amendment);
}

void SqliteTransaction::remove(RowId agent, std::span<const RowId> properties, std::optional<double> from,
                               std::optional<double> to)
{
    requireOpen();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    m_placement.remove(agent, properties, from.value_or(-kInfinity), to.value_or(kInfinity));
    AmendmentTable(m_chunks.database()).remove(properties, from.value_or(-kInfinity), to.value_or(kInfinity));
}

void SqliteTransaction::requireOpen() const
{
    if (m_finished)
        throw ReportableError(QStringLiteral("These records were stored already: begin again to store more."));
}

void SqliteTransaction::commit()
{
    if (m_finished)
        return;
    prepare();
    if (!m_own)
        return;
    m_own->commit();
    m_finished = true;
}

}  // namespace plotix
