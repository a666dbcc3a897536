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
        const std::set<std::size_t> changed = changedRuns();
        for (std::size_t run = 0; run < times.count() && times.begin[run] < m_points.elements(); ++run) {
            const bool isCut = times.begin[run + 1] > m_points.elements();
            if (isCut || run >= m_runs.values.count() || changed.count(run) > 0 || !narrow(run))
                lookInto(times.begin[run], std::min(times.begin[run + 1], m_points.elements()));
        }
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

    void add(const CPTMinMax& pair, float first)
    {
        m_made.least.push_back(pair.min);
        m_made.greatest.push_back(pair.max);
        m_made.first.push_back(std::isfinite(first) ? first : kNone);
    }

    /// False where the values of a run do not tell about its finite points. Narrowing keeps the order of values.
    bool narrow(std::size_t run)
    {
        const CPTMinMax pair{plotix::singlePrecision(m_runs.values.least[run]),
                             plotix::singlePrecision(m_runs.values.greatest[run])};
        const bool isEmpty = pair.min > pair.max;
        if (!isEmpty && !(std::isfinite(pair.min) && std::isfinite(pair.max)))
            return false;
        add(isEmpty ? emptyMinMax() : pair, isEmpty ? kNone : plotix::singlePrecision(m_runs.values.first[run]));
        return true;
    }

    void lookInto(std::size_t first, std::size_t end)
    {
        m_held = m_points.hold(first, end);  // while the page before is held: it may be the same
        const plotix::ValidityBitmap isPoint = m_points.points();
        const float* y = m_points.y().data();
        CPTMinMax pair = emptyMinMax();
        for (std::size_t element = first; element < end; ++element)
            if (isPoint.isValid(element) && std::isfinite(y[element]))
                pair = joined(pair, {y[element], y[element]});
        add(pair, isPoint.isValid(first) ? y[first] : kNone);
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
