#include "records/sqlite/TailStore.h"

#include "records/columns/Checksum.h"
#include "records/columns/ColumnFormat.h"
#include "records/columns/ValidityBits.h"
#include "records/sqlite/RecordSchema.h"

#include <cstring>
#include <span>
#include <unordered_map>

namespace plotix {

namespace {

constexpr std::size_t kElementBytes = sizeof(std::uint32_t) + sizeof(double);

/// The number of an agent in a damaged file may be any: then there are no such rows.
qint64 firstId(RowId agent)
{
    return static_cast<qint64>(static_cast<quint64>(agent) * static_cast<quint64>(schema::kRowsPerTail));
}

template <class T>
T load(const std::byte* from)
{
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
std::byte* store(std::byte* to, T value)
{
    std::memcpy(to, &value, sizeof value);
    return to + sizeof value;
}

/// A row's time and elements. Since version 7 its checksum follows them, which its length tells. Nothing when the row
/// has changed since it was stored, or makes no sense.
std::optional<std::span<const std::byte>> openedRow(std::span<const std::byte> row, qint64 id)
{
    if (row.size() < sizeof(double))
        return std::nullopt;
    const std::size_t rest = (row.size() - sizeof(double)) % kElementBytes;
    if (rest == 0)
        return row;
    if (rest != checksum::kBytes || !checksum::isIntact(row, static_cast<std::uint64_t>(id)))
        return std::nullopt;
    return checksum::withoutSeal(row);
}

std::span<const std::byte> bytesOf(const Statement& row, int column)
{
    return {static_cast<const std::byte*>(row.rawBytes(column)), row.byteCount(column)};
}

/// Rows being turned into columns. Rows of one source name the same properties in the same order, so an element's index
/// in its row is mostly that of its column.
class RowsInWork {
public:
    explicit RowsInWork(std::size_t count) : m_count(count), m_times(count) {}

    /// False for a row that makes no sense.
    bool add(std::size_t index, std::span<const std::byte> row)
    {
        m_times[index] = load<double>(row.data());
        if (index > 0 && !(m_times[index - 1] < m_times[index]))
            return false;
        std::size_t place = 0;
        for (std::size_t at = sizeof(double); at < row.size(); at += kElementBytes, ++place) {
            const auto head = load<std::uint32_t>(row.data() + at);
            const RowId property = head >> 1;
            if (property <= 0 || property >= schema::kPropertiesPerChunk)
                return false;
            Records::Column& column = columnOf(property, place);
            column.values[index] = load<double>(row.data() + at + sizeof head);
            bits::put(column.valid.data(), index, 1, head & 1);
        }
        return true;
    }
    Records finished() { return {std::move(m_times), std::move(m_columns)}; }

private:
    Records::Column& columnOf(RowId property, std::size_t place)
    {
        if (place < m_columns.size() && m_columns[place].property == property)
            return m_columns[place];
        const auto [found, isNew] = m_places.try_emplace(property, m_columns.size());
        if (!isNew)
            return m_columns[found->second];
        m_columns.push_back({property, std::vector<double>(m_count, absentValue()),
                             std::vector<std::uint64_t>(bits::wordsFor(m_count), 0)});
        return m_columns.back();
    }

    std::size_t m_count;
    std::vector<double> m_times;
    std::vector<Records::Column> m_columns;
    std::unordered_map<RowId, std::size_t> m_places;  ///< of the columns, by their property
};

}  // namespace

struct TailStore::Statements {
    explicit Statements(const Database& database)
        : last(database, "SELECT id FROM tail WHERE id >= ? AND id < ? ORDER BY id DESC LIMIT 1"),
          row(database, "SELECT data FROM tail WHERE id = ?"),
          rows(database, "SELECT id, data FROM tail WHERE id >= ? AND id < ? ORDER BY id"),
          next(database, "SELECT id FROM tail WHERE id > ? ORDER BY id LIMIT 1"),
          write(database, "INSERT OR REPLACE INTO tail(id, data) VALUES(?, ?)"),
          clear(database, "DELETE FROM tail WHERE id >= ? AND id < ?")
    {
    }
    Statement last, row, rows, next, write, clear;
};

TailStore::TailStore(Database& database) : m_database(database) {}
TailStore::~TailStore() = default;

bool TailStore::exists()
{
    if (m_statements)
        return true;
    // A document of the first version may get its tail from another connection at any time.
    Statement table(m_database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'tail'");
    if (!table.step())
        return false;
    m_statements = std::make_unique<Statements>(m_database);
    return true;
}

std::size_t TailStore::count(RowId agent)
{
    if (!exists())
        return 0;
    Statement& last = m_statements->last;
    const std::size_t rows = last.bind(1, firstId(agent)).bind(2, firstId(agent + 1)).step()
                                 ? static_cast<std::size_t>(last.integer(0) - firstId(agent)) + 1
                                 : 0;
    last.reset();
    if (rows > schema::kRecordsPerChunk)
        m_database.failAsDamaged(QStringLiteral("the tail of agent %1 is too long").arg(agent));
    return rows;
}

/// Nothing for a row that has changed since it was stored.
std::optional<double> TailStore::timeAt(RowId agent, std::size_t position)
{
    Statement& row = m_statements->row;
    const qint64 id = firstId(agent) + static_cast<qint64>(position);
    if (!row.bind(1, id).step()) {
        row.reset();
        failAsDamaged(agent);
    }
    const std::optional<std::span<const std::byte>> opened = openedRow(bytesOf(row, 0), id);
    const std::optional<double> time = opened ? std::optional(load<double>(opened->data())) : std::nullopt;
    row.reset();
    return time;
}

/// From the first sound row to the last one.
TailExtent TailStore::extent(RowId agent)
{
    const std::size_t rows = count(agent);
    if (rows == 0)
        return {};
    std::optional<double> first;
    std::optional<double> last;
    for (std::size_t position = 0; position < rows && !first; ++position)
        first = timeAt(agent, position);
    for (std::size_t position = rows; position > 0 && !last; --position)
        last = timeAt(agent, position - 1);
    if (!first || !last)
        failAsChanged(agent, 0);
    return {rows, *first, *last};
}

std::vector<RowId> TailStore::agents()
{
    std::vector<RowId> agents;
    if (!exists())
        return agents;
    Statement& next = m_statements->next;
    for (next.bind(1, qint64{-1}); next.step();) {
        const qint64 found = next.integer(0);
        agents.push_back(found / schema::kRowsPerTail);
        next.reset();
        next.bind(1, found | (schema::kRowsPerTail - 1));  // the last id the agent's rows may have
    }
    next.reset();
    return agents;
}

/// The first position in [first, end) with a sound row that `isPast` holds for, else end. Rows are in time order.
template <class Predicate>
std::size_t TailStore::firstPosition(RowId agent, std::size_t first, std::size_t end, Predicate isPast)
{
    std::size_t found = end;
    while (first < end) {
        const std::size_t middle = first + (end - first) / 2;
        std::size_t sound = middle;
        std::optional<double> time;
        for (; sound < end && !(time = timeAt(agent, sound)); ++sound) {
        }
        if (time && !isPast(*time)) {
            first = sound + 1;
        } else {
            found = time ? sound : found;
            end = middle;
        }
    }
    return found;
}

// The time of a row that has changed is only known to lie between those of the sound rows around it. Where that does
// not tell, the row counts as asked for.
Records TailStore::read(RowId agent, double from, double to)
{
    const std::size_t rows = count(agent);
    const std::size_t first = firstPosition(agent, 0, rows, [&](double time) { return time >= from; });
    const std::size_t end = firstPosition(agent, first, rows, [&](double time) { return !(time <= to); });
    const std::size_t firstUnsure = behindLastSound(agent, first);
    const std::size_t endUnsure = behindLastSound(agent, end);
    const bool beginsThere = firstUnsure == first || (first < rows && timeAt(agent, first) == from);
    const bool endsThere = endUnsure > 0 && timeAt(agent, endUnsure - 1) == to;
    return readRows(agent, beginsThere ? first : firstUnsure, endsThere ? endUnsure : end);
}

/// Of the rows before `end`, where those end that are followed by a sound one.
std::size_t TailStore::behindLastSound(RowId agent, std::size_t end)
{
    while (end > 0 && !timeAt(agent, end - 1))
        --end;
    return end;
}

Records TailStore::readRows(RowId agent, std::size_t first, std::size_t end)
{
    RowsInWork work(end - first);
    if (first == end)
        return work.finished();
    Statement& rows = m_statements->rows;
    rows.bind(1, firstId(agent) + static_cast<qint64>(first)).bind(2, firstId(agent) + static_cast<qint64>(end));
    std::size_t read = 0;
    bool makesSense = true;
    bool isSound = true;
    for (; makesSense && isSound && rows.step() && read < end - first; read += isSound ? 1 : 0) {
        const qint64 id = firstId(agent) + static_cast<qint64>(first + read);
        const std::optional<std::span<const std::byte>> row = openedRow(bytesOf(rows, 1), id);
        makesSense = rows.integer(0) == id;
        isSound = !makesSense || row;
        makesSense = makesSense && (!row || work.add(read, *row));
    }
    rows.reset();
    if (!isSound)
        failAsChanged(agent, first + read);
    if (!makesSense || read != end - first)
        failAsDamaged(agent);
    return work.finished();
}

void TailStore::put(RowId agent, const RecordsView& records)
{
    if (records.size == 0)
        return;
    const std::size_t rows = count(agent);
    const double begin = records.times[0];
    const std::size_t first =
        behindLastSound(agent, firstPosition(agent, 0, rows, [&](double time) { return time >= begin; }));
    const Records merged = Records::merged(readRows(agent, first, rows).view(), records);
    append(agent, first, merged.view());
}

void TailStore::append(RowId agent, std::size_t count, const RecordsView& records)
{
    if (!exists())
        m_database.failAsDamaged(QStringLiteral("the table “tail” is missing"));
    for (std::size_t i = 0; i < records.size; ++i)
        write(firstId(agent) + static_cast<qint64>(count + i), records, i);
}

void TailStore::write(qint64 id, const RecordsView& records, std::size_t index)
{
    m_row.resize(sizeof(double) + records.columns.size() * kElementBytes);
    std::byte* end = store(m_row.data(), records.times[index]);
    const double absent = absentValue();
    for (const RecordsView::Column& column : records.columns) {
        const auto valid = static_cast<std::uint32_t>(bits::get(column.valid, column.firstValid + index, 1));
        if (valid == 0 && std::memcmp(&column.values[index], &absent, sizeof absent) == 0)
            continue;
        end = store(end, static_cast<std::uint32_t>(column.property) << 1 | valid);
        end = store(end, column.values[index]);
    }
    m_row.resize(static_cast<std::size_t>(end - m_row.data()));
    checksum::seal(m_row, static_cast<std::uint64_t>(id));
    m_statements->write.bind(1, id).bindBytes(2, m_row.data(), m_row.size()).run();
}

void TailStore::clear(RowId agent)
{
    if (exists())
        m_statements->clear.bind(1, firstId(agent)).bind(2, firstId(agent + 1)).run();
}

void TailStore::failAsDamaged(RowId agent) const
{
    m_database.failAsDamaged(QStringLiteral("the tail of agent %1 has a row that makes no sense").arg(agent));
}

void TailStore::failAsChanged(RowId agent, std::size_t position) const
{
    m_database.failAsDamaged(
        QStringLiteral("of agent %1, record %2 of the latest ones has changed since it was stored; "
                       "all others can still be read")
            .arg(agent)
            .arg(position + 1));
}

}  // namespace plotix
