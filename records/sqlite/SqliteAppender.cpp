#include "records/sqlite/SqliteAppender.h"

#include "records/sqlite/ReadConnections.h"
#include "records/sqlite/RecordPlacement.h"
#include "records/sqlite/StorableRecords.h"
#include "storage/LogCheckpointer.h"

namespace plotix {

struct RecordAppender::Impl {
    explicit Impl(const QString& file)
        : database(file, Database::Access::ReadWrite),
          chunks(database),
          placement(chunks),
          storable(database),
          checkpointer(database)
    {
    }

    void store(RowId agent, const RecordBlock& block)
    {
        if (database.dataVersion() != version)
            forget();
        storable.require(agent, block);
        const RecordsView view = RecordsView::of(block);
        if (view.isOrdered())
            placement.storeNow(agent, view);
        else
            placement.storeNow(agent, Records::ordered(view).view());
    }
    void forget()
    {
        placement.forget();
        storable.forget();
    }

    Database database;
    ChunkStore chunks;
    RecordPlacement placement;
    StorableRecords storable;
    LogCheckpointer checkpointer;
    unsigned version = 0;  // of the document that placement and storable know
};

RecordAppender::RecordAppender(const QString& file) : m_impl(std::make_unique<Impl>(file)) {}
RecordAppender::~RecordAppender() = default;

void RecordAppender::setPatience(int milliseconds)
{
    m_impl->database.setPatience(milliseconds);
}

void RecordAppender::append(RowId agent, const RecordBlock& block)
{
    m_impl->database.beginWriting();
    try {
        m_impl->store(agent, block);
        m_impl->database.commit();
        m_impl->version = m_impl->database.dataVersion();
    } catch (...) {
        m_impl->forget();
        m_impl->database.rollBack();
        throw;
    }
}

// Another writer may make the tail a chunk between two looks.
std::optional<double> RecordAppender::lastTime(RowId agent)
{
    const ReadTransaction transaction(m_impl->database);
    return m_impl->chunks.lastTime(agent);
}

}  // namespace plotix
