#include "records/sqlite/ArchiveVerification.h"

#include "base/ReportableError.h"
#include "records/columns/ColumnFormat.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/AmendmentTable.h"
#include "records/sqlite/ChangedColumn.h"
#include "records/sqlite/ChunkRoom.h"
#include "records/sqlite/ChunkStore.h"
#include "records/sqlite/IndexStore.h"
#include "records/sqlite/Outlining.h"
#include "records/sqlite/RecordSchema.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kShareOfStructure = 0.1;  // of the progress: the database's own check
constexpr std::uint64_t kCopies = 2;       // of a chunk: what is packed, and what is read
constexpr double kSumTolerance = 1e-10;    // of the sum of magnitudes: sums are added up in more than one order

class Verification {
public:
    Verification(const QString& file, const DatabaseSchema& schema, const ArchiveProgress& progress,
                 std::uint64_t memory)
        : m_progress(progress),
          m_database(file, schema, Database::Access::BestAvailable),
          m_chunks(m_database),
          m_index(m_database),
          m_room(m_database, kCopies, memory)
    {
    }
    ~Verification() { m_database.rollBack(); }
    Verification(const Verification&) = delete;
    Verification& operator=(const Verification&) = delete;

    VerificationResult run()
    {
        m_database.execute("BEGIN");
        step([this] { checkStructure(); });
        step([this] { checkOrphans(); });
        step([this] { checkOutlines(); });
        step([this] { checkAmendments(); });
        step([this] { checkAgents(); });
        if (!m_result.stopped && m_progress)
            m_progress(1);
        return m_result;
    }

private:
    /// What a check cannot read is a finding too.
    template <class Check>
    void step(Check check)
    {
        if (m_result.stopped)
            return;
        try {
            check();
        } catch (const TooLittleMemory&) {
            throw;
        } catch (const ReportableError& error) {
            find(error.message());
        }
    }

    void find(const QString& text)
    {
        if (m_result.findings.size() >= VerificationResult::kMostFindings)
            m_result.moreFindings = true;
        else
            m_result.findings << text;
    }

    void goOn(double fraction) { m_result.stopped = m_result.stopped || (m_progress && !m_progress(fraction)); }

    void checkStructure()
    {
        goOn(0);
        Statement check(m_database, "PRAGMA integrity_check");
        while (!m_result.stopped && check.step())
            if (check.text(0) != QLatin1String("ok"))
                find(QStringLiteral("The database is damaged: %1").arg(check.text(0).simplified()));
        goOn(kShareOfStructure);
    }

    bool hasTable(const char* name)
    {
        Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?");
        return table.bind(1, QString::fromLatin1(name)).step();
    }

    /// Columns of retired chunks are those of nobody but who still reads them.
    void checkOrphans()
    {
        const QByteArray retired = hasTable("retired") ? " UNION SELECT chunk FROM retired" : "";
        for (const char* table : {"segment", "summary", "run"}) {
            if (table == QLatin1String("run") && !m_index.exists())
                continue;
            const QByteArray sql = QByteArray("SELECT count(*) FROM ") + table +
                                   " WHERE id / 1048576 NOT IN (SELECT id FROM chunk" +
                                   (table == QLatin1String("segment") ? retired : QByteArray()) + ")";
            Statement count(m_database, sql.constData());
            if (count.step() && count.integer(0) > 0)
                find(QStringLiteral("%1 rows of the table “%2” belong to no chunk.")
                         .arg(count.integer(0))
                         .arg(QLatin1String(table)));
        }
        if (!hasTable("tail"))
            return;
        // Those of agents that are not there are found with their agent.
        Statement count(m_database, "SELECT count(*) FROM tail WHERE id < ?");
        if (count.bind(1, schema::kRowsPerTail).step() && count.integer(0) > 0)
            find(QStringLiteral("%1 rows of the table “tail” belong to no agent.").arg(count.integer(0)));
    }

    void checkOutlines()
    {
        if (!m_chunks.outlines().exists())
            return;
        Statement count(m_database, "SELECT (SELECT count(*) FROM outlined WHERE id / 1048576 NOT IN (SELECT id FROM "
                                    "outline)) + (SELECT count(*) FROM outline WHERE agent NOT IN (SELECT agent FROM "
                                    "chunk))");
        if (count.step() && count.integer(0) > 0)
            find(QStringLiteral("%1 rows of outlines belong to no chunks.").arg(count.integer(0)));
    }

    /// A document of a version before has none.
    void checkAmendments()
    {
        if (!AmendmentTable(m_database).exists())
            return;
        Statement count(m_database, "SELECT count(*) FROM amendment WHERE NOT (t0 <= t1) OR NOT (first <= last) "
                                    "OR kind NOT IN (1, 2) OR property NOT IN (SELECT id FROM property)");
        if (count.step() && count.integer(0) > 0)
            find(QStringLiteral("%1 rows of the table “amendment” make no sense.").arg(count.integer(0)));
    }

    void checkAgents()
    {
        Statement count(m_database, "SELECT count(*) FROM chunk");
        m_total = count.step() ? static_cast<double>(count.integer(0)) : 0;
        for (const RowId agent : m_chunks.agents())
            step([&] { checkAgent(agent); });
    }

    void checkAgent(RowId agent)
    {
        readProperties(agent);
        readOutlines(agent);
        double last = -kInfinity;
        Statement rows(m_database, "SELECT id, t0, t1, n FROM chunk WHERE agent = ? ORDER BY t0, id");
        rows.bind(1, agent);
        while (!m_result.stopped && rows.step()) {
            const Chunk chunk{rows.integer(0), rows.real(1), rows.real(2),
                              static_cast<std::size_t>(std::max<qint64>(rows.integer(3), 0))};
            if (!(chunk.t0 > last))
                findInChunk(chunk, QStringLiteral("overlaps the one before it"));
            last = std::max(last, chunk.t1);
            if (!chunk.isPossible())
                findInChunk(chunk, QStringLiteral("is impossible: its number, times or length make no sense"));
            else
                step([&] { checkChunk(chunk); });
            ++m_result.chunks;
            goOn(kShareOfStructure + (1 - kShareOfStructure) * static_cast<double>(m_result.chunks) / m_total);
        }
        step([&] { checkTail(agent, last); });
    }

    void readProperties(RowId agent)
    {
        m_agent = agent;
        m_properties.clear();
        Statement name(m_database, "SELECT 1 FROM agent WHERE id = ?");
        if (!name.bind(1, agent).step())
            find(QStringLiteral("There are records of an agent that is not there (%1).").arg(agent));
        Statement properties(m_database, "SELECT id FROM property WHERE agent = ? ORDER BY id");
        properties.bind(1, agent);
        while (properties.step())
            m_properties.push_back(properties.integer(0));
    }

    /// Those left are of the chunks they say; whether they say the truth, the chunks will tell.
    void readOutlines(RowId agent)
    {
        m_outlines = m_chunks.outlines().between(agent, -kInfinity, kInfinity);
        std::size_t unreadable = 0;  // of chunks that will be found themselves
        std::erase_if(m_outlines, [&](const Outline& each) {
            try {
                const std::vector<Chunk> chunks = m_chunks.chunksBetween(agent, each.t0, each.t1);
                return chunks.size() != each.chunks.size() || !each.isOf(chunks);
            } catch (const ReportableError&) {
                ++unreadable;
                return true;
            }
        });
        const std::size_t damaged = m_chunks.outlines().ids(agent).size() - m_outlines.size() - unreadable;
        if (damaged > 0)
            find(QStringLiteral("%1 outlines of agent %2 are damaged; its records are read instead, and compacting "
                                "makes new ones.")
                     .arg(damaged)
                     .arg(agent));
    }

    void checkChunk(const Chunk& chunk)
    {
        m_room.require(chunk);
        std::vector<RowId> changed;
        const Records records = m_chunks.readUnchanged(chunk, changed);
        const RecordsView view = records.view();
        for (const RowId property : changed)
            findInChunk(chunk, QStringLiteral("is damaged: %1").arg(changedColumn(m_database, property, chunk)));
        if (records.isEmpty())
            return;
        tally(view);
        if (changed.empty())
            addToOutline(chunk, view);
        if (!view.isOrdered())
            findInChunk(chunk, QStringLiteral("has times that do not rise"));
        if (view.times[0] != chunk.t0 || view.times[view.size - 1] != chunk.t1)
            findInChunk(chunk, QStringLiteral("has other times than it says"));
        std::size_t summaries = static_cast<std::size_t>(
            std::count_if(changed.begin(), changed.end(), [&](RowId each) { return hasSummary(chunk, each); }));
        for (const RecordsView::Column& column : view.columns) {
            if (!std::binary_search(m_properties.begin(), m_properties.end(), column.property))
                findInChunk(
                    chunk,
                    QStringLiteral("has values of a property that is not its agent's (%1)").arg(column.property));
            summaries += checkSummary(chunk, column) ? 1 : 0;
        }
        Statement count(m_database, "SELECT count(*) FROM summary WHERE id >= ? AND id < ?");
        count.bind(1, chunk.id * schema::kPropertiesPerChunk).bind(2, (chunk.id + 1) * schema::kPropertiesPerChunk);
        if (count.step() && static_cast<std::size_t>(count.integer(0)) != summaries)
            findInChunk(chunk, QStringLiteral("has summaries of values that are not there"));
        checkTimesOfRuns(chunk, view);
    }

    /// Chunks come in time order. An outline of which one cannot be read is not looked at: that is found already.
    void addToOutline(const Chunk& chunk, const RecordsView& records)
    {
        const auto stored = std::find_if(m_outlines.begin(), m_outlines.end(), [&](const Outline& each) {
            return each.t0 <= chunk.t0 && chunk.t0 <= each.t1;
        });
        if (stored == m_outlines.end())
            return;
        if (m_outlined != stored->id)
            m_outline = {};
        m_outlined = stored->id;
        m_outline.add(chunk, ChunkFigures::of(records));
        if (m_outline.chunks() == stored->chunks.size() && !m_outline.isToldBy(m_chunks.outlines(), *stored))
            findInChunk(chunk, QStringLiteral("is in an outline that is damaged; its records are read instead, and "
                                              "compacting makes a new one"));
    }

    bool hasSummary(const Chunk& chunk, RowId property)
    {
        Statement row(m_database, "SELECT 1 FROM summary WHERE id = ?");
        return row.bind(1, chunk.id * schema::kPropertiesPerChunk + property).step();
    }

    /// Of an earlier version, a chunk has none.
    void checkTimesOfRuns(const Chunk& chunk, const RecordsView& view)
    {
        const IndexStore::FoundTimes found = m_index.findTimes(chunk);
        Statement codec(m_database, "SELECT codec FROM segment WHERE id = ?");
        const bool isSealed = codec.bind(1, chunk.id * schema::kPropertiesPerChunk).step() &&
                              sealed::isSealed(static_cast<int>(codec.integer(0)));
        const bool isMissing = found.state == IndexStore::State::Absent && isSealed;
        const bool isOther =
            found.state == IndexStore::State::Sound && !(found.times == runTimesOf({view.times, view.size}));
        if (isMissing || isOther || found.state == IndexStore::State::Damaged)
            findInChunk(chunk, QStringLiteral("has a damaged index of its times; they are read themselves instead, and "
                                              "compacting makes a new one"));
    }

    void checkIndex(const Chunk& chunk, const RecordsView::Column& column)
    {
        const IndexStore::Found found = m_index.find(chunk, column.property, true);
        if (found.state == IndexStore::State::Absent)
            return;
        ColumnIndex wanted = indexOf(column, chunk.n);
        while (found.index.runLength > wanted.runLength && wanted.runs.size() > 1)
            wanted = wanted.coarser();
        if (found.state == IndexStore::State::Damaged || !found.index.agreesWith(wanted))
            findInChunk(chunk, QStringLiteral("has a damaged index of property %1; its values are read instead, and "
                                              "compacting makes a new one")
                                   .arg(column.property));
    }

    /// False: there is none.
    bool checkSummary(const Chunk& chunk, const RecordsView::Column& column)
    {
        Statement row(m_database, "SELECT valid, minimum, maximum, sum FROM summary WHERE id = ?");
        if (!row.bind(1, chunk.id * schema::kPropertiesPerChunk + column.property).step()) {
            findInChunk(chunk, QStringLiteral("has no summary of property %1").arg(column.property));
            return false;
        }
        const Summary wanted = summaryOf(column, chunk.n);
        const double sum = row.isNothing(3) ? absentValue() : row.real(3);
        const bool sameSum = (std::isnan(sum) && std::isnan(wanted.sum)) || sum == wanted.sum ||
                             std::abs(sum - wanted.sum) <= kSumTolerance * magnitude(column, chunk.n);
        const bool same = row.integer(0) == static_cast<qint64>(wanted.valid) && row.real(1) == wanted.minimum &&
                          row.real(2) == wanted.maximum && sameSum;
        if (!same)
            findInChunk(chunk,
                        QStringLiteral("has another summary of property %1 than its values").arg(column.property));
        else
            checkIndex(chunk, column);
        return true;
    }

    static double magnitude(const RecordsView::Column& column, std::size_t count)
    {
        double sum = 0;
        for (std::size_t i = 0; i < count; ++i)
            if (!std::isnan(column.values[i]) && bits::get(column.valid, column.firstValid + i, 1) != 0)
                sum += std::abs(column.values[i]);
        return sum;
    }

    void checkTail(RowId agent, double last)
    {
        const Records tail = m_chunks.tail(agent, -kInfinity, kInfinity);
        tally(tail.view());
        if (!tail.isEmpty() && !(tail.view().times[0] > last))
            find(QStringLiteral("The tail of agent %1 does not lie behind its chunks.").arg(agent));
        for (const RecordsView::Column& column : tail.view().columns)
            if (!std::binary_search(m_properties.begin(), m_properties.end(), column.property))
                find(QStringLiteral("The tail of agent %1 has values of a property that is not its own (%2).")
                         .arg(agent)
                         .arg(column.property));
    }

    void tally(const RecordsView& records)
    {
        m_result.records += records.size;
        for (const RecordsView::Column& column : records.columns)
            for (std::size_t i = 0; i < records.size; ++i)
                m_result.values += bits::get(column.valid, column.firstValid + i, 1);
    }

    void findInChunk(const Chunk& chunk, const QString& what)
    {
        find(QStringLiteral("Chunk %1 of agent %2 %3.").arg(chunk.id).arg(m_agent).arg(what));
    }

    const ArchiveProgress& m_progress;
    Database m_database;
    ChunkStore m_chunks;
    IndexStore m_index;
    ChunkRoom m_room;
    VerificationResult m_result;
    RowId m_agent = 0;
    std::vector<RowId> m_properties;  // of the agent, ascending
    std::vector<Outline> m_outlines;  // of the agent, in time order
    OutlineInWork m_outline;          // of the chunks of the one that was begun last
    qint64 m_outlined = 0;            // that one
    double m_total = 0;               // chunks
};

}  // namespace

VerificationResult verifyArchive(const QString& file, const DatabaseSchema& schema, const ArchiveProgress& progress,
                                 std::uint64_t memory)
{
    return Verification(file, schema, progress, memory).run();
}

}  // namespace plotix
