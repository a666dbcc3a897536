#include "records/sqlite/SqliteAppender.h"

#include "base/ReportableError.h"

namespace plotix {

SqliteAppender::SqliteAppender(const QString& file, const DatabaseSchema& schema, AmendmentNoting::MakeStore makeStore)
    : m_database(file, schema, Database::Access::ReadWrite),
      m_chunks(m_database),
      m_placement(m_chunks),
      m_storable(m_database),
      m_amendments(m_database, std::move(makeStore)),
      m_checkpointer(m_database)
{
}

void SqliteAppender::append(RowId agent, const RecordBlock& block)
{
    try {
        m_database.beginWriting();
        store(agent, block);
        m_database.commit();
        m_version = m_database.dataVersion();
    } catch (const FileReplaced& replaced) {
        forget();
        m_database.rollBack();
        // Once, by whoever stored records that nobody would find any more.
        throw FileReplaced(replaced.message() + QLatin1Char(' ') + m_database.keepReplaced());
    } catch (...) {
        forget();
        m_database.rollBack();
        throw;
    }
}

void SqliteAppender::store(RowId agent, const RecordBlock& block)
{
    if (m_database.dataVersion() != m_version)
        forget();
    const bool doAscend = m_storable.require(agent, block);
    const RecordsView view = RecordsView::of(block);
    if (doAscend)
        storeOrdered(agent, view);
    else
        storeOrdered(agent, Records::ordered(view).view());
}

void SqliteAppender::storeOrdered(RowId agent, const RecordsView& records)
{
    if (m_clock && m_placement.overlaps(agent, records))
        m_amendments.note(agent, records, m_clock());
    m_placement.storeNow(agent, records);
    if (m_clock)
        m_amendments.stored(agent, records);
}

void SqliteAppender::forget()
{
    m_placement.forget();
    m_storable.forget();
    m_amendments.forget();
}

}  // namespace plotix
