#include "hostapp/archive/ChunkStore.h"
#include "hostapp/archive/ColumnMemory.h"
#include "hostapp/archive/SiteSchema.h"
#include "hostapp/archive/ValidityBits.h"
#include "hostapp/core/HostError.h"

#include <algorithm>
#include <limits>
#include <sqlite3.h>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A snapshot of the document for as long as it lives.
class ReadTransaction {
public:
    explicit ReadTransaction(Database& database) : m_database(database) { m_database.execute("BEGIN"); }
    ~ReadTransaction() { m_database.rollBack(); }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    Database& m_database;
};

/// The records of a chunk that lie inside the range asked for, and where they go.
struct Part {
    Chunk chunk;
    std::size_t first = 0;  ///< in the chunk
    std::size_t count = 0;
    std::size_t target = 0;  ///< in the result
};

/// Copies segments straight from the file's pages into the result. Lives inside one read transaction.
class SegmentReader {
public:
    explicit SegmentReader(Database& database)
        : m_database(database), m_segment(database, "SELECT codec, valid FROM segment WHERE id = ?")
    {
    }
    ~SegmentReader() { sqlite3_blob_close(m_blob); }
    SegmentReader(const SegmentReader&) = delete;
    SegmentReader& operator=(const SegmentReader&) = delete;

    /// False when the chunk has no such segment. `valid` gets the chunk's words, none when all are valid.
    bool read(const Part& part, RowId property, double* values, std::vector<std::uint64_t>* valid)
    {
        const qint64 id = part.chunk.id * schema::kPropertiesPerChunk + property;
        m_segment.bind(1, id);
        if (!m_segment.step()) {
            m_segment.reset();
            return false;
        }
        readValid(part, valid);
        m_segment.reset();
        readValues(id, part, values);
        return true;
    }

private:
    void readValid(const Part& part, std::vector<std::uint64_t>* valid)
    {
        if (m_segment.integer(0) != static_cast<int>(schema::Codec::Raw))
            m_database.failAsDamaged(QStringLiteral("chunk %1 has an unknown codec").arg(part.chunk.id));
        if (!valid)
            return;
        valid->clear();
        if (m_segment.isNothing(1))
            return;
        if (m_segment.byteCount(1) != (part.chunk.n + 7) / 8)
            failAsWrongLength(part);
        valid->assign(bits::wordsFor(part.chunk.n), 0);
        std::memcpy(valid->data(), m_segment.rawBytes(1), m_segment.byteCount(1));
    }

    void readValues(qint64 id, const Part& part, double* values)
    {
        const int found = m_blob ? sqlite3_blob_reopen(m_blob, id)
                                 : sqlite3_blob_open(m_database.handle(), "main", "segment", "data", id, 0, &m_blob);
        if (found != SQLITE_OK)
            m_database.fail(found);
        if (static_cast<std::size_t>(sqlite3_blob_bytes(m_blob)) != part.chunk.n * sizeof(double))
            failAsWrongLength(part);
        const int done = sqlite3_blob_read(m_blob, values, static_cast<int>(part.count * sizeof(double)),
                                           static_cast<int>(part.first * sizeof(double)));
        if (done != SQLITE_OK)
            m_database.fail(done);
    }

    [[noreturn]] void failAsWrongLength(const Part& part) const
    {
        m_database.failAsDamaged(QStringLiteral("chunk %1 has a segment of the wrong length").arg(part.chunk.id));
    }

    Database& m_database;
    Statement m_segment;
    sqlite3_blob* m_blob = nullptr;
};

/// One property's column while it is filled: validity words appear with the first element that is not valid.
struct ColumnInWork {
    ColumnInWork(RowId row, std::size_t total) : property(row), size(total), values(allocateColumn<double>(total)) {}

    void invalidate(const Part& part)
    {
        std::fill_n(values.get() + part.target, part.count, absentValue());
        const std::vector<std::uint64_t> none(bits::wordsFor(part.count), 0);
        setValidity(none.data(), 0, part);
    }
    void setValidity(const std::uint64_t* from, std::size_t first, const Part& part)
    {
        if (!words && bits::allSet(from, first, part.count))
            return;
        if (!words) {
            words = allocateColumn<std::uint64_t>(bits::wordsFor(size));
            std::fill_n(words.get(), bits::wordsFor(size), ~std::uint64_t{0});
        }
        bits::copy(from, first, words.get(), part.target, part.count);
    }
    RecordBlock::Column finished() const
    {
        return {property, SharedArray<double>(values, size),
                words ? ValidityBitmap(SharedArray<std::uint64_t>(words, bits::wordsFor(size))) : ValidityBitmap()};
    }

    RowId property;
    std::size_t size;
    std::shared_ptr<double> values;
    std::shared_ptr<std::uint64_t> words;
};

}  // namespace

struct RecordReader::Impl {
    explicit Impl(const QString& file) : database(file, Database::Access::BestAvailable), chunks(database) {}

    /// The parts of the chunks in [from, to]; only the outer chunks' times need a look.
    std::vector<Part> parts(SegmentReader& segments, RowId agent, double from, double to)
    {
        std::vector<Part> parts;
        std::vector<double> times;
        std::size_t total = 0;
        for (const Chunk& chunk : chunks.chunksBetween(agent, from, to)) {
            Part part{chunk, 0, chunk.n, total};
            if (chunk.t0 < from || chunk.t1 > to) {
                times.resize(chunk.n);
                readTimes(segments, part, times.data());
                const auto first = std::lower_bound(times.begin(), times.end(), from);
                const auto end = std::upper_bound(first, times.end(), to);
                part.first = static_cast<std::size_t>(first - times.begin());
                part.count = static_cast<std::size_t>(end - first);
            }
            total += part.count;
            if (part.count > 0)
                parts.push_back(part);
        }
        return parts;
    }

    void readTimes(SegmentReader& segments, const Part& part, double* times)
    {
        if (!segments.read(part, schema::kTimes, times, nullptr))
            database.failAsDamaged(QStringLiteral("chunk %1 has no times").arg(part.chunk.id));
        const bool fits = (part.first > 0 || times[0] == part.chunk.t0) &&
                          (part.first + part.count < part.chunk.n || times[part.count - 1] == part.chunk.t1);
        if (!fits)
            database.failAsDamaged(QStringLiteral("chunk %1 has other times than it says").arg(part.chunk.id));
    }

    Database database;
    ChunkStore chunks;
};

RecordReader::RecordReader(const QString& file) : m_impl(std::make_unique<Impl>(file)) {}
RecordReader::~RecordReader() = default;

std::optional<RecordBlock> RecordReader::read(RowId agent, std::span<const RowId> properties,
                                              std::optional<double> from, std::optional<double> to,
                                              const ArchiveProgress& progress)
{
    ReadTransaction transaction(m_impl->database);
    SegmentReader segments(m_impl->database);
    const std::vector<Part> parts = m_impl->parts(segments, agent, from.value_or(-kInfinity), to.value_or(kInfinity));
    const std::size_t total = parts.empty() ? 0 : parts.back().target + parts.back().count;
    const std::shared_ptr<double> times = allocateColumn<double>(total);
    std::vector<ColumnInWork> columns;
    for (const RowId property : properties)
        columns.emplace_back(property, total);

    std::vector<std::uint64_t> valid;
    for (const Part& part : parts) {
        if (progress && !progress(static_cast<double>(part.target) / static_cast<double>(total)))
            return std::nullopt;
        m_impl->readTimes(segments, part, times.get() + part.target);
        for (ColumnInWork& column : columns)
            if (segments.read(part, column.property, column.values.get() + part.target, &valid))
                column.setValidity(valid.empty() ? nullptr : valid.data(), part.first, part);
            else
                column.invalidate(part);
    }
    if (progress && !progress(1.0))
        return std::nullopt;

    RecordBlock block{SharedArray<double>(times, total), {}};
    for (const ColumnInWork& column : columns)
        block.columns.push_back(column.finished());
    return block;
}

ArchiveSummary RecordReader::summary(RowId agent)
{
    Statement statement(m_impl->database, "SELECT count(*), sum(n), min(t0), max(t1) FROM chunk WHERE agent = ?");
    statement.bind(1, agent);
    if (!statement.step() || statement.integer(0) == 0)
        return {};
    return {static_cast<std::size_t>(statement.integer(1)), statement.real(2), statement.real(3)};
}

ColumnStatistics RecordReader::statistics(RowId agent, RowId property, std::optional<double> from,
                                          std::optional<double> to)
{
    ReadTransaction transaction(m_impl->database);
    SegmentReader segments(m_impl->database);
    Statement stored(m_impl->database, "SELECT valid, minimum, maximum, sum FROM summary WHERE id = ?");
    Summary sum;
    std::vector<double> values;
    std::vector<std::uint64_t> valid;
    for (const Part& part : m_impl->parts(segments, agent, from.value_or(-kInfinity), to.value_or(kInfinity))) {
        if (part.count == part.chunk.n) {
            stored.bind(1, part.chunk.id * schema::kPropertiesPerChunk + property);
            if (stored.step())
                // A sum that is no number (infinities of both signs) is stored as nothing.
                sum.add({static_cast<std::size_t>(stored.integer(0)), stored.real(1), stored.real(2),
                         stored.isNothing(3) ? absentValue() : stored.real(3)});
            stored.reset();
            continue;
        }
        values.resize(part.count);
        if (segments.read(part, property, values.data(), &valid))
            sum.add(
                summaryOf({property, values.data(), valid.empty() ? nullptr : valid.data(), part.first}, part.count));
    }
    if (sum.valid == 0)
        return {};
    return {sum.valid, sum.minimum, sum.maximum, sum.sum / static_cast<double>(sum.valid)};
}

}  // namespace plotix
