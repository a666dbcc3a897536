#include "records/store/Records.h"

#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>

namespace plotix {

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

/// Where each record of a merged run comes from; kNone: not from there.
struct Origin {
    std::size_t old;
    std::size_t fresh;
};

std::vector<Origin> mergeOrder(const RecordsView& old, const RecordsView& fresh)
{
    std::vector<Origin> order;
    order.reserve(old.size + fresh.size);
    std::size_t i = 0, j = 0;
    while (i < old.size || j < fresh.size) {
        const bool takeOld = j == fresh.size || (i < old.size && old.times[i] <= fresh.times[j]);
        const bool takeFresh = i == old.size || (j < fresh.size && fresh.times[j] <= old.times[i]);
        order.push_back({takeOld ? i++ : kNone, takeFresh ? j++ : kNone});
    }
    return order;
}

bool hasElement(const RecordsView& records, std::size_t index)
{
    const double absent = absentValue();
    return std::any_of(records.columns.begin(), records.columns.end(), [&](const RecordsView::Column& column) {
        return bits::get(column.valid, column.firstValid + index, 1) != 0 ||
               std::memcmp(&column.values[index], &absent, sizeof absent) != 0;
    });
}

void take(const RecordsView::Column& from, std::size_t index, Records::Column& to, std::size_t target)
{
    to.values[target] = from.values[index];
    bits::put(to.valid.data(), target, 1, bits::get(from.valid, from.firstValid + index, 1));
}

}  // namespace

RecordsView RecordsView::of(const RecordBlock& block)
{
    RecordsView view{block.times.data(), block.times.size(), {}};
    for (const RecordBlock::Column& column : block.columns)
        view.columns.push_back({{column.values.data(), column.validity.words().data(), 0}, column.property});
    return view;
}

RecordsView RecordsView::slice(std::size_t first, std::size_t count) const
{
    RecordsView part{times + first, count, columns};
    for (Column& column : part.columns) {
        column.values += first;
        column.firstValid += first;
    }
    return part;
}

RecordsView RecordsView::between(double from, double to) const
{
    const double* const first = std::lower_bound(times, times + size, from);
    const double* const last = std::upper_bound(first, times + size, to);
    return slice(static_cast<std::size_t>(first - times), static_cast<std::size_t>(last - first));
}

const RecordsView::Column* RecordsView::find(RowId property) const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [property](const Column& each) { return each.property == property; });
    return found == columns.end() ? nullptr : &*found;
}

bool ascend(std::span<const double> times)
{
    constexpr std::size_t kAtOnce = 64;  // without a branch for each, which becomes vector instructions
    constexpr std::size_t kLine = 8, kAhead = 1024;
    for (std::size_t begin = 1; begin < times.size(); begin += kAtOnce) {
        const std::size_t end = std::min(begin + kAtOnce, times.size());
        for (std::size_t line = 0; line < kAtOnce; line += kLine)  // processors do not fetch beyond a page themselves
            __builtin_prefetch(times.data() + begin + kAhead + line);
        std::uint64_t others = 0;
        for (std::size_t i = begin; i < end; ++i)
            others += static_cast<std::uint64_t>(!(times[i - 1] < times[i]));
        if (others > 0)
            return false;
    }
    return true;
}

RecordsView Records::view() const
{
    RecordsView view{m_times.data(), m_times.size(), {}};
    for (const Column& column : m_columns)
        view.columns.push_back({{column.values.data(), column.valid.data(), 0}, column.property});
    return view;
}

Records::Column& Records::column(RowId property)
{
    for (Column& column : m_columns)
        if (column.property == property)
            return column;
    m_columns.push_back(
        {property, std::vector<double>(size(), absentValue()), std::vector<std::uint64_t>(bits::wordsFor(size()), 0)});
    return m_columns.back();
}

void Records::append(const RecordsView& records)
{
    const std::size_t before = size();
    for (const RecordsView::Column& added : records.columns)
        column(added.property);
    m_times.insert(m_times.end(), records.times, records.times + records.size);
    for (Column& column : m_columns) {
        column.valid.resize(bits::wordsFor(size()), 0);
        const RecordsView::Column* added = records.find(column.property);
        if (!added) {
            column.values.resize(size(), absentValue());
            continue;
        }
        column.values.insert(column.values.end(), added->values, added->values + records.size);
        bits::copy(added->valid, added->firstValid, column.valid.data(), before, records.size);
    }
}

void Records::dropFirst(std::size_t count)
{
    Records rest;
    rest.append(view().slice(count, size() - count));
    *this = std::move(rest);
}

std::optional<Records> Records::without(const RecordsView& records, std::span<const RowId> properties, double from,
                                        double to)
{
    const double* const end = records.times + records.size;
    const double* const begin = std::lower_bound(records.times, end, from);
    const auto first = static_cast<std::size_t>(begin - records.times);
    const auto count = static_cast<std::size_t>(std::upper_bound(begin, end, to) - begin);
    if (count == 0)
        return std::nullopt;
    RecordsView others = records.slice(first, count);
    std::erase_if(others.columns, [&](const RecordsView::Column& column) {
        return std::find(properties.begin(), properties.end(), column.property) != properties.end();
    });
    Records left;
    left.append(records.slice(0, first));
    // Runs of records that stay; one that never had any element goes with the others.
    for (std::size_t i = 0; i < count;) {
        std::size_t stay = i;
        while (stay < count && hasElement(others, stay))
            ++stay;
        left.append(others.slice(i, stay - i));
        i = stay + 1;
    }
    left.append(records.slice(first + count, records.size - first - count));
    if (left.size() == records.size && others.columns.size() == records.columns.size())
        return std::nullopt;
    return left;
}

Records Records::ordered(const RecordsView& records)
{
    std::vector<std::size_t> order(records.size);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return records.times[a] < records.times[b]; });
    std::vector<std::size_t> last;
    for (std::size_t i = 0; i < order.size(); ++i)
        if (i + 1 == order.size() || records.times[order[i]] < records.times[order[i + 1]])
            last.push_back(order[i]);
    Records result;
    for (const std::size_t index : last)
        result.m_times.push_back(records.times[index]);
    for (const RecordsView::Column& column : records.columns) {
        Column& target = result.column(column.property);
        for (std::size_t i = 0; i < last.size(); ++i)
            take(column, last[i], target, i);
    }
    return result;
}

Records Records::merged(const RecordsView& old, const RecordsView& fresh)
{
    const std::vector<Origin> order = mergeOrder(old, fresh);
    Records result;
    for (const Origin& origin : order)
        result.m_times.push_back(origin.old != kNone ? old.times[origin.old] : fresh.times[origin.fresh]);
    for (const RecordsView* source : {&old, &fresh})
        for (const RecordsView::Column& column : source->columns)
            result.column(column.property);
    for (Column& column : result.m_columns) {
        const RecordsView::Column* before = old.find(column.property);
        const RecordsView::Column* after = fresh.find(column.property);
        for (std::size_t i = 0; i < order.size(); ++i)
            if (after && order[i].fresh != kNone)
                take(*after, order[i].fresh, column, i);
            else if (before && order[i].old != kNone)
                take(*before, order[i].old, column, i);
    }
    return result;
}

}  // namespace plotix
