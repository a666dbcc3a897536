#pragma once

#include "records/columns/ColumnIndex.h"
#include "records/store/RecordColumns.h"

/// What is known of a column that somebody goes through once, stretch by stretch: the extremes of runs, and its total.
/// One thread.
namespace plotix {

class RunsInStretches {
public:
    /// *Shares* the runs of its times.
    explicit RunsInStretches(std::shared_ptr<const TimeRuns> times) : m_times(std::move(times)) {}

    /// The next elements. Requires: no more than there are times.
    void add(const ColumnView& stretch, std::size_t count);

    /// Gives the column what is known now. Requires: all elements were added; once.
    void giveTo(RecordColumns::Column& column);

private:
    void endRun();

    std::shared_ptr<const TimeRuns> m_times;
    std::size_t m_element = 0;
    RunFigures m_run;  // of the one in work
    ValueRuns m_runs;
    RecordColumns::Total m_total;
};

}  // namespace plotix
