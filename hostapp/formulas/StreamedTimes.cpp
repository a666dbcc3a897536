#include "base/PagedReading.h"
#include "base/RecordTimes.h"
#include "hostapp/formulas/StreamedColumns.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kRun = 512;  // elements

class CopiedTimes final : public PagedMemory {
public:
    CopiedTimes(const PagedTimes& times, const std::shared_ptr<PageCache>& cache)
        : PagedMemory(cache, times.count), m_source(times), m_values(reserve<double>())
    {
    }
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        const std::size_t from = m_source.first + first, to = m_source.first + end;
        const PagedMemory::Hold held = m_source.array.hold(from, to);
        std::copy_n(m_source.array.data() + from, end - first, m_values + first);
        return isRead(m_source.array, from, to);
    }
    PagedTimes m_source;
    double* m_values;
};

/// Goes through several times at once, each time once.
class Merging {
public:
    using Places = std::vector<std::size_t>;  ///< of the next time of each

    explicit Merging(const std::vector<PagedTimes>& times) : m_places(times.size())
    {
        for (const PagedTimes& each : times)
            m_readers.emplace_back(each);
    }
    const Places& places() const { return m_places; }
    void moveTo(const Places& places) { m_places = places; }
    bool isRead() const
    {
        return std::all_of(m_readers.begin(), m_readers.end(), [](const SeriesReader& each) { return each.isRead(); });
    }

    /// Of times that compare equal that of the first array. Nothing behind the last one.
    std::optional<double> next()
    {
        std::optional<double> least;
        for (std::size_t i = 0; i < m_places.size(); ++i)
            if (m_places[i] < m_readers[i].size() && !(least && *least <= m_readers[i].time(m_places[i])))
                least = m_readers[i].time(m_places[i]);
        for (std::size_t i = 0; least && i < m_places.size(); ++i)
            if (m_places[i] < m_readers[i].size() && m_readers[i].time(m_places[i]) == *least)
                ++m_places[i];
        return least;
    }

private:
    std::vector<SeriesReader> m_readers;
    Places m_places;
};

class MergedTimes final : public PagedMemory {
public:
    /// `places`: at the beginning of each page.
    MergedTimes(const std::vector<PagedTimes>& times, std::size_t count, std::vector<Merging::Places> places,
                const std::shared_ptr<PageCache>& cache)
        : PagedMemory(cache, count), m_sources(times), m_places(std::move(places)), m_values(reserve<double>())
    {
    }
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        Merging merging(m_sources);
        merging.moveTo(m_places[first / kPage]);
        for (std::size_t i = first; i < end; ++i)
            m_values[i] = merging.next().value_or(0);
        return merging.isRead();
    }
    std::vector<PagedTimes> m_sources;
    std::vector<Merging::Places> m_places;
    double* m_values;
};

/// What is known of the runs of a part of times; worked out where nothing is.
std::shared_ptr<const TimeRuns> runsOf(const PagedTimes& times)
{
    if (times.isWhole() && times.runs)
        return times.runs;
    const auto known = std::make_shared<TimeRuns>();
    const SeriesReader reader(times);
    const auto add = [&](std::size_t begin, std::size_t end) {
        known->begin.push_back(begin);
        known->first.push_back(reader.time(begin));
        known->last.push_back(reader.time(end - 1));
    };
    if (!times.runs)
        for (std::size_t begin = 0; begin < times.count; begin += kRun)
            add(begin, std::min(times.count, begin + kRun));
    else
        for (std::size_t run = 0; run < times.runs->count(); ++run) {
            const std::size_t begin = std::max(times.first, times.runs->begin[run]);
            const std::size_t end = std::min(times.first + times.count, times.runs->begin[run + 1]);
            if (begin >= end)
                continue;
            if (begin == times.runs->begin[run] && end == times.runs->begin[run + 1]) {
                known->begin.push_back(begin - times.first);
                known->first.push_back(times.runs->first[run]);
                known->last.push_back(times.runs->last[run]);
            } else {
                add(begin - times.first, end - times.first);
            }
        }
    known->begin.push_back(times.count);
    return known;
}

}  // namespace

bool areSame(const PagedTimes& one, const PagedTimes& other)
{
    if (one.count != other.count)
        return false;
    if (one.count == 0 || one.array.data() + one.first == other.array.data() + other.first)
        return true;
    bool areAll = true;
    constexpr std::size_t kAtOnce = PagedMemory::kPage;
    for (std::size_t at = 0; at < one.count && areAll; at += kAtOnce) {
        const std::size_t end = std::min(one.count, at + kAtOnce);
        const PagedMemory::Hold held = one.array.hold(one.first + at, one.first + end),
                                beside = other.array.hold(other.first + at, other.first + end);
        const double* times = one.array.data() + one.first;
        areAll = std::equal(times + at, times + end, other.array.data() + other.first + at);
    }
    return areAll;
}

std::optional<PagedTimes> unionOfTimes(const std::vector<PagedTimes>& times, const std::shared_ptr<PageCache>& cache,
                                       const std::function<bool()>& goesOn)
{
    std::vector<PagedTimes> different;
    for (const PagedTimes& each : times)
        if (std::none_of(different.begin(), different.end(),
                         [&](const PagedTimes& other) { return areSame(each, other); }))
            different.push_back(each);
    if (different.empty())
        return PagedTimes();
    if (different.size() == 1)
        return different.front();
    Merging merging(different);
    std::vector<Merging::Places> places{merging.places()};
    const auto runs = std::make_shared<TimeRuns>();
    std::size_t count = 0;
    double last = 0;
    for (std::optional<double> time = merging.next(); time; time = merging.next()) {
        if (count % kRun == 0) {
            if (count > 0)
                runs->last.push_back(last);
            runs->begin.push_back(count);
            runs->first.push_back(*time);
        }
        last = *time;
        if (++count % PagedMemory::kPage != 0)
            continue;
        places.push_back(merging.places());
        if (goesOn && !goesOn())
            return std::nullopt;
    }
    if (count > 0)
        runs->last.push_back(last);
    runs->begin.push_back(count);
    const auto merged = std::make_shared<const MergedTimes>(different, count, std::move(places), cache);
    return PagedTimes{merged->values(), 0, count, runs};
}

PagedTimes wholeTimes(const PagedTimes& times, const std::shared_ptr<PageCache>& cache)
{
    if (times.isWhole() && times.runs && !times.array.isResident())
        return times;
    const PagedArray<double> copied = std::make_shared<const CopiedTimes>(times, cache)->values();
    return {copied, 0, times.count, runsOf(times)};
}

PagedSeries cutTo(const PagedSeries& series, std::optional<double> from, std::optional<double> to)
{
    const PagedTimes& times = series.times;
    const std::size_t end = times.first + times.count;
    const TimeRuns* runs = times.runs.get();
    std::size_t begin = from ? firstNotEarlier(times.array, runs, end, *from) : times.first;
    begin = std::max(begin, times.first);
    const std::size_t last = std::max(begin, to ? firstLater(times.array, runs, end, *to) : end);
    PagedSeries cut = series;
    cut.times.first = begin;
    cut.times.count = last - begin;
    cut.first += begin - times.first;
    return cut;
}

}  // namespace plotix
