#include "plugins/PlotixPlugIn/reading/comparing/EarlierRecords.h"

#include "base/LargeMemory.h"
#include "base/PagedReading.h"
#include "plugins/PlotixPlugIn/reading/comparing/TakenRecords.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace plotix {

namespace {

constexpr std::size_t kBitsOfWord = 64;

using Run = TakenRun;

/// In any order of times: each run holds neighbours that lie in one stretch.
std::vector<Run> runsOf(const RecordTimes& times, const std::vector<EarlierStretch>& stretches)
{
    std::vector<Run> runs;
    const PagedMemory::Hold held = times.runs() ? PagedMemory::Hold() : times.holdAll();
    const bool isSorted = times.runs() || std::is_sorted(times.span().begin(), times.span().end());
    for (const EarlierStretch& stretch : stretches) {
        const auto [from, to] = stretch.earlier;
        const bool hasEnd = &stretch == &stretches.back();
        const auto isIn = [&, from = from, to = to](double time) {
            return time >= from && (time < to || (hasEnd && time == to));
        };
        if (isSorted) {
            const std::size_t first = times.firstNotEarlier(from, times.size());
            const std::size_t last =
                hasEnd ? times.firstLater(to, times.size()) : times.firstNotEarlier(to, times.size());
            if (first < last)
                runs.push_back({first, last, stretch.shift});
            continue;
        }
        for (std::size_t index = 0; index < times.size(); ++index) {
            if (!isIn(times[index]))
                continue;
            if (runs.empty() || runs.back().last != index || runs.back().shift != stretch.shift)
                runs.push_back({index, index, stretch.shift});
            ++runs.back().last;
        }
    }
    return runs;
}

/// Whether the moved times of the run are those of `present` from `place` on, to the last bit.
bool isMovedOnto(const RecordTimes& times, const Run& run, const RecordTimes& present, std::size_t place)
{
    constexpr std::size_t kBlock = 1024;  // so that the first other time ends it soon, and the rest is a plain loop
    for (std::size_t first = run.first; first < run.last; first += kBlock, place += kBlock) {
        const std::size_t count = std::min(kBlock, run.last - first);
        const PagedMemory::Hold held = times.hold(first, first + count), other = present.hold(place, place + count);
        const double* from = times.data() + first;
        const double* onto = present.data() + place;
        std::size_t others = 0;
        for (std::size_t i = 0; i < count; ++i)
            others += from[i] + run.shift != onto[i] ? 1 : 0;
        if (others > 0)
            return false;
    }
    return true;
}

/// Records at even distances mostly come to stand at the very times of the present ones: then those serve.
RecordTimes shiftedTimes(const RecordTimes& times, const std::vector<Run>& runs, const KTVRecordDictionary* present)
{
    if (!times.isResident() && times.runs())
        return takenTimes(times, runs);
    std::size_t count = 0;
    for (const Run& run : runs)
        count += run.last - run.first;
    const bool isAsLong = present && present->time() && present->time()->size() == count;
    std::size_t done = 0;
    if (isAsLong && std::all_of(runs.begin(), runs.end(), [&](const Run& run) {
            const bool isSame = isMovedOnto(times, run, *present->time(), done);
            done += run.last - run.first;
            return isSame;
        }))
        return static_cast<const PagedArray<double>&>(*present->time());  // its runs are cut at other places
    const std::shared_ptr<double> shifted = unsetArray<double>(count);
    double* next = shifted.get();
    for (const Run& run : runs)
        inStretches(times, run.first, run.last, [&](std::size_t first, std::size_t last) {
            next = std::transform(times.data() + first, times.data() + last, next,
                                  [&run](double time) { return time + run.shift; });
        });
    return SharedArray<double>(shifted, count);
}

/// What is known of all times, when all of them are moved.
std::shared_ptr<const TimeRuns> shiftedRuns(const RecordTimes& times, double shift)
{
    if (!times.runs())
        return nullptr;
    const auto shifted = std::make_shared<TimeRuns>(*times.runs());
    for (std::vector<double>* each : {&shifted->first, &shifted->last})
        for (double& time : *each)
            time += shift;
    return shifted;
}

/// Elements past the column's end are no values.
std::shared_ptr<KTVRecordColumn> takenRuns(const KTVRecordColumn& column, const std::vector<Run>& runs)
{
    std::vector<double> values;
    std::vector<std::uint64_t> valid;
    std::map<std::size_t, KTVPropertyPtr> exceptions;
    const auto take = [&](double value, bool isValid) {
        const std::size_t place = values.size();
        if (place % kBitsOfWord == 0)
            valid.push_back(0);
        if (isValid)
            valid.back() |= std::uint64_t(1) << (place % kBitsOfWord);
        values.push_back(value);
    };
    for (const Run& run : runs) {
        for (auto each = column.exceptions().lower_bound(run.first);
             each != column.exceptions().end() && each->first < run.last; ++each)
            exceptions[values.size() + (each->first - run.first)] = each->second;
        const std::size_t end = std::min(run.last, column.size());
        inStretches(column, run.first, end, [&](std::size_t first, std::size_t last) {
            for (std::size_t index = first; index < last; ++index)
                take(column.archivedValues()[index],
                     column.validity().isValid(index) && !std::isnan(column.archivedValues()[index]));
        });
        for (std::size_t index = std::max(run.first, end); index < run.last; ++index)
            take(std::numeric_limits<double>::quiet_NaN(), false);
    }
    const auto taken = std::make_shared<KTVRecordColumn>(
        column.descriptor(), SharedArray<double>::fromVector(std::move(values)),
        ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid))), column.unitModel());
    for (const auto& [place, snapshot] : exceptions)
        taken->setException(place, snapshot);
    return taken;
}

}  // namespace

KTVRecordDictionaryPtr recordsBeside(const KTVRecordDictionary& earlier, const std::vector<EarlierStretch>& stretches,
                                     const KTVRecordDictionary* present,
                                     const std::function<QString(const QString&)>& keyOf)
{
    if (!earlier.time() || stretches.empty())
        return nullptr;
    const RecordTimes& times = *earlier.time();
    const std::vector<Run> runs = runsOf(times, stretches);
    const bool isWhole = runs.size() == 1 && runs.front().first == 0 && runs.front().last == times.size();
    const auto beside = std::make_shared<KTVRecordDictionary>();
    const RecordTimes moved = shiftedTimes(times, runs, present);
    beside->setTime(isWhole && !moved.runs() ? RecordTimes(moved, shiftedRuns(times, runs.front().shift)) : moved);
    for (const auto& [key, column] : earlier.columns()) {
        const bool isPaged = times.runs() && moved.runs() && column->archivedValues().memory() &&
                             column->known().runs && column->exceptions().empty();
        beside->setColumn(keyOf(key), isWhole   ? column
                                      : isPaged ? takenColumn(*column, times, runs)
                                                : takenRuns(*column, runs));
    }
    return beside;
}

}  // namespace plotix
