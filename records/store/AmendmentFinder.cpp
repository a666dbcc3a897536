#include "records/store/AmendmentFinder.h"

#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace plotix {

namespace {

struct JudgedElement {
    double value = 0;
    bool valid = false;

    bool isThere() const
    {
        const double absent = absentValue();
        return valid || std::memcmp(&value, &absent, sizeof absent) != 0;
    }
    bool isSameAs(const JudgedElement& other) const
    {
        return valid == other.valid && (value == other.value || std::memcmp(&value, &other.value, sizeof value) == 0);
    }
};

JudgedElement judgedAt(const RecordsView::Column& column, std::size_t index)
{
    return {column.values[index], bits::get(column.valid, column.firstValid + index, 1) != 0};
}

/// Goes along the records of one property in order of time and joins what is alike into stretches.
class Stretches {
public:
    Stretches(RowId property, std::optional<RecordExtent> extent, double now)
        : m_property(property), m_extent(extent), m_now(now)
    {
    }

    /// A new element where there was none.
    void added(double time, const JudgedElement& fresh)
    {
        if (!fresh.isThere())
            return;
        if (m_extent && time > m_extent->first && time < m_extent->last)
            take(time, Amendment::Kind::Late);
        else
            close();
    }
    void replaced(double time, const JudgedElement& old, const JudgedElement& fresh)
    {
        if (!old.isThere())
            added(time, fresh);
        else if (old.isSameAs(fresh))
            close();
        else
            take(time, Amendment::Kind::Corrected);
    }
    /// Something stays as it was.
    void close()
    {
        if (m_open)
            m_closed.push_back(*m_open);
        m_open.reset();
    }
    std::vector<Amendment> finished()
    {
        close();
        return std::move(m_closed);
    }

private:
    void take(double time, Amendment::Kind kind)
    {
        if (m_open && m_open->kind != kind)
            close();
        if (!m_open)
            m_open = Amendment{m_property, kind, time, time, m_now, m_now};
        m_open->to = time;
    }

    RowId m_property;
    std::optional<RecordExtent> m_extent;
    double m_now;
    std::optional<Amendment> m_open;
    std::vector<Amendment> m_closed;
};

/// A block's records from `next` on, each compared with those of one run of the store.
void compare(const RecordBlock& run, std::size_t property, const RecordsView& fresh, std::size_t from, std::size_t end,
             Stretches& stretches)
{
    const RecordBlock::Column& old = run.columns[property];
    std::size_t next = from;
    for (std::size_t i = 0; i < run.times.size(); ++i) {
        for (; next < end && fresh.times[next] < run.times[i]; ++next)
            stretches.added(fresh.times[next], judgedAt(fresh.columns[property], next));
        const JudgedElement was{old.values[i], old.validity.isValid(i)};
        if (next < end && fresh.times[next] == run.times[i]) {
            stretches.replaced(fresh.times[next], was, judgedAt(fresh.columns[property], next));
            ++next;
        } else if (was.isThere()) {
            stretches.close();
        }
    }
    for (; next < end; ++next)
        stretches.added(fresh.times[next], judgedAt(fresh.columns[property], next));
}

std::size_t positionOf(double time, const RecordsView& records)
{
    return static_cast<std::size_t>(std::upper_bound(records.times, records.times + records.size, time) -
                                    records.times);
}

}  // namespace

std::vector<Amendment> AmendmentFinder::find(RowId agent, const RecordsView& fresh, double now)
{
    std::vector<RowId> properties;
    std::vector<Stretches> stretches;
    bool isBehindAll = true;
    for (const RecordsView::Column& column : fresh.columns) {
        const Extent& extent = extentOf(agent, column.property);
        isBehindAll = isBehindAll && (!extent || fresh.size == 0 || fresh.times[0] > extent->last);
        properties.push_back(column.property);
        stretches.emplace_back(column.property, extent, now);
    }
    if (isBehindAll)
        return {};
    const double from = fresh.times[0], to = fresh.times[fresh.size - 1];
    std::size_t next = 0;
    const RecordOverview overview = m_before->overview(agent, properties, from, to);
    for (std::size_t i = 0; i < overview.runs.size(); ++i) {
        const RecordOverview::Run& run = overview.runs[i];
        const std::size_t end = positionOf(run.t1, fresh);
        const bool isTouched = end > next && fresh.times[end - 1] >= run.t0;
        const RecordBlock block = isTouched
                                      ? *m_before->read(agent, properties, std::max(run.t0, from), std::min(run.t1, to))
                                      : RecordBlock{};
        for (std::size_t property = 0; property < properties.size(); ++property) {
            if (isTouched) {
                compare(block, property, fresh, next, end, stretches[property]);
                continue;
            }
            for (std::size_t record = next; record < end; ++record)
                stretches[property].added(fresh.times[record], judgedAt(fresh.columns[property], record));
            if (overview.columns[property].summaries[i].valid > 0 ||
                !hasNothingBetween(agent, properties[property], std::nextafter(run.t0, -HUGE_VAL),
                                   std::nextafter(run.t1, HUGE_VAL)))
                stretches[property].close();
        }
        next = end;
    }
    std::vector<Amendment> found;
    for (std::size_t property = 0; property < properties.size(); ++property) {
        for (std::size_t record = next; record < fresh.size; ++record)
            stretches[property].added(fresh.times[record], judgedAt(fresh.columns[property], record));
        for (const Amendment& each : stretches[property].finished())
            found.push_back(each);
    }
    return found;
}

bool AmendmentFinder::hasNothingBetween(RowId agent, RowId property, double from, double to)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double begin = std::nextafter(from, kInfinity), end = std::nextafter(to, -kInfinity);
    if (begin > end)
        return true;
    const std::array asked{property};
    const RecordOverview overview = m_before->overview(agent, asked, begin, end);
    for (std::size_t i = 0; i < overview.runs.size(); ++i) {
        const RecordOverview::Run& run = overview.runs[i];
        const bool isWhole = run.t0 >= begin && run.t1 <= end;
        if (isWhole && overview.columns[0].summaries[i].valid > 0)
            return false;
        const RecordBlock block = *m_before->read(agent, asked, std::max(run.t0, begin), std::min(run.t1, end));
        const RecordsView view = RecordsView::of(block);
        for (std::size_t record = 0; record < view.size; ++record)
            if (judgedAt(view.columns[0], record).isThere())
                return false;
    }
    return true;
}

void AmendmentFinder::stored(RowId agent, const RecordsView& fresh)
{
    if (m_extents.empty())
        return;
    for (const RecordsView::Column& column : fresh.columns) {
        const auto known = m_extents.find({agent, column.property});
        if (known == m_extents.end())
            continue;
        for (std::size_t i = 0; i < fresh.size; ++i)
            if (judgedAt(column, i).valid && !std::isnan(column.values[i]))
                known->second = united(known->second, RecordExtent{fresh.times[i], fresh.times[i]});
    }
}

const AmendmentFinder::Extent& AmendmentFinder::extentOf(RowId agent, RowId property)
{
    const std::pair key{agent, property};
    const auto known = m_extents.find(key);
    return known != m_extents.end() ? known->second
                                    : m_extents.emplace(key, foundExtent(agent, property)).first->second;
}

/// Of valid values that are numbers: those that the store's summaries count.
AmendmentFinder::Extent AmendmentFinder::foundExtent(RowId agent, RowId property)
{
    const std::array asked{property};
    const RecordOverview overview = m_before->overview(agent, asked);
    const std::vector<RecordOverview::Summary>& summaries = overview.columns[0].summaries;
    const auto isThere = [](const RecordOverview::Summary& summary) { return summary.valid > 0; };
    const auto first = std::find_if(summaries.begin(), summaries.end(), isThere);
    if (first == summaries.end())
        return std::nullopt;
    const auto last = std::find_if(summaries.rbegin(), summaries.rend(), isThere);
    Extent extent;
    for (const std::size_t place : {static_cast<std::size_t>(first - summaries.begin()),
                                    summaries.size() - 1 - static_cast<std::size_t>(last - summaries.rbegin())}) {
        const RecordOverview::Run& run = overview.runs[place];
        const RecordBlock block = *m_before->read(agent, asked, run.t0, run.t1);
        for (std::size_t i = 0; i < block.times.size(); ++i)
            if (block.columns[0].validity.isValid(i) && !std::isnan(block.columns[0].values[i]))
                extent = united(extent, RecordExtent{block.times[i], block.times[i]});
    }
    return extent;
}

}  // namespace plotix
