#pragma once

#include "base/ColumnRuns.h"
#include "plotkit/model/LeastAndGreatest.h"

#include <cstddef>
#include <memory>
#include <vector>

/// What is known of a paged series without a look at its pages: runs of some hundred elements with their times, the
/// least and greatest of their finite points and the value of their first element, and a coarser level over them.
///
/// Immutable and always in memory; the times are *shared* by all series that share them. Runs differ in length and
/// begin anywhere. Any thread may read.
class CPTSeriesRuns {
public:
    static constexpr std::size_t kGroup = 32;  ///< runs that the coarser level takes together

    /// One number a run. A run without points has least > greatest; `first` is NaN where the first element is no finite
    /// point.
    struct Values {
        std::vector<float> least, greatest, first;
    };
    /// Runs of the first `elements` elements. Requires: no run is empty, and inside a run x never decreases; as many
    /// values as runs that begin before `elements`, or more.
    CPTSeriesRuns(std::shared_ptr<const plotix::TimeRuns> times, Values values, std::size_t elements);

    const std::shared_ptr<const plotix::TimeRuns>& times() const { return m_times; }
    std::size_t elements() const { return m_elements; }
    std::size_t count() const { return m_count; }

    /// Elements [begin, end). `begin(count())` is the number of elements.
    std::size_t begin(std::size_t run) const { return run < m_count ? m_times->begin[run] : m_elements; }
    std::size_t end(std::size_t run) const { return begin(run + 1); }
    double firstTime(std::size_t run) const { return m_times->first[run]; }
    /// Of the run's last element; where the series ends inside the run, no element is later.
    double lastTime(std::size_t run) const { return m_times->last[run]; }
    float firstValue(std::size_t run) const { return m_values.first[run]; }
    CPTMinMax minMaxOf(std::size_t run) const { return {m_values.least[run], m_values.greatest[run]}; }
    bool isEmpty(std::size_t run) const { return minMaxOf(run).isEmpty(); }

    /// Of runs [first, end).
    CPTMinMax minMax(std::size_t first, std::size_t end) const;
    /// The first of runs [first, end) whose first element is a finite point; `end` where there is none.
    std::size_t firstKnown(std::size_t first, std::size_t end) const;

    /// The run that element lies in. Requires: element < elements().
    std::size_t runAt(std::size_t element) const;
    /// The first run that begins at `element` or later; count() where there is none.
    std::size_t runFrom(std::size_t element) const;
    /// The first run whose first time is not below x; count() where there is none. Requires: sorted times.
    std::size_t runFromTime(double x) const;

    /// The first run that holds points, at or after `run`; count() where there is none.
    std::size_t filledFrom(std::size_t run) const;
    /// The last one before `run`; count() where there is none.
    std::size_t filledBefore(std::size_t run) const;

    /// Whether the times are finite and never decrease from run to run.
    bool areTimesSorted() const;

private:
    std::shared_ptr<const plotix::TimeRuns> m_times;
    Values m_values;
    std::size_t m_elements;
    std::size_t m_count;
    std::vector<float> m_groupLeast, m_groupGreatest;
};
