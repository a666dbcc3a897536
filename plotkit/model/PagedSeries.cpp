#include "plotkit/model/PagedSeries.h"

#include "base/SinglePrecision.h"
#include "plotkit/model/CPTSeriesRuns.h"
#include "plotkit/model/SeriesNarrowing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <mutex>
#include <set>
#include <vector>

namespace plotkit {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

/// Numbers of runs that are made together.
struct MadeNumbers {
    void resize(std::size_t run, std::size_t count)
    {
        for (std::vector<float>* each : {&least, &greatest, &first})
            each->resize(count);
        firstRun = run;
    }
    CPTRunNumbers numbers() const { return {least.data(), greatest.data(), first.data(), firstRun, least.size()}; }

    std::vector<float> least, greatest, first;
    std::size_t firstRun = 0;
};

/// Narrows what is known, and looks into runs.
class NarrowedSource final : public CPTRunSource {
public:
    NarrowedSource(const PagedSeriesRuns& runs, std::shared_ptr<const CPTPagedPoints> points)
        : m_times(runs.times), m_values(runs.values), m_points(std::move(points))
    {
        const std::vector<std::size_t>& begin = m_times->begin;
        const auto runOf = [&begin](std::size_t element) {
            return static_cast<std::size_t>(std::upper_bound(begin.begin(), begin.end(), element) - begin.begin() - 1);
        };
        for (const std::size_t element : runs.changed)
            if (!begin.empty() && element < begin.back())
                m_changed.insert(runOf(element));
        const std::size_t elements = m_points->elements();
        if (elements > 0 && begin[runOf(elements - 1) + 1] > elements)
            m_changed.insert(runOf(elements - 1));  // it is cut
    }

    /// The page looked into last.
    void letGo() const
    {
        const std::lock_guard lock(m_mutex);
        m_held = {};
    }

    void inPieces(std::size_t first, std::size_t end, const Take& take) const override
    {
        std::size_t told = first;
        MadeNumbers made;
        m_values->piecesOf(first, end, [&](const plotix::ValueRuns& piece, std::size_t firstRun) {
            const std::size_t count = std::min(piece.count(), end - firstRun);
            made.resize(firstRun, count);
            if (isAnyChanged(firstRun, count) || !narrowAll(piece, made))
                for (std::size_t place = 0; place < count; ++place)
                    if (m_changed.count(firstRun + place) > 0 || !narrow(piece, place, made))
                        lookInto(firstRun + place, made, place);
            take(made.numbers());
            told = firstRun + count;
        });
        for (; told < end; ++told) {
            made.resize(told, 1);
            lookInto(told, made, 0);
            take(made.numbers());
        }
    }

private:
    struct Looked {
        CPTMinMax pair;
        float first;
    };

    bool isAnyChanged(std::size_t run, std::size_t count) const
    {
        const auto next = m_changed.lower_bound(run);
        return next != m_changed.end() && *next < run + count;
    }

    static void set(MadeNumbers& made, std::size_t place, const CPTMinMax& pair, float first)
    {
        made.least[place] = pair.min;
        made.greatest[place] = pair.max;
        made.first[place] = std::isfinite(first) ? first : kNone;
    }

    /// Where every run has finite points from its first element on, as nearly all have: the same as narrow() makes.
    /// Else answers false, and what it made counts for nothing.
    static bool narrowAll(const plotix::ValueRuns& piece, MadeNumbers& made)
    {
        return SeriesNarrowing::best().narrowRuns({piece.least.data(), piece.greatest.data(), piece.first.data()},
                                                  made.least.size(),
                                                  {made.least.data(), made.greatest.data(), made.first.data()});
    }

    /// False where the values of a run do not tell about its finite points. Narrowing keeps the order of values.
    static bool narrow(const plotix::ValueRuns& piece, std::size_t place, MadeNumbers& made)
    {
        const CPTMinMax pair{plotix::singlePrecision(piece.least[place]),
                             plotix::singlePrecision(piece.greatest[place])};
        const bool isEmpty = pair.min > pair.max;
        if (!isEmpty && !(std::isfinite(pair.min) && std::isfinite(pair.max)))
            return false;
        set(made, place, isEmpty ? emptyMinMax() : pair, isEmpty ? kNone : plotix::singlePrecision(piece.first[place]));
        return true;
    }

    /// Looks once.
    void lookInto(std::size_t run, MadeNumbers& made, std::size_t place) const
    {
        const std::lock_guard lock(m_mutex);
        auto looked = m_looked.find(run);
        if (looked == m_looked.end())
            looked = m_looked.emplace(run, look(run)).first;
        set(made, place, looked->second.pair, looked->second.first);
    }

    Looked look(std::size_t run) const
    {
        const std::size_t first = m_times->begin[run];
        const std::size_t end = std::min(m_times->begin[run + 1], m_points->elements());
        m_held = m_points->hold(first, end);  // while the page before is held: it may be the same
        const plotix::ValidityBitmap isPoint = m_points->points();
        const float* y = m_points->y().data();
        CPTMinMax pair = emptyMinMax();
        for (std::size_t element = first; element < end; ++element)
            if (isPoint.isValid(element) && std::isfinite(y[element]))
                pair = joined(pair, {y[element], y[element]});
        return {pair, isPoint.isValid(first) ? y[first] : kNone};
    }

    const std::shared_ptr<const plotix::TimeRuns> m_times;
    const std::shared_ptr<const plotix::KeptRuns> m_values;
    const std::shared_ptr<const CPTPagedPoints> m_points;
    std::set<std::size_t> m_changed;
    mutable std::mutex m_mutex;  // for what was looked into
    mutable std::map<std::size_t, Looked> m_looked;
    mutable plotix::PagedMemory::Hold m_held;
};

}  // namespace

CPTPointSeriesPtr pagedSeries(const plotix::PagedArray<double>& x, const PagedSeriesRuns& runs,
                              const std::shared_ptr<const CPTPagedPoints>& points, std::size_t pointCount)
{
    const auto numbers = std::make_shared<const NarrowedSource>(runs, points);
    auto known = std::make_shared<const CPTSeriesRuns>(runs.times, numbers, points->elements());
    numbers->letGo();
    return std::make_shared<const CPTPointSeries>(x, points, std::move(known), pointCount);
}

}  // namespace plotkit
