#include "records/sqlite/ChunkRoom.h"

#include "records/sqlite/RecordSchema.h"

#include <QtCore/QFileInfo>

namespace plotix {

ChunkRoom::ChunkRoom(Database& database, std::uint64_t copies, std::uint64_t memory)
    : m_database(database),
      m_copies(copies),
      m_memory(memory),
      m_segments(database, "SELECT count(*) FROM segment WHERE id >= ? AND id < ?")
{
}

void ChunkRoom::require(const Chunk& chunk)
{
    if (m_memory == 0)
        return;
    const qint64 first = chunk.id * schema::kPropertiesPerChunk;
    m_segments.bind(1, first).bind(2, first + schema::kPropertiesPerChunk);
    const auto columns = static_cast<std::uint64_t>(m_segments.step() ? m_segments.integer(0) : 0);
    m_segments.reset();
    const std::uint64_t needed = m_copies * columns * chunk.n * sizeof(double);
    if (needed <= m_memory)
        return;
    throw TooLittleMemory(
        QStringLiteral("“%1” has %2 columns of %3 records in one place, which need %4 MB, more than the memory budget "
                       "of %5 MB: raise PLOTIX_MEMORY_BUDGET.")
            .arg(QFileInfo(m_database.file()).fileName())
            .arg(columns)
            .arg(chunk.n)
            .arg(needed / 1'000'000 + 1)
            .arg(m_memory / 1'000'000));
}

}  // namespace plotix
