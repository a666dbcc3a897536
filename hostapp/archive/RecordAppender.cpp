#include "hostapp/archive/RecordAppender.h"

#include "hostapp/archive/ChunkStore.h"

namespace plotix {

struct RecordAppender::Impl {
    explicit Impl(const QString& file) : database(file, Database::Access::ReadWrite), chunks(database) {}

    RecordWriter& writer()
    {
        if (!current)
            current.reset(new RecordWriter(database));
        return *current;
    }

    Database database;
    ChunkStore chunks;
    std::unique_ptr<RecordWriter> current;  // kept for its prepared statements; empty after a failure
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
        RecordWriter& writer = m_impl->writer();
        writer.store(agent, block);
        writer.flush();
        m_impl->database.commit();
    } catch (...) {
        // The writer may hold records that the file does not.
        m_impl->current.reset();
        m_impl->database.rollBack();
        throw;
    }
}

std::optional<double> RecordAppender::lastTime(RowId agent)
{
    const std::optional<Chunk> last = m_impl->chunks.lastChunk(agent);
    return last ? std::optional(last->t1) : std::nullopt;
}

}  // namespace plotix
