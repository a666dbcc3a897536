#include "records/sqlite/OutlineTable.h"

#include "records/columns/Checksum.h"
#include "records/columns/ColumnFormat.h"
#include "records/columns/IndexBytes.h"
#include "records/sqlite/RecordSchema.h"

#include <algorithm>
#include <bit>

namespace plotix {

namespace {

qint64 rowOf(qint64 outline, RowId property)
{
    return outline * schema::kPropertiesPerChunk + property;
}

std::uint64_t checksumBefore(RowId agent, double t0, double t1)
{
    const std::uint64_t numbers[] = {static_cast<std::uint64_t>(agent), std::bit_cast<std::uint64_t>(t0),
                                     std::bit_cast<std::uint64_t>(t1)};
    return checksum::of(std::span<const std::uint64_t>(numbers));
}

std::vector<std::byte> headOf(RowId agent, const Outline& outline)
{
    BytesWriter to(1024);
    to.put(static_cast<std::uint8_t>(outline.cut.doublings));
    to.put(static_cast<std::uint8_t>(outline.chunks.size()));
    to.put(static_cast<std::uint32_t>(outline.properties.size()));
    for (std::size_t i = 0; i < outline.chunks.size(); ++i) {
        to.put(static_cast<std::uint64_t>(outline.chunks[i]));
        to.put(static_cast<std::uint16_t>(outline.cut.records[i]));
    }
    for (const RowId property : outline.properties)
        to.put(static_cast<std::uint32_t>(property));
    checksum::seal(to.bytes, checksumBefore(agent, outline.t0, outline.t1));
    return std::move(to.bytes);
}

/// False: damaged.
bool takeHead(std::span<const std::byte> bytes, RowId agent, Outline& outline)
{
    if (!checksum::isIntact(bytes, checksumBefore(agent, outline.t0, outline.t1)))
        return false;
    BytesReader from(checksum::withoutSeal(bytes));
    outline.cut.doublings = from.take<std::uint8_t>();
    const std::size_t chunks = from.take<std::uint8_t>();
    const std::size_t properties = from.take<std::uint32_t>();
    if (outline.cut.doublings > outlinecodec::kMostDoublings || chunks == 0 || chunks > outlinecodec::kMostChunks ||
        properties > from.left())
        return false;
    for (std::size_t i = 0; i < chunks; ++i) {
        outline.chunks.push_back(static_cast<qint64>(from.take<std::uint64_t>()));
        outline.cut.records.push_back(from.take<std::uint16_t>());
        if (outline.cut.records.back() == 0 || outline.cut.records.back() > schema::kRecordsPerChunk)
            return false;
    }
    for (std::size_t i = 0; i < properties; ++i)
        outline.properties.push_back(from.take<std::uint32_t>());
    return from.isWhole() && from.left() == 0;
}

}  // namespace

outlinecodec::Owner Outline::owner(RowId property) const
{
    return {static_cast<std::uint64_t>(property), static_cast<std::uint64_t>(chunks.front())};
}

bool Outline::has(RowId property) const
{
    return std::binary_search(properties.begin(), properties.end(), property);
}

bool Outline::isOf(std::span<const Chunk> successive) const
{
    if (successive.size() < chunks.size())
        return false;
    for (std::size_t i = 0; i < chunks.size(); ++i)
        if (successive[i].id != chunks[i] || successive[i].n != cut.records[i])
            return false;
    return true;
}

struct OutlineTable::Statements {
    explicit Statements(const Database& database)
        : between(database, "SELECT id, t0, t1, head FROM outline WHERE agent = ?1 AND t1 >= ?2 AND t0 <= ?3 "
                            "ORDER BY t0"),
          last(database, "SELECT t1 FROM outline WHERE agent = ? ORDER BY t0 DESC LIMIT 1"),
          row(database, "SELECT data FROM outlined WHERE id = ?"),
          before(database, "SELECT id, t1 FROM outline WHERE agent = (SELECT agent FROM chunk WHERE id = ?) "
                           "AND t0 <= ? ORDER BY t0 DESC LIMIT 1")
    {
    }
    Statement between, last, row, before;
};

OutlineTable::OutlineTable(Database& database) : m_database(database) {}
OutlineTable::~OutlineTable() = default;

// A document of a version before may get its tables from another connection at any time.
bool OutlineTable::exists()
{
    if (m_statements)
        return true;
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'outlined'");
    if (!table.step())
        return false;
    m_statements = std::make_unique<Statements>(m_database);
    return true;
}

OutlineTable::Statements& OutlineTable::statements()
{
    if (!m_statements)
        m_statements = std::make_unique<Statements>(m_database);
    return *m_statements;
}

std::vector<Outline> OutlineTable::between(RowId agent, double from, double to)
{
    std::vector<Outline> found;
    if (!exists())
        return found;
    Statement& rows = statements().between;
    rows.bind(1, agent).bind(2, from).bind(3, to);
    while (rows.step()) {
        Outline outline;
        outline.id = rows.integer(0);
        outline.t0 = rows.real(1);
        outline.t1 = rows.real(2);
        if (takeHead({static_cast<const std::byte*>(rows.rawBytes(3)), rows.byteCount(3)}, agent, outline))
            found.push_back(std::move(outline));
    }
    rows.reset();
    return found;
}

std::vector<qint64> OutlineTable::ids(RowId agent)
{
    std::vector<qint64> ids;
    if (!exists())
        return ids;
    Statement rows(m_database, "SELECT id FROM outline WHERE agent = ?");
    rows.bind(1, agent);
    while (rows.step())
        ids.push_back(rows.integer(0));
    return ids;
}

std::optional<double> OutlineTable::endOf(RowId agent)
{
    Statement& last = statements().last;
    std::optional<double> end;
    if (last.bind(1, agent).step())
        end = last.real(0);
    last.reset();
    return end;
}

/// The answer of `use(bytes)`, which gets none where there is no such row.
template <class Use>
auto OutlineTable::withRow(qint64 id, const Use& use)
{
    Statement& row = statements().row;
    std::span<const std::byte> bytes;
    if (row.bind(1, id).step())
        bytes = {static_cast<const std::byte*>(row.rawBytes(0)), row.byteCount(0)};
    auto answer = use(bytes);
    row.reset();
    return answer;
}

std::optional<outlinecodec::Times> OutlineTable::times(const Outline& outline)
{
    return withRow(rowOf(outline.id, kTimes), [&](std::span<const std::byte> bytes) {
        return outlinecodec::readTimes(bytes, outline.cut, outline.owner(kTimes));
    });
}

std::optional<OutlineTable::Column> OutlineTable::column(const Outline& outline, RowId property, ByteKeeper& keeper)
{
    return withRow(rowOf(outline.id, property), [&](std::span<const std::byte> bytes) {
        std::optional<outlinecodec::Totals> totals =
            outlinecodec::readTotals(bytes, outline.cut, outline.owner(property));
        return totals ? std::optional(Column{keeper.keep(bytes), std::move(*totals)}) : std::nullopt;
    });
}

void OutlineTable::add(RowId agent, Outline outline, std::span<const std::vector<std::byte>> rows)
{
    const std::vector<std::byte> head = headOf(agent, outline);
    Statement addHead(m_database, "INSERT INTO outline(agent, t0, t1, head) VALUES(?, ?, ?, ?)");
    addHead.bind(1, agent).bind(2, outline.t0).bind(3, outline.t1).bindBytes(4, head.data(), head.size()).run();
    outline.id = m_database.lastInsertedRow();
    Statement addRow(m_database, "INSERT INTO outlined(id, data) VALUES(?, ?)");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const RowId property = i == 0 ? kTimes : outline.properties[i - 1];
        addRow.bind(1, rowOf(outline.id, property)).bindBytes(2, rows[i].data(), rows[i].size()).run();
    }
}

void OutlineTable::remove(qint64 outline)
{
    Statement(m_database, "DELETE FROM outline WHERE id = ?").bind(1, outline).run();
    Statement(m_database, "DELETE FROM outlined WHERE id >= ? AND id < ?")
        .bind(1, rowOf(outline, 0))
        .bind(2, rowOf(outline + 1, 0))
        .run();
}

void OutlineTable::removeThatOf(const Chunk& chunk)
{
    Statement& before = statements().before;
    std::optional<qint64> found;
    if (before.bind(1, chunk.id).bind(2, chunk.t0).step() && before.real(1) >= chunk.t0)
        found = before.integer(0);
    before.reset();
    if (found)
        remove(*found);
}

}  // namespace plotix
