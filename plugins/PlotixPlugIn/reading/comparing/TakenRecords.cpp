#include "plugins/PlotixPlugIn/reading/comparing/TakenRecords.h"

#include "base/PagedColumnMemory.h"
#include "base/PagedReading.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::size_t countOf(const std::vector<TakenRun>& runs)
{
    std::size_t count = 0;
    for (const TakenRun& run : runs)
        count += run.last - run.first;
    return count;
}

/// Calls `take(source, place)` for the parts of runs that come to stand at places [first, end): source is a run.
template <class Take>
void forEachPart(const std::vector<TakenRun>& runs, std::size_t first, std::size_t end, Take take)
{
    std::size_t begin = 0;  // place of the run
    for (const TakenRun& run : runs) {
        const std::size_t from = std::max(first, begin), to = std::min(end, begin + (run.last - run.first));
        if (from < to)
            take(TakenRun{run.first + (from - begin), run.first + (to - begin), run.shift}, from);
        begin += run.last - run.first;
    }
}

/// Whether what is held is what is kept, and no stand-in. Requires: it is held.
bool isRead(const PagedArray<double>& array, std::size_t first, std::size_t end)
{
    PagedMemory::Hold held;
    return array.isResident() || array.memory()->holdIfThere(first, end, held);
}

class TakenTimes : public PagedMemory {
public:
    TakenTimes(RecordTimes times, std::vector<TakenRun> runs)
        : PagedMemory(times.memory()->cache(), countOf(runs)),
          m_times(std::move(times)),
          m_runs(std::move(runs)),
          m_values(reserve<double>())
    {
    }
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        bool areRead = true;
        forEachPart(m_runs, first, end, [&](const TakenRun& part, std::size_t place) {
            double* next = m_values + place;
            inStretches(m_times, part.first, part.last, [&](std::size_t from, std::size_t to) {
                areRead = isRead(m_times, from, to) && areRead;
                next = std::transform(m_times.data() + from, m_times.data() + to, next,
                                      [&part](double time) { return time + part.shift; });
            });
        });
        return areRead;
    }
    RecordTimes m_times;
    std::vector<TakenRun> m_runs;
    double* m_values;
};

class TakenValues : public PagedColumnMemory {
public:
    TakenValues(const KTVRecordColumn& column, std::vector<TakenRun> runs)
        : PagedColumnMemory(column.archivedValues().memory()->cache(), countOf(runs)),
          m_column(column.descriptor(), column.archivedValues(), column.validity(), nullptr),
          m_runs(std::move(runs))
    {
    }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        bool areRead = true;
        std::fill(m_values + first, m_values + end, kNone);
        std::fill(m_words + first / kBits, m_words + (end + kBits - 1) / kBits, std::uint64_t{0});
        forEachPart(m_runs, first, end, [&](const TakenRun& part, std::size_t place) {
            inStretches(m_column, part.first, std::min(part.last, m_column.size()),
                        [&](std::size_t from, std::size_t to) {
                            areRead = isRead(m_column.archivedValues(), from, to) && areRead;
                            for (std::size_t index = from; index < to; ++index)
                                write(index, place + (index - part.first));
                        });
        });
        return areRead;
    }
    void write(std::size_t index, std::size_t place) const
    {
        const double value = m_column.archivedValues()[index];
        const bool isValid = m_column.validity().isValid(index) && !std::isnan(value);
        m_values[place] = value;
        m_words[place / kBits] |= std::uint64_t{isValid} << (place % kBits);
    }
    KTVRecordColumn m_column;
    std::vector<TakenRun> m_runs;
};

/// Calls `take(run, part)` for what is taken of the runs of times, in order; part is a run of its own.
template <class Take>
void forEachRun(const TimeRuns& known, const std::vector<TakenRun>& runs, Take take)
{
    for (const TakenRun& each : runs) {
        auto run = static_cast<std::size_t>(std::upper_bound(known.begin.begin(), known.begin.end(), each.first) -
                                            known.begin.begin()) -
                   1;
        for (std::size_t first = each.first; first < each.last; ++run) {
            const std::size_t last = std::min(each.last, known.begin[run + 1]);
            take(run, TakenRun{first, last, each.shift});
            first = last;
        }
    }
}

/// Of elements that are held.
void addRun(ValueRuns& runs, const KTVRecordColumn& column, std::size_t first, std::size_t last)
{
    double least = kInfinity, greatest = -kInfinity;
    bool isEmpty = true;
    const auto isValid = [&](std::size_t index) { return column.isValid(index); };
    for (std::size_t index = first; index < last; ++index) {
        if (!isValid(index))
            continue;
        const double value = column.archivedValues()[index];
        least = isEmpty || value < least ? value : least;
        greatest = isEmpty || value > greatest ? value : greatest;
        isEmpty = false;
    }
    runs.least.push_back(least);
    runs.greatest.push_back(greatest);
    runs.first.push_back(first < last && isValid(first) ? column.archivedValues()[first] : kNone);
}

ValueRuns takenRunsOf(const KTVRecordColumn& column, const TimeRuns& known, const std::vector<TakenRun>& runs)
{
    ValueRuns taken;
    const ValueRuns values = column.known().runs->unpacked();
    forEachRun(known, runs, [&](std::size_t run, const TakenRun& part) {
        const std::size_t last = std::min(part.last, column.size());
        if (part.first == known.begin[run] && last == known.begin[run + 1] && run < values.count()) {
            taken.least.push_back(values.least[run]);
            taken.greatest.push_back(values.greatest[run]);
            taken.first.push_back(values.first[run]);
            return;
        }
        const std::size_t first = std::min(part.first, last);
        const KTVRecordColumn::Hold held = column.hold(first, last);
        addRun(taken, column, first, last);
    });
    return taken;
}

std::int64_t validOnes(const KTVRecordColumn& column, const std::vector<TakenRun>& runs)
{
    std::int64_t count = 0;
    const bool areAll = column.known().count == static_cast<std::int64_t>(column.size());
    for (const TakenRun& run : runs) {
        const std::size_t last = std::min(run.last, column.size());
        if (areAll)
            count += last > run.first ? static_cast<std::int64_t>(last - run.first) : 0;
        else
            inStretches(column, run.first, last, [&](std::size_t from, std::size_t to) {
                for (std::size_t index = from; index < to; ++index)
                    count += column.validity().isValid(index) && !std::isnan(column.archivedValues()[index]) ? 1 : 0;
            });
    }
    return count;
}

}  // namespace

RecordTimes takenTimes(const RecordTimes& times, const std::vector<TakenRun>& runs)
{
    auto known = std::make_shared<TimeRuns>();
    std::size_t place = 0;
    forEachRun(*times.runs(), runs, [&](std::size_t run, const TakenRun& part) {
        const bool isBegun = part.first == times.runs()->begin[run],
                   isEnded = part.last == times.runs()->begin[run + 1];
        known->begin.push_back(place);
        known->first.push_back((isBegun ? times.runs()->first[run] : times.valueAt(part.first)) + part.shift);
        known->last.push_back((isEnded ? times.runs()->last[run] : times.valueAt(part.last - 1)) + part.shift);
        place += part.last - part.first;
    });
    known->begin.push_back(place);
    const PagedArray<double> taken = std::make_shared<const TakenTimes>(times, runs)->values();
    for (std::size_t run = 1; run < known->count(); ++run)
        if (known->first[run] < known->last[run - 1])
            return taken;
    return {taken, std::move(known)};
}

std::shared_ptr<KTVRecordColumn> takenColumn(const KTVRecordColumn& column, const RecordTimes& times,
                                             const std::vector<TakenRun>& runs)
{
    const auto values = std::make_shared<const TakenValues>(column, runs);
    auto made = std::make_shared<KTVRecordColumn>(column.descriptor(), values->values(), values->validity(),
                                                  column.unitModel());
    made->setKnown({KeptRuns::of(takenRunsOf(column, *times.runs(), runs)), validOnes(column, runs), std::nullopt});
    return made;
}

}  // namespace plotix
