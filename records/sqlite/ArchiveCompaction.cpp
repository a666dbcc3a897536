#include "records/sqlite/ArchiveCompaction.h"

#include "base/ReportableError.h"
#include "records/columns/ColumnFormat.h"
#include "records/sqlite/AmendmentTable.h"
#include "records/sqlite/ChunkRoom.h"
#include "records/sqlite/ChunkStore.h"
#include "records/sqlite/IndexStore.h"
#include "records/sqlite/Outlining.h"
#include "records/sqlite/RecordSchema.h"

#include <QtCore/QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kChunk = schema::kRecordsPerChunk;
constexpr std::size_t kChunksPerTransaction = 64;  // other writers wait for these, and the log holds them
constexpr double kShareOfJoining = 0.9;            // of the progress; the rest is giving the space back
constexpr std::uint64_t kCopies = 4;  // of a chunk: what is read, what waits, and both while they are joined

qint64 bytesOf(const QString& file)
{
    return QFileInfo(file).size() + QFileInfo(file + QStringLiteral("-wal")).size();
}

class Compaction {
public:
    Compaction(const QString& file, const DatabaseSchema& schema, const CompactionRequest& request,
               const ArchiveProgress& progress)
        : m_request(request),
          m_progress(progress),
          m_database(file, schema, Database::Access::ReadWrite),
          m_chunks(m_database),
          m_room(m_database, kCopies, request.memory),
          m_index(m_database),
          m_oddSegments(m_database, "SELECT coalesce(sum(codec = 16), 0), coalesce(sum(codec < 16), 0) FROM segment "
                                    "WHERE id >= ? AND id < ?")
    {
    }
    ~Compaction() { m_database.rollBack(); }
    Compaction(const Compaction&) = delete;
    Compaction& operator=(const Compaction&) = delete;

    CompactionResult run()
    {
        m_result.bytesBefore = bytesOf(m_database.file());
        m_result.chunksBefore = static_cast<std::size_t>(ask("SELECT count(*) FROM chunk"));
        for (const RowId agent : m_chunks.agents())
            if (!m_result.stopped)
                joinAgent(agent);
        if (!m_result.stopped && m_request.dropBefore)
            dropAmendments();
        dropRetired();
        m_result.chunksAfter = static_cast<std::size_t>(ask("SELECT count(*) FROM chunk"));
        m_result.records =
            static_cast<std::size_t>(ask("SELECT coalesce(sum(n), 0) FROM chunk") + ask("SELECT count(*) FROM tail"));
        if (!m_result.stopped && m_request.giveSpaceBack)
            giveSpaceBack();
        m_result.bytesAfter = bytesOf(m_database.file());
        if (!m_result.stopped && m_progress)
            m_progress(1);
        return m_result;
    }

private:
    qint64 ask(const char* sql)
    {
        Statement statement(m_database, sql);
        return statement.step() ? statement.integer(0) : 0;
    }

    /// Those of records that went.
    void dropAmendments()
    {
        m_database.beginWriting();
        std::vector<RowId> properties;
        Statement amended(m_database, "SELECT DISTINCT property FROM amendment");
        while (amended.step())
            properties.push_back(amended.integer(0));
        AmendmentTable(m_database).remove(properties, -kInfinity, std::nextafter(*m_request.dropBefore, -kInfinity));
        m_database.commit();
    }

    /// What the last transaction replaced, unless somebody still reads it.
    void dropRetired()
    {
        m_database.beginWriting();
        m_chunks.dropRetired();
        m_database.commit();
    }

    void joinAgent(RowId agent)
    {
        double from = -kInfinity;  // everything before it is compacted
        for (bool more = true; more;) {
            if (m_progress && !m_progress(shareSeen())) {
                m_result.stopped = true;
                return;
            }
            m_database.beginWriting();
            more = joinSome(agent, from);
            m_database.commit();
        }
        outlineAgent(agent);
    }

    void outlineAgent(RowId agent)
    {
        double from = -kInfinity;  // everything before it is outlined
        for (bool more = true; more;) {
            if (m_progress && !m_progress(shareSeen())) {
                m_result.stopped = true;
                return;
            }
            m_database.beginWriting();
            more = Outlining(m_chunks).completeSome(agent, from);
            m_database.commit();
        }
    }

    double shareSeen() const
    {
        const double total = static_cast<double>(std::max(m_result.chunksBefore, m_seen + 1));
        return kShareOfJoining * static_cast<double>(m_seen) / total;
    }

    /// Joins the next chunks of an agent, and after the last one its tail. True when there are more.
    bool joinSome(RowId agent, double& from)
    {
        std::vector<Chunk> chunks = m_chunks.chunksBetween(agent, from, kInfinity);
        const bool more = chunks.size() > kChunksPerTransaction;
        if (more)
            chunks.resize(kChunksPerTransaction);
        Records waiting;
        for (const Chunk& chunk : chunks) {
            const bool isEnd = !more && chunk.id == chunks.back().id && m_chunks.tailExtent(agent).count == 0;
            if (waiting.isEmpty() && mayStay(chunk, isEnd))
                continue;
            m_room.require(chunk);
            waiting.append(kept(m_chunks.read(chunk)));
            m_chunks.remove(chunk);
            write(agent, waiting, kChunk);
        }
        m_seen += chunks.size();
        if (!more && m_chunks.tailExtent(agent).count > 0) {
            waiting.append(kept(m_chunks.tail(agent, -kInfinity, kInfinity)));
            m_chunks.tailRows().clear(agent);
            write(agent, waiting, kChunk);
        }
        // The rest is read again by the next transaction, so that no record is in memory alone.
        from = waiting.isEmpty() ? (chunks.empty() ? kInfinity : std::nextafter(chunks.back().t1, kInfinity))
                                 : waiting.view().times[0];
        write(agent, waiting, 1);
        return more;
    }

    /// Whether the chunk is full or the last one, holds nothing too old, has checksums and a sound index, and is
    /// written as compactly as possible.
    bool mayStay(const Chunk& chunk, bool isEnd)
    {
        if ((chunk.n < kChunk && !isEnd) || (m_request.dropBefore && chunk.t0 < *m_request.dropBefore))
            return false;
        const qint64 first = chunk.id * schema::kPropertiesPerChunk;
        m_oddSegments.bind(1, first).bind(2, first + schema::kPropertiesPerChunk).step();
        const qint64 raw = m_oddSegments.integer(0);
        const qint64 unsealed = m_oddSegments.integer(1);
        m_oddSegments.reset();
        if (unsealed > 0 || !m_index.isSound(chunk))
            return false;
        if (raw == 0)
            return true;
        // Some columns cannot be written more compactly.
        m_room.require(chunk);
        const EncodedChunk encoded = encodedChunk(m_chunks.read(chunk).view());
        return std::count_if(encoded.segments.begin(), encoded.segments.end(),
                             [](const auto& segment) { return segment.values.codec == schema::Codec::Raw; }) >= raw;
    }

    /// Without the records that are too old.
    RecordsView kept(Records&& records)
    {
        m_read = std::move(records);
        const RecordsView view = m_read.view();
        if (!m_request.dropBefore)
            return view;
        const double* first = std::lower_bound(view.times, view.times + view.size, *m_request.dropBefore);
        const auto old = static_cast<std::size_t>(first - view.times);
        m_result.dropped += old;
        return view.slice(old, view.size - old);
    }

    /// Writes chunks while `atLeast` records wait.
    void write(RowId agent, Records& waiting, std::size_t atLeast)
    {
        std::size_t written = 0;
        while (waiting.size() - written >= atLeast) {
            const std::size_t count = std::min(kChunk, waiting.size() - written);
            m_chunks.write(agent, waiting.view().slice(written, count));
            written += count;
        }
        if (written > 0)
            waiting.dropFirst(written);
    }

    void giveSpaceBack()
    {
        if (ask("PRAGMA freelist_count") > 0) {
            const int result = sqlite3_exec(m_database.handle(), "VACUUM", nullptr, nullptr, nullptr);
            if ((result & 0xFF) == SQLITE_FULL)
                failForSpace();
            if (result != SQLITE_OK)
                m_database.fail(result);
        }
        // Readers may prevent this; then the file is shortened when the last connection is closed.
        sqlite3_wal_checkpoint_v2(m_database.handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }

    [[noreturn]] void failForSpace()
    {
        const qint64 pages = ask("PRAGMA page_count") - ask("PRAGMA freelist_count");
        throw ReportableError(
            QStringLiteral("“%1” is compacted, but giving its space back needs about %2 MB of free disk "
                           "space beside it and among the temporary files: free some and try again.")
                .arg(QFileInfo(m_database.file()).fileName())
                .arg(2 * pages * m_database.schema().pageSize / 1'000'000 + 1));
    }

    const CompactionRequest& m_request;
    const ArchiveProgress& m_progress;
    Database m_database;
    ChunkStore m_chunks;
    ChunkRoom m_room;
    IndexStore m_index;
    Statement m_oddSegments;  // plain ones, and those without a checksum
    CompactionResult m_result;
    Records m_read;          // what the view answered by `kept` borrows
    std::size_t m_seen = 0;  // chunks
};

}  // namespace

CompactionResult compactArchive(const QString& file, const DatabaseSchema& schema, const CompactionRequest& request,
                                const ArchiveProgress& progress)
{
    CompactionResult result = Compaction(file, schema, request, progress).run();
    result.bytesAfter = bytesOf(file);
    return result;
}

}  // namespace plotix
