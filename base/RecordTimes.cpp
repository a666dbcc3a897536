#include "base/RecordTimes.h"

#include "base/PagedReading.h"

#include <algorithm>
#include <ranges>

namespace plotix {

namespace {

/// The first element that does not lie before the place. `IsBefore` holds for the first ones and for no others.
template <class IsBefore>
std::size_t placeIn(const double* times, std::size_t first, std::size_t end, IsBefore isBefore)
{
    return static_cast<std::size_t>(std::partition_point(times + first, times + end, isBefore) - times);
}

template <class IsBefore>
std::size_t placeByProbing(const PagedArray<double>& times, std::size_t count, IsBefore isBefore)
{
    const PagedReader<double> reader(times);
    const auto elements = std::views::iota(std::size_t{0}, count);
    return static_cast<std::size_t>(
        std::ranges::partition_point(elements, [&](std::size_t element) { return isBefore(reader[element]); }) -
        elements.begin());
}

template <class IsBefore>
std::size_t placeOf(const PagedArray<double>& times, const TimeRuns* runs, std::size_t count, IsBefore isBefore)
{
    if (times.isResident())
        return placeIn(times.data(), 0, count, isBefore);
    if (!runs)
        return placeByProbing(times, count, isBefore);
    const std::size_t run = placeIn(runs->last.data(), 0, runs->count(), isBefore);
    if (run == runs->count() || runs->begin[run] >= count)
        return count;
    if (!isBefore(runs->first[run]))
        return runs->begin[run];
    const std::size_t end = std::min(count, runs->begin[run + 1]);
    const PagedMemory::Hold held = times.hold(runs->begin[run], end);
    return placeIn(times.data(), runs->begin[run], end, isBefore);
}

}  // namespace

std::size_t firstNotEarlier(const PagedArray<double>& times, const TimeRuns* runs, std::size_t count, double time)
{
    assert(count <= times.size());
    return placeOf(times, runs, count, [time](double each) { return each < time; });
}

std::size_t firstLater(const PagedArray<double>& times, const TimeRuns* runs, std::size_t count, double time)
{
    assert(count <= times.size());
    return placeOf(times, runs, count, [time](double each) { return !(time < each); });
}

}  // namespace plotix
