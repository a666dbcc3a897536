#pragma once

#include "plotkit/layout/SlidingRow.h"
#include "plotkit/model/CPTPointSeries.h"
#include "plotkit/model/CPTSeriesRuns.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// A series cut along x into bins of equal width; kept from frame to frame.
///
/// Bins stand at whole multiples of their width, not at the picture's edge. A pan therefore only works out the bins
/// that came into view, and the same sample falls into the same bin in every frame. Only for x that never decreases;
/// one thread at a time.
///
/// Of a paged series, where runs are short beside a pixel, or bins hold many elements, bins begin where runs do, so
/// that they can be summed up without a look at a page; a run as long as several bins is in all of them. The pages of
/// all others are held while these are cut, as a series in memory is. Which way a bin goes is decided for stretches of
/// bins that stand still while the view is panned.
namespace plotkit {

class TimeCourse;

/// What is read of a paged series: what an exact picture needs, or nothing but its runs. From those each bin has all
/// values of the runs that reach into it, so what is drawn covers the exact line.
enum class PlotReading { Exact, RunsAlone };

/// Where x lies in a bin, 0 … 1.
inline float fractionOf(double x, double edge, double width)
{
    return static_cast<float>(std::clamp((x - edge) / width, 0.0, 1.0));
}

/// Bins `first` … `first + count − 1`; bin k holds x from origin + k × width to below the next one's.
struct BinGrid {
    double origin = 0;
    double width = 0;  ///< values, positive
    std::int64_t first = 0;
    std::size_t count = 0;
    int perPixel = 1;  ///< bins: what lies within a fraction of a pixel may fall into the bin beside

    double edge(std::int64_t bin) const { return origin + static_cast<double>(bin) * width; }

    /// The bins that hold all of [low, high]. Requires: finite values, low ≤ high, width positive.
    static BinGrid covering(double low, double high, double width, int perPixel);
    friend bool operator==(const BinGrid&, const BinGrid&) = default;
};

/// Which bins are kept from the grid before, as indexes into the new grid: [keptFirst, keptLast). The rest is worked
/// out.
struct KeptBins {
    std::ptrdiff_t moved = 0;  ///< how many bins the grid's beginning moved forward
    std::size_t keptFirst = 0, keptLast = 0;

    /// Nothing is kept where `known` is false or the grids do not match.
    static KeptBins of(const BinGrid& old, const BinGrid& grid, bool known);
};

/// The first element of every bin, and one past the last element of the last bin. Remembers x *weakly*. Plots with the
/// same x array share the edges, where the same runs stand beside a paged one: other columns asked for with them may
/// have made those longer.
class BinEdges {
public:
    /// How far from where a bin begins a block or a run may begin that is its edge, as a fraction of its width.
    static constexpr double kSnapFraction = 1.0 / 4;
    /// So many bins, counted from the grid's origin, are cut in one way: by runs, or with their pages held.
    static constexpr std::int64_t kStretch = 64;

    explicit BinEdges(PlotReading reading = PlotReading::Exact) : m_reading(reading) {}

    /// Whether they are those of a series with these times, cut into the same runs.
    bool isOf(const CPTPointSeries& series) const;
    /// Which bins of a grid are known already.
    KeptBins keptFor(const CPTPointSeries& series, const BinGrid& grid) const;

    /// Finds the edges of a grid's bins. In crowded bins an edge may lie a small fraction of a bin off, where a block
    /// of the series' index begins.
    void cover(const CPTPointSeries& series, const BinGrid& grid);

    /// For the grid covered last: one entry more than there are bins, ascending.
    const std::size_t* edges() const { return m_edges.data(); }
    /// Where the first and the last element of each bin stand, as fractions of its width; undefined for an empty bin.
    const float* enter() const { return m_enter.data(); }
    const float* leave() const { return m_leave.data(); }

    /// Whether the bin is summed up from runs, and which: [runs()[bin], runs()[bin + 1]). kNoRun: the edge lies inside
    /// a run.
    bool isByRuns(std::size_t bin) const
    {
        return m_isPaged && m_byRuns.data()[bin] != 0 && m_runs.data()[bin] != kNoRun &&
               m_runs.data()[bin + 1] != kNoRun;
    }
    /// Whether the bin holds so much that its pages are not to be held.
    bool isMuch(std::size_t bin) const { return m_isPaged && m_byRuns.data()[bin] != 0; }
    /// Whether every bin is summed up from the runs that reach into it.
    bool areRunsAlone() const { return m_isPaged && m_reading == PlotReading::RunsAlone; }
    const std::size_t* runs() const { return m_runs.data(); }
    static constexpr std::size_t kNoRun = ~std::size_t{0};

private:
    struct Found {
        std::size_t element;
        bool wasRead;  // the times had to be read
    };
    struct RunEdge {
        std::size_t element, run;
    };
    double edgeOf(std::size_t bin) const { return m_grid.edge(m_grid.first + static_cast<std::int64_t>(bin)); }
    void findBins(std::span<const double> x, const TimeCourse* course, std::size_t from, std::size_t to, bool findsEnd);
    void findPagedBins(const CPTPointSeries& series, std::size_t from, std::size_t to);
    void findHeldBins(const CPTPointSeries& series, std::size_t from, std::size_t to, bool findsEnd);
    void findBinsByRuns(const CPTPointSeries& series, std::size_t from, std::size_t to, bool findsEnd);
    bool isCrowded(const CPTSeriesRuns& runs, std::size_t bin) const;
    void findRunsAlone(const CPTSeriesRuns& runs, const KeptBins& kept);
    bool isCrowdedByGroups(const CPTSeriesRuns& runs, std::size_t bin) const;
    std::size_t groupNear(const CPTSeriesRuns& runs, std::size_t run, double value) const;
    bool isEven(const CPTSeriesRuns& runs, std::size_t run) const;
    RunEdge edgeByRuns(const CPTPointSeries& series, std::size_t from, std::size_t fromRun, double value,
                       bool byGroups) const;
    std::size_t blockBy(const TimeCourse& course, std::size_t from, std::size_t guess, double value) const;
    std::size_t blockNear(std::span<const double> x, std::size_t from, std::size_t after, double value) const;
    Found search(std::span<const double> x, const TimeCourse* course, std::size_t from, double value) const;

    PlotReading m_reading;
    std::weak_ptr<const double> m_x;
    std::weak_ptr<const plotix::TimeRuns> m_timeRuns;  // of a paged series
    std::size_t m_elements = 0;
    BinGrid m_grid;
    SlidingRow<std::size_t> m_edges;
    SlidingRow<float> m_enter, m_leave;
    double m_stride = 0;  // elements a bin
    bool m_isPaged = false;
    SlidingRow<std::size_t> m_runs;      // of a paged series: the run that an edge begins
    SlidingRow<unsigned char> m_byRuns;  // and whether a bin belongs to a stretch of many runs a bin
};

}  // namespace plotkit
