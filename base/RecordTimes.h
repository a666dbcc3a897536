#pragma once

#include "base/ColumnRuns.h"
#include "base/PagedArray.h"

/// The times of records, and how a time is found among them: in what is known of their runs first, so that looking
/// something up reads one run at most.
///
/// Values and free functions; *shared*; any thread. Times are seconds since 1970-01-01 UTC.
namespace plotix {

/// The place of a time among the first `count`: of the first one that is not earlier, or is later; `count` without any.
/// Nothing needs to be held. `runs` may be null. Requires: times that never decrease; count ≤ times.size().
std::size_t firstNotEarlier(const PagedArray<double>& times, const TimeRuns* runs, std::size_t count, double time);
std::size_t firstLater(const PagedArray<double>& times, const TimeRuns* runs, std::size_t count, double time);

class RecordTimes : public PagedArray<double> {
public:
    RecordTimes() = default;
    RecordTimes(SharedArray<double> times) : PagedArray(std::move(times)) {}
    /// `runs` of all times, which never decrease then; it may be null.
    RecordTimes(PagedArray<double> times, std::shared_ptr<const TimeRuns> runs = nullptr)
        : PagedArray(std::move(times)), m_runs(std::move(runs))
    {
    }

    const std::shared_ptr<const TimeRuns>& runs() const { return m_runs; }

    /// Requires: not isEmpty().
    double front() const { return m_runs ? m_runs->first.front() : valueAt(0); }
    double back() const { return m_runs ? m_runs->last.back() : valueAt(size() - 1); }

    /// Among the first `count`, as above.
    std::size_t firstNotEarlier(double time, std::size_t count) const
    {
        return plotix::firstNotEarlier(*this, m_runs.get(), count, time);
    }
    std::size_t firstLater(double time, std::size_t count) const
    {
        return plotix::firstLater(*this, m_runs.get(), count, time);
    }

private:
    std::shared_ptr<const TimeRuns> m_runs;
};

}  // namespace plotix
