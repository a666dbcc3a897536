// Records with computed properties as promises: gone through once, then worked out where somebody looks.

#include "hostapp/document/ComputedReading.h"
#include "hostapp/formulas/FormulaEvaluation.h"
#include "hostapp/formulas/StreamedColumns.h"
#include "records/store/RunsInStretches.h"

#include <algorithm>

namespace plotix {

namespace {

/// Of the whole work; going through the columns takes the rest.
constexpr double kLookingUpPart = 0.1;
/// Elements gone through at a time: as many pages as one thread fills at once, so that what goes on from page to page
/// does so in order; where nothing does, several threads may fill them.
constexpr std::size_t kInOrder = 16 * PagedMemory::kPage, kInAnyOrder = 64 * PagedMemory::kPage;

void requireRead(const RecordColumns& columns)
{
    if (const auto failure = columns.failure->message())
        throw ReportableError(*failure);
}

}  // namespace

/// One reading by pages. *Borrows* the other one.
class ComputedReading::Paged {
public:
    Paged(ComputedReading& reading, const std::shared_ptr<PageCache>& cache, const ArchiveProgress& progress)
        : m_reading(reading), m_cache(cache), m_progress(progress)
    {
    }

    std::optional<RecordColumns> run()
    {
        if (!readParts())
            return std::nullopt;
        std::vector<PagedSeries> wanted;
        std::vector<PagedTimes> times;
        for (const RowId property : m_reading.m_wanted.properties) {
            const std::optional<PagedSeries> each = series(m_reading.m_wanted.agent, property, m_reading.m_span);
            if (!each)
                return std::nullopt;
            wanted.push_back(*each);
            times.push_back(each->times);
        }
        const std::optional<PagedTimes> all = unionOfTimes(times, m_cache, goesOn());
        if (!all)
            return std::nullopt;
        std::optional<RecordColumns> columns = together(wanted, *all);
        if (columns)
            followFailures(*columns);
        return columns;
    }

private:
    using Key = std::pair<RowId, Span>;

    bool isGoingOn(double fraction) const { return !m_progress || m_progress(fraction); }
    std::function<bool()> goesOn() const
    {
        return [this] { return isGoingOn(kLookingUpPart); };
    }

    bool readParts()
    {
        double done = 0;
        const double share = kLookingUpPart / static_cast<double>(m_reading.parts().size());
        for (const auto& [key, part] : m_reading.m_parts) {
            if (part.within)
                continue;
            const std::vector<RowId> properties(part.properties.begin(), part.properties.end());
            std::optional<RecordColumns> columns =
                m_reading.m_stored.columns(key.first, properties, bound(key.second.from), bound(key.second.to), m_cache,
                                           [&](double fraction) { return isGoingOn(done + share * fraction); });
            if (!columns)
                return false;
            m_parts[key] = std::move(*columns);
            done += share;
        }
        return true;
    }

    PagedSeries recorded(RowId agent, RowId property, const Span& span) const
    {
        const Key key(agent, span);
        if (const std::optional<Span>& within = m_reading.m_parts.at(key).within)
            return cutTo(recorded(agent, property, *within), bound(span.from), bound(span.to));
        const RecordColumns& part = m_parts.at(key);
        const auto column = std::find_if(part.columns.begin(), part.columns.end(),
                                         [&](const RecordColumns::Column& each) { return each.property == property; });
        return {{part.times, 0, part.times.size(), part.runs}, column->values, column->validity, 0};
    }

    std::optional<PagedSeries> series(RowId agent, RowId property, const Span& span)
    {
        const auto program = m_reading.m_programs.find(property);
        if (program == m_reading.m_programs.end())
            return recorded(agent, property, span);
        const Key key(property, span);
        if (const auto done = m_done.find(key); done != m_done.end())
            return done->second;
        const Span around = ComputedReading::around(*program->second, span);
        std::vector<PagedSeries> inputs;
        for (const FormulaInput& input : program->second->inputs) {
            const std::optional<PagedSeries> values = series(input.agent, input.property, around);
            if (!values)
                return std::nullopt;
            inputs.push_back(*values);
        }
        const auto result = evaluateByPages(program->second, inputs, m_cache, {QTimeZone::systemTimeZone(), goesOn()});
        if (!result)
            return std::nullopt;
        const PagedSeries cut = cutTo(*result, bound(span.from), bound(span.to));
        if (!goThroughWhatIsBefore(*result, cut.first))
            return std::nullopt;
        return m_done.emplace(key, cut).first->second;
    }

    /// Of a span that needs it: in one go nobody could stop it.
    bool goThroughWhatIsBefore(const PagedSeries& series, std::size_t element) const
    {
        for (std::size_t first = series.first; first < element; first += kInOrder) {
            const PagedMemory::Hold held = series.values.hold(first, std::min(element, first + kInOrder));
            for (const auto& [key, part] : m_parts)
                requireRead(part);
            if (!isGoingOn(kLookingUpPart))
                return false;
        }
        return true;
    }

    /// What is known of such a column already; null: nothing.
    const RecordColumns::Column* known(const PagedSeries& series, const TimeRuns* runs) const
    {
        for (const auto& [key, part] : m_parts)
            for (const RecordColumns::Column& column : part.columns)
                if (part.runs && part.runs.get() == runs && column.values.data() == series.values.data() &&
                    !column.values.isResident() && column.runs && column.total)
                    return &column;
        return nullptr;
    }

    /// Whether every value is made of values at the same element alone.
    bool isInAnyOrder() const
    {
        const auto isPointwise = [](const FormulaStep& step) {
            return step.what == FormulaStep::Do::Input || step.isPointwise();
        };
        return m_parts.size() == 1 &&
               std::all_of(m_reading.m_programs.begin(), m_reading.m_programs.end(), [&](const auto& each) {
                   return std::all_of(each.second->steps.begin(), each.second->steps.end(), isPointwise);
               });
    }

    std::optional<RecordColumns> together(const std::vector<PagedSeries>& wanted, const PagedTimes& all) const
    {
        const PagedTimes times = wholeTimes(all, m_cache);
        RecordColumns columns;
        columns.times = times.array;
        columns.runs = times.runs;
        std::vector<RunsInStretches> runs(wanted.size(), RunsInStretches(times.runs));
        std::vector<bool> isKnown(wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            PagedSeries each = placed(wanted[i], all, m_cache);
            const RecordColumns::Column* stored = all.isWhole() ? known(each, times.runs.get()) : nullptr;
            isKnown[i] = stored;
            if (!stored && (each.first != 0 || each.values.size() != times.count || each.values.isResident()))
                each = wholeSeries(each, m_cache);
            columns.columns.push_back({m_reading.m_wanted.properties[i], each.values, each.validity, nullptr, {}});
            if (stored) {
                columns.columns.back() = *stored;
                columns.columns.back().property = m_reading.m_wanted.properties[i];
            }
        }
        const std::size_t atOnce = isInAnyOrder() ? kInAnyOrder : kInOrder;
        for (std::size_t first = 0; first < times.count; first += atOnce) {
            const std::size_t end = std::min(times.count, first + atOnce);
            for (std::size_t i = 0; i < wanted.size(); ++i)
                if (!isKnown[i])
                    goThrough(columns.columns[i], first, end, runs[i]);
            for (const auto& [key, part] : m_parts)
                requireRead(part);
            const double part = static_cast<double>(end) / static_cast<double>(times.count);
            if (!isGoingOn(kLookingUpPart + (1 - kLookingUpPart) * part))
                return std::nullopt;
        }
        for (std::size_t i = 0; i < wanted.size(); ++i)
            if (!isKnown[i])
                finish(columns.columns[i], runs[i]);
        if (times.count == 0 && !isGoingOn(1))
            return std::nullopt;
        return columns;
    }

    static void goThrough(const RecordColumns::Column& column, std::size_t first, std::size_t end,
                          RunsInStretches& runs)
    {
        const PagedMemory::Hold held = column.values.hold(first, end);
        const std::uint64_t* valid = column.validity.isAllValid() ? nullptr : column.validity.words().data();
        runs.add({column.values.data() + first, valid, first}, end - first);
    }

    static void finish(RecordColumns::Column& column, RunsInStretches& runs)
    {
        runs.giveTo(column);
        // Where NaNs are valid, there is a bitmap.
        if (column.total->valid == column.values.size())
            column.validity = {};
    }

    /// What cannot be unpacked later is told where the columns are.
    void followFailures(const RecordColumns& columns) const
    {
        for (const auto& [key, part] : m_parts)
            part.failure->addListener(columns.failure,
                                      [failure = std::weak_ptr(columns.failure)](const QString& message) {
                                          if (const auto told = failure.lock())
                                              told->report(message);
                                      });
    }

    ComputedReading& m_reading;
    std::shared_ptr<PageCache> m_cache;
    const ArchiveProgress& m_progress;
    std::map<Key, RecordColumns> m_parts;
    std::map<Key, PagedSeries> m_done;
};

std::optional<RecordColumns> ComputedReading::columns(const std::shared_ptr<PageCache>& cache,
                                                      const ArchiveProgress& progress)
{
    return Paged(*this, cache, progress).run();
}

}  // namespace plotix
