#include "records/clickhouse/StoredChunk.h"

#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace plotix {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double before(double time)
{
    return std::nextafter(time, -kInfinity);
}

double after(double time)
{
    return std::nextafter(time, kInfinity);
}

/// Stretches that do not overlap, by their beginning.
using Painted = std::map<double, ChunkStretch>;

void cutOut(double begin, double end, Painted& from)
{
    auto next = from.lower_bound(begin);
    if (next != from.begin() && std::prev(next)->second.end >= begin)
        --next;
    while (next != from.end() && next->first <= end) {
        const ChunkStretch old = next->second;
        next = from.erase(next);
        if (old.begin < begin)
            from.emplace(old.begin, ChunkStretch{old.chunk, old.begin, before(begin)});
        if (old.end > end)
            next = from.emplace(after(end), ChunkStretch{old.chunk, after(end), old.end}).first;
    }
}

}  // namespace

std::vector<ChunkStretch> stretchesOf(const std::vector<StoredChunk>& chunks)
{
    std::vector<const StoredChunk*> inOrder;
    for (const StoredChunk& chunk : chunks)
        inOrder.push_back(&chunk);
    std::sort(inOrder.begin(), inOrder.end(), [](const StoredChunk* one, const StoredChunk* other) {
        return std::tie(one->version, one->id) < std::tie(other->version, other->id);
    });
    Painted painted;
    for (const StoredChunk* chunk : inOrder) {
        cutOut(chunk->begin, chunk->end, painted);
        painted.emplace(chunk->begin, ChunkStretch{chunk, chunk->begin, chunk->end});
    }
    std::vector<ChunkStretch> stretches;
    stretches.reserve(painted.size());
    for (const auto& [begin, stretch] : painted)
        stretches.push_back(stretch);
    return stretches;
}

Records joined(const RecordsView& records, std::vector<const YoungRecord*> young, const std::vector<RowId>* properties)
{
    std::sort(young.begin(), young.end(), [](const YoungRecord* one, const YoungRecord* other) {
        return std::tie(one->time, one->version, one->writer, one->number, one->place) <
               std::tie(other->time, other->version, other->writer, other->number, other->place);
    });
    std::vector<double> times;
    times.reserve(records.size + young.size());
    std::vector<std::size_t> placeOfOld(records.size);
    for (std::size_t old = 0, next = 0; old < records.size || next < young.size();) {
        const bool isOld = next == young.size() || (old < records.size && records.times[old] <= young[next]->time);
        const double time = isOld ? records.times[old] : young[next]->time;
        if (times.empty() || times.back() != time)
            times.push_back(time);
        else
            times.back() = time;  // the bits of the last one: −0.0 equals 0.0
        if (isOld)
            placeOfOld[old++] = times.size() - 1;
        else
            ++next;
    }

    std::map<RowId, Records::Column> columns;
    const auto columnOf = [&](RowId property) -> Records::Column* {
        if (const auto found = columns.find(property); found != columns.end())
            return &found->second;
        if (properties && std::find(properties->begin(), properties->end(), property) == properties->end())
            return nullptr;
        return &columns
                    .emplace(property, Records::Column{property, std::vector<double>(times.size(), absentValue()),
                                                       std::vector<std::uint64_t>(bits::wordsFor(times.size()), 0)})
                    .first->second;
    };
    for (const RecordsView::Column& old : records.columns)
        if (Records::Column* column = columnOf(old.property))
            for (std::size_t i = 0; i < records.size; ++i) {
                column->values[placeOfOld[i]] = old.values[i];
                bits::put(column->valid.data(), placeOfOld[i], 1, bits::get(old.valid, old.firstValid + i, 1));
            }
    std::size_t at = 0;
    for (const YoungRecord* record : young) {
        while (times[at] != record->time)
            ++at;
        for (std::size_t i = 0; i < record->properties.size(); ++i)
            if (Records::Column* column = columnOf(record->properties[i])) {
                column->values[at] = record->values[i];
                bits::put(column->valid.data(), at, 1, record->valid[i]);
            }
    }
    std::vector<Records::Column> all;
    for (auto& [property, column] : columns)
        all.push_back(std::move(column));
    return Records(std::move(times), std::move(all));
}

}  // namespace plotix
