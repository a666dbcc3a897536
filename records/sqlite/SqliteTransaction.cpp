#include "base/ReportableError.h"
#include "records/sqlite/RecordPlacement.h"
#include "records/sqlite/StorableRecords.h"

namespace plotix {

struct RecordWriter::Impl {
    Impl(std::unique_ptr<Database> connection, Database& used)
        : own(std::move(connection)), database(used), chunks(used), placement(chunks), storable(used)
    {
    }
    ~Impl()
    {
        if (own)
            own->rollBack();
    }

    std::unique_ptr<Database> own;  // empty inside a transaction of the caller's
    Database& database;
    ChunkStore chunks;
    RecordPlacement placement;
    StorableRecords storable;
    bool finished = false;
};

RecordWriter::RecordWriter(const QString& file)
{
    auto connection = std::make_unique<Database>(file, Database::Access::ReadWrite);
    Database& database = *connection;
    database.beginWriting();
    m_impl = std::make_unique<Impl>(std::move(connection), database);
}

RecordWriter::RecordWriter(Database& database) : m_impl(std::make_unique<Impl>(nullptr, database)) {}
RecordWriter::~RecordWriter() = default;

void RecordWriter::store(RowId agent, const RecordBlock& block)
{
    if (m_impl->finished)
        throw ReportableError(QStringLiteral("These records were stored already: begin again to store more."));
    m_impl->storable.require(agent, block);
    const RecordsView view = RecordsView::of(block);
    if (view.isOrdered())
        m_impl->placement.store(agent, view);
    else
        m_impl->placement.store(agent, Records::ordered(view).view());
}

void RecordWriter::flush()
{
    m_impl->placement.flush();
}

void RecordWriter::commit()
{
    if (m_impl->finished)
        return;
    flush();
    if (!m_impl->own)
        return;
    m_impl->database.commit();
    m_impl->finished = true;
}

}  // namespace plotix
