#include "plotkit/model/PagedSeries.h"

#include "base/SinglePrecision.h"
#include "plotkit/model/CPTSeriesRuns.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace plotkit {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

/// Narrows what is known, and looks into runs.
class RunsMaking {
public:
    RunsMaking(const PagedSeriesRuns& runs, const CPTPagedPoints& points) : m_runs(runs), m_points(points) {}

    CPTSeriesRuns::Values made()
    {
        const plotix::TimeRuns& times = *m_runs.times;
        const auto begin = times.begin.begin();
        const auto runsEnd = begin + static_cast<std::ptrdiff_t>(times.count());
        const auto count = static_cast<std::size_t>(std::lower_bound(begin, runsEnd, m_points.elements()) - begin);
        for (std::vector<float>* each : {&m_made.least, &m_made.greatest, &m_made.first})
            each->resize(count);
        const std::set<std::size_t> changed = changedRuns();
        std::size_t run = 0;
        m_runs.values.inPieces([&](const plotix::ValueRuns& piece) {
            for (std::size_t place = 0; place < piece.count() && run < count; ++place, ++run)
                if (!narrow(piece, place, run) || (!changed.empty() && changed.count(run) > 0))
                    lookInto(run);
        });
        for (; run < count; ++run)
            lookInto(run);
        if (count > 0 && times.begin[count] > m_points.elements())
            lookInto(count - 1);  // it is cut
        return std::move(m_made);
    }

private:
    std::set<std::size_t> changedRuns() const
    {
        const std::vector<std::size_t>& begin = m_runs.times->begin;
        std::set<std::size_t> changed;
        for (const std::size_t element : m_runs.changed)
            if (!begin.empty() && element < begin.back())
                changed.insert(static_cast<std::size_t>(std::upper_bound(begin.begin(), begin.end(), element) -
                                                        begin.begin() - 1));
        return changed;
    }

    void set(std::size_t run, const CPTMinMax& pair, float first)
    {
        m_made.least[run] = pair.min;
        m_made.greatest[run] = pair.max;
        m_made.first[run] = std::isfinite(first) ? first : kNone;
    }

    /// False where the values of a run do not tell about its finite points. Narrowing keeps the order of values.
    bool narrow(const plotix::ValueRuns& piece, std::size_t place, std::size_t run)
    {
        const CPTMinMax pair{plotix::singlePrecision(piece.least[place]),
                             plotix::singlePrecision(piece.greatest[place])};
        const bool isEmpty = pair.min > pair.max;
        if (!isEmpty && !(std::isfinite(pair.min) && std::isfinite(pair.max)))
            return false;
        set(run, isEmpty ? emptyMinMax() : pair, isEmpty ? kNone : plotix::singlePrecision(piece.first[place]));
        return true;
    }

    void lookInto(std::size_t run)
    {
        const std::size_t first = m_runs.times->begin[run];
        const std::size_t end = std::min(m_runs.times->begin[run + 1], m_points.elements());
        m_held = m_points.hold(first, end);  // while the page before is held: it may be the same
        const plotix::ValidityBitmap isPoint = m_points.points();
        const float* y = m_points.y().data();
        CPTMinMax pair = emptyMinMax();
        for (std::size_t element = first; element < end; ++element)
            if (isPoint.isValid(element) && std::isfinite(y[element]))
                pair = joined(pair, {y[element], y[element]});
        set(run, pair, isPoint.isValid(first) ? y[first] : kNone);
    }

    const PagedSeriesRuns& m_runs;
    const CPTPagedPoints& m_points;
    CPTSeriesRuns::Values m_made;
    plotix::PagedMemory::Hold m_held;
};

}  // namespace

CPTPointSeriesPtr pagedSeries(const plotix::PagedArray<double>& x, const PagedSeriesRuns& runs,
                              const std::shared_ptr<const CPTPagedPoints>& points, std::size_t pointCount)
{
    auto known =
        std::make_shared<const CPTSeriesRuns>(runs.times, RunsMaking(runs, *points).made(), points->elements());
    return std::make_shared<const CPTPointSeries>(x, points, std::move(known), pointCount);
}

}  // namespace plotkit
