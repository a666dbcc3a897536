#include "hostapp/document/RecordCopying.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();
constexpr std::size_t kValuesAtATime = std::size_t{1} << 22;

std::optional<double> bound(double time)
{
    return std::isinf(time) ? std::nullopt : std::optional(time);
}

double justAfter(double time)
{
    return std::nextafter(time, kOpen);
}

double justBefore(double time)
{
    return std::nextafter(time, -kOpen);
}

/// In order and apart from each other.
std::vector<CopiedSpan> disjoint(std::vector<CopiedSpan> spans)
{
    std::sort(spans.begin(), spans.end());
    std::vector<CopiedSpan> apart;
    for (const CopiedSpan& span : spans)
        if (!apart.empty() && span.first <= apart.back().second)
            apart.back().second = std::max(apart.back().second, span.second);
        else
            apart.push_back(span);
    return apart;
}

class Copying {
public:
    Copying(RecordStore& from, RecordStore& to, const RecordCopy& what, const ArchiveProgress& progress)
        : m_from(from), m_to(to), m_what(what), m_progress(progress)
    {
        for (const auto& [property, other] : what.properties)
            m_properties.push_back(property);
    }

    std::optional<std::size_t> run()
    {
        const std::vector<CopiedSpan> spans = disjoint(m_what.spans);
        for (const CopiedSpan& span : spans)
            m_total += m_from.overview(m_what.agent, {}, bound(span.first), bound(span.second)).records();
        double end = -kOpen;
        for (const CopiedSpan& span : spans) {
            copyNeighbours(end, span.first);
            if (!copySpan(span))
                return std::nullopt;
            end = span.second;
        }
        copyNeighbours(end, kOpen);
        copyAmendments(spans);
        return m_copied;
    }

private:
    bool copySpan(CopiedSpan span)
    {
        span.first = std::max(span.first, m_what.from.value_or(-kOpen));
        if (span.first > span.second)
            return true;
        const std::size_t most = kValuesAtATime / (m_properties.size() + 1);
        double begin = span.first;
        std::size_t records = 0;
        for (const RecordOverview::Run& run :
             m_from.overview(m_what.agent, {}, bound(span.first), bound(span.second)).runs) {
            records += run.records;
            if (records < most || run.t1 >= span.second)
                continue;
            if (!copyPart(begin, run.t1))
                return false;
            begin = justAfter(run.t1);
            records = 0;
        }
        return copyPart(begin, span.second);
    }

    bool copyPart(double from, double to)
    {
        const std::optional<RecordBlock> block =
            m_from.read(m_what.agent, m_properties, bound(from), bound(to), [this](double) { return goesOn(); });
        if (!block)
            return false;
        put(*block);
        return goesOn();
    }

    /// Which records came late or were corrected is true of the copies as well.
    void copyAmendments(const std::vector<CopiedSpan>& spans)
    {
        const auto writer = m_to.begin();
        for (const auto& [from, to] : spans)
            for (const Amendment& each : m_from.amendments(m_what.agent, m_properties, bound(from), bound(to))) {
                Amendment copied = within(each, from, to);
                copied.property = m_what.properties.at(each.property);
                writer->addAmendment(m_what.toAgent, copied);
            }
        writer->commit();
    }

    bool goesOn() const
    {
        const double done = m_total == 0 ? 0 : static_cast<double>(m_copied) / static_cast<double>(m_total);
        return !m_progress || m_progress(std::min(done, 1.0));
    }

    void put(RecordBlock block)
    {
        if (block.times.size() == 0)
            return;
        for (RecordBlock::Column& column : block.columns)
            column.property = m_what.properties.at(column.property);
        const auto writer = m_to.begin();
        writer->store(m_what.toAgent, block);
        writer->commit();
        m_copied += block.times.size();
    }

    /// Of each property the first value after one span and the last one before the next, both of which are left out.
    void copyNeighbours(double after, double before)
    {
        if (before <= after)
            return;
        std::map<double, std::vector<RowId>> neighbours;
        for (const RowId property : m_properties) {
            std::optional<double> first, last;
            if (!std::isinf(after))
                first = outermost(property, after, before, Side::First);
            if (!std::isinf(before))
                last = outermost(property, after, before, Side::Last);
            if (first)
                neighbours[*first].push_back(property);
            if (last && last != first)
                neighbours[*last].push_back(property);
        }
        for (const auto& [time, properties] : neighbours)
            if (auto block = m_from.read(m_what.agent, properties, time, time))
                put(std::move(*block));
    }

    enum class Side { First, Last };
    std::optional<double> outermost(RowId property, double after, double before, Side side)
    {
        const RowId asked[] = {property};
        const double from = justAfter(after), to = justBefore(before);
        RecordOverview overview = m_from.overview(m_what.agent, asked, bound(from), bound(to));
        for (std::size_t i = 0; i < overview.runs.size(); ++i) {
            const std::size_t place = side == Side::First ? i : overview.runs.size() - 1 - i;
            if (overview.columns.front().summaries[place].valid == 0)
                continue;
            const RecordOverview::Run& run = overview.runs[place];
            const auto block = m_from.read(m_what.agent, asked, std::max(from, run.t0), std::min(to, run.t1));
            if (const auto found = block ? outermostValid(*block, side) : std::nullopt)
                return found;
        }
        return std::nullopt;
    }

    static std::optional<double> outermostValid(const RecordBlock& block, Side side)
    {
        const std::size_t count = block.times.size();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t place = side == Side::First ? i : count - 1 - i;
            if (block.columns.front().validity.isValid(place))
                return block.times[place];
        }
        return std::nullopt;
    }

    RecordStore& m_from;
    RecordStore& m_to;
    const RecordCopy& m_what;
    const ArchiveProgress& m_progress;
    std::vector<RowId> m_properties;
    std::size_t m_total = 0, m_copied = 0;
};

}  // namespace

std::optional<std::size_t> copyRecords(RecordStore& from, RecordStore& to, const RecordCopy& what,
                                       const ArchiveProgress& progress)
{
    return Copying(from, to, what, progress).run();
}

}  // namespace plotix
