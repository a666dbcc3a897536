#include "plugins/PlotixPlugIn/reading/comparing/EarlierRecords.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace plotix {

namespace {

constexpr std::size_t kBitsOfWord = 64;

/// Elements [first, last), and how far their times are moved.
struct Run {
    std::size_t first = 0, last = 0;
    double shift = 0;
};

/// In any order of times: each run holds neighbours that lie in one stretch.
std::vector<Run> runsOf(std::span<const double> times, const std::vector<EarlierStretch>& stretches)
{
    std::vector<Run> runs;
    const bool isSorted = std::is_sorted(times.begin(), times.end());
    for (const EarlierStretch& stretch : stretches) {
        const auto [from, to] = stretch.earlier;
        const bool hasEnd = &stretch == &stretches.back();
        const auto isIn = [&, from = from, to = to](double time) {
            return time >= from && (time < to || (hasEnd && time == to));
        };
        if (isSorted) {
            const auto first = std::lower_bound(times.begin(), times.end(), from);
            const auto last =
                hasEnd ? std::upper_bound(first, times.end(), to) : std::lower_bound(first, times.end(), to);
            if (first != last)
                runs.push_back({std::size_t(first - times.begin()), std::size_t(last - times.begin()), stretch.shift});
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

SharedArray<double> shiftedTimes(std::span<const double> times, const std::vector<Run>& runs)
{
    std::vector<double> shifted;
    std::size_t count = 0;
    for (const Run& run : runs)
        count += run.last - run.first;
    shifted.reserve(count);
    for (const Run& run : runs)
        for (std::size_t index = run.first; index < run.last; ++index)
            shifted.push_back(times[index] + run.shift);
    return SharedArray<double>::fromVector(std::move(shifted));
}

/// Elements past the column's end are no values.
std::shared_ptr<KTVRecordColumn> takenRuns(const KTVRecordColumn& column, const std::vector<Run>& runs)
{
    std::vector<double> values;
    std::vector<std::uint64_t> valid;
    std::map<std::size_t, KTVPropertyPtr> exceptions;
    for (const Run& run : runs)
        for (std::size_t index = run.first; index < run.last; ++index) {
            const std::size_t place = values.size();
            const bool isThere = index < column.size();
            if (place % kBitsOfWord == 0)
                valid.push_back(0);
            if (isThere && column.isValid(index))
                valid.back() |= std::uint64_t(1) << (place % kBitsOfWord);
            values.push_back(isThere ? column.archivedValues()[index] : std::numeric_limits<double>::quiet_NaN());
            if (const auto exception = column.exceptions().find(index); exception != column.exceptions().end())
                exceptions[place] = exception->second;
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
                                     const std::function<QString(const QString&)>& keyOf)
{
    if (!earlier.time() || stretches.empty())
        return nullptr;
    const std::span<const double> times = earlier.time()->span();
    const std::vector<Run> runs = runsOf(times, stretches);
    if (runs.empty())
        return nullptr;
    const bool isWhole = runs.size() == 1 && runs.front().first == 0 && runs.front().last == times.size();
    const auto beside = std::make_shared<KTVRecordDictionary>();
    beside->setTime(shiftedTimes(times, runs));
    for (const auto& [key, column] : earlier.columns())
        beside->setColumn(keyOf(key), isWhole ? column : takenRuns(*column, runs));
    return beside;
}

}  // namespace plotix
