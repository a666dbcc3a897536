#include "records/sqlite/IndexStore.h"

#include "records/columns/ColumnKernels.h"
#include "records/sqlite/ChunkRows.h"

namespace plotix {

namespace {

constexpr int kWhole = 5;
constexpr auto kManyProperties = static_cast<std::size_t>(schema::kPropertiesPerChunk);

qint64 idOf(const Chunk& chunk, RowId property)
{
    return chunk.id * schema::kPropertiesPerChunk + property;
}

indexcodec::Owner ownerOf(const Chunk& chunk, RowId property)
{
    return {static_cast<std::uint64_t>(property), chunk.n};
}

/// Of a chunk that is a single run.
RunTimes timesOfOne(const Chunk& chunk)
{
    return {ColumnKernels::kRun, {chunk.t0}, {chunk.t1}};
}

std::span<const std::byte> bytesOf(const Statement& row, int column)
{
    return {static_cast<const std::byte*>(row.rawBytes(column)), row.byteCount(column)};
}

}  // namespace

IndexStore::IndexStore(Database& database) : m_database(database) {}
IndexStore::~IndexStore() = default;

bool IndexStore::exists()
{
    if (m_exists)
        return true;
    // A document of a version before may get its tables from another connection at any time.
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'run'");
    if (!table.step())
        return false;
    m_summaries = std::make_unique<RowScan>(m_database, "summary", "valid, minimum, maximum, sum, whole");
    m_runs = std::make_unique<Statement>(m_database, "SELECT data FROM run WHERE id = ?");
    m_runsBetween = std::make_unique<RowScan>(m_database, "run", "data");
    m_countRuns = std::make_unique<Statement>(m_database, "SELECT count(*) FROM run WHERE id >= ? AND id <= ?");
    m_exists = true;
    return true;
}

RowScan& IndexStore::summaries()
{
    if (!exists() && !m_summaries)
        m_summaries = std::make_unique<RowScan>(m_database, "summary", "valid, minimum, maximum, sum, NULL");
    return *m_summaries;
}

// A sum that is no number (infinities of both signs) is stored as nothing.
Summary IndexStore::summaryFrom(const ScannedRow& row)
{
    const double sum = row.real(4);
    return {static_cast<std::size_t>(row.integer(1)), row.real(2), row.real(3),
            sum == 0 && row.isNothing(4) ? absentValue() : sum};
}

bool IndexStore::isIntact(const ScannedRow& row, const Summary& summary, const indexcodec::Owner& owner)
{
    const std::span<const std::byte> whole = row.bytes(kWhole);
    return whole.empty() || indexcodec::isIntact(whole, summary, owner);
}

IndexStore::Found IndexStore::foundIn(const ScannedRow& row, const indexcodec::Owner& owner)
{
    if (!hasIndex(row))
        return {};
    std::optional<indexcodec::Whole> whole = indexcodec::readWhole(row.bytes(kWhole), summaryFrom(row), owner);
    return whole ? Found{State::Sound, std::move(whole->index), whole->hasRuns} : Found{State::Damaged, {}};
}

IndexStore::Found IndexStore::find(const Chunk& chunk, RowId property, bool withRuns)
{
    return std::move(find(std::span(&chunk, 1), std::span(&property, 1), kManyProperties, withRuns)[0].columns[0]);
}

std::vector<IndexStore::FoundChunk> IndexStore::find(std::span<const Chunk> chunks, std::span<const RowId> properties,
                                                     std::size_t ofAgent, bool withRuns)
{
    std::vector<FoundChunk> found(chunks.size());
    for (FoundChunk& each : found)
        each.columns.resize(properties.size());
    if (exists()) {
        ChunkRows(properties, ofAgent)
            .each(*m_summaries, chunks, [&](std::size_t chunk, std::size_t place, const ScannedRow& row) {
                found[chunk].columns[place] = foundIn(row, ownerOf(chunks[chunk], properties[place]));
            });
        if (withRuns)
            findRuns(chunks, properties, ofAgent, found);
    }
    for (std::size_t chunk = 0; withRuns && chunk < chunks.size(); ++chunk)
        if (chunks[chunk].n <= ColumnKernels::kRun)
            found[chunk].times = {State::Sound, timesOfOne(chunks[chunk])};
    return found;
}

/// What has runs says so: without them, or with damaged ones, it is damaged itself.
void IndexStore::findRuns(std::span<const Chunk> chunks, std::span<const RowId> properties, std::size_t ofAgent,
                          std::vector<FoundChunk>& found)
{
    std::vector<RowId> withTimes{kTimes};
    withTimes.insert(withTimes.end(), properties.begin(), properties.end());
    ChunkRows(withTimes, ofAgent + 1)
        .each(*m_runsBetween, chunks, [&](std::size_t chunk, std::size_t place, const ScannedRow& row) {
            const std::span<const std::byte> bytes = row.bytes(1);
            const indexcodec::Owner owner = ownerOf(chunks[chunk], withTimes[place]);
            if (place == 0) {
                found[chunk].times = timesIn(row, owner);
                return;
            }
            Found& column = found[chunk].columns[place - 1];
            if (column.state == State::Sound && column.hasRuns && !indexcodec::readRuns(bytes, owner, column.index))
                column = {State::Damaged, {}};
        });
    for (FoundChunk& chunk : found)
        for (Found& column : chunk.columns)
            if (column.hasRuns && column.index.runs.empty())
                column = {State::Damaged, {}};
}

IndexStore::FoundTimes IndexStore::timesIn(const ScannedRow& row, const indexcodec::Owner& owner)
{
    std::optional<RunTimes> times = indexcodec::readTimes(row.bytes(1), owner);
    return times ? FoundTimes{State::Sound, std::move(*times)} : FoundTimes{State::Damaged, {}};
}

void IndexStore::findExtremes(std::span<const Chunk> chunks, std::span<const RowId> properties, std::size_t ofAgent,
                              std::span<FoundRuns> found, std::span<FoundTimes> times, const TakeWhole& take)
{
    for (FoundRuns& column : found) {
        column.state = State::Absent;
        column.whole = {};
        column.hasWhole = column.hasRuns = false;
        column.runs.runs = 0;
    }
    for (std::size_t chunk = 0; chunk < chunks.size(); ++chunk)
        times[chunk] =
            chunks[chunk].n <= ColumnKernels::kRun ? FoundTimes{State::Sound, timesOfOne(chunks[chunk])} : FoundTimes();
    if (!exists())
        return;
    ChunkRows(properties, ofAgent)
        .each(*m_summaries, chunks, [&](std::size_t chunk, std::size_t place, const ScannedRow& row) {
            if (!hasIndex(row))
                return;
            FoundRuns& column = found[chunk * properties.size() + place];
            const auto whole =
                indexcodec::readFigures(row.bytes(kWhole), summaryFrom(row), ownerOf(chunks[chunk], properties[place]));
            column.state = whole ? State::Sound : State::Damaged;
            if (!whole)
                return;
            column.whole = whole->figures;
            column.hasWhole = true;
            column.hasRuns = whole->hasRuns;
            take(chunk, place, *whole);
        });
    std::vector<RowId> withTimes{kTimes};
    withTimes.insert(withTimes.end(), properties.begin(), properties.end());
    ChunkRows(withTimes, ofAgent + 1)
        .each(*m_runsBetween, chunks, [&](std::size_t chunk, std::size_t place, const ScannedRow& row) {
            const indexcodec::Owner owner = ownerOf(chunks[chunk], withTimes[place]);
            if (place == 0)
                times[chunk] = timesIn(row, owner);
            else if (FoundRuns& column = found[chunk * properties.size() + place - 1]; column.hasRuns)
                indexcodec::readExtremes(row.bytes(1), owner, column.runs);
        });
    for (FoundRuns& column : found)
        if (column.hasRuns && column.runs.runs == 0)
            column.state = State::Damaged;
}

IndexStore::FoundTimes IndexStore::findTimes(const Chunk& chunk)
{
    if (chunk.n <= ColumnKernels::kRun)
        return {State::Sound, timesOfOne(chunk)};
    if (!exists())
        return {};
    const std::optional<std::vector<std::byte>> bytes = runs(idOf(chunk, kTimes));
    if (!bytes)
        return {};
    std::optional<RunTimes> times = indexcodec::readTimes(*bytes, {kTimes, chunk.n});
    return times ? FoundTimes{State::Sound, std::move(*times)} : FoundTimes{State::Damaged, {}};
}

bool IndexStore::isSound(const Chunk& chunk)
{
    if (findTimes(chunk).state != State::Sound)
        return false;
    std::vector<RowId> properties;
    Statement segments(m_database, "SELECT id FROM segment WHERE id > ? AND id < ?");
    segments.bind(1, idOf(chunk, kTimes)).bind(2, idOf(chunk, schema::kPropertiesPerChunk));
    while (segments.step())
        properties.push_back(segments.integer(0) - idOf(chunk, 0));
    for (const RowId property : properties)
        if (find(chunk, property, true).state != State::Sound)
            return false;
    return true;
}

std::size_t IndexStore::rowsOfRuns(const Chunk& chunk)
{
    if (!exists())
        return 0;
    m_countRuns->bind(1, idOf(chunk, 0)).bind(2, idOf(chunk, schema::kPropertiesPerChunk - 1)).step();
    const auto count = static_cast<std::size_t>(m_countRuns->integer(0));
    m_countRuns->reset();
    return count;
}

std::optional<std::vector<std::byte>> IndexStore::runs(qint64 id)
{
    std::optional<std::vector<std::byte>> bytes;
    if (m_runs->bind(1, id).step()) {
        const auto row = bytesOf(*m_runs, 0);
        bytes.emplace(row.begin(), row.end());
    }
    m_runs->reset();
    return bytes;
}

}  // namespace plotix
