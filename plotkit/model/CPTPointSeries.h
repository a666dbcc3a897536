#pragma once

#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"

#include <QtCore/QObject>

#include <cstdint>
#include <memory>
#include <optional>

struct CPTPoint {
    double x = 0;  ///< seconds since 1970-01-01 UTC
    double y = 0;  ///< value; stored as a single-precision float

    friend bool operator==(const CPTPoint&, const CPTPoint&) = default;
};

class CPTSeriesIndex;  // the min/max index over y
struct CPTFineBlocks;
class CPTPagedPoints;
class CPTSeriesRuns;
namespace plotkit {
class TimeCourse;
}

/// The ordered points of one plot as columns: x shared with whoever fetched it, y as floats, and a bitmap that says
/// which elements are points. The others were dropped; the line goes straight to the next point.
///
/// A series is in memory, or *paged*: then x, y, bitmap and index are read only while they are held, at no cost for one
/// in memory, and its runs tell what a frame of everything needs. Immutable once made, *shared* by array controller and
/// plot; any thread may read.
class CPTPointSeries {
public:
    /// x and y have equal lengths, or x is longer and its rest is ignored. `pointCount` is the number of set bits. An x
    /// that is paged is read into memory.
    CPTPointSeries(plotix::PagedArray<double> x, plotix::SharedArray<float> y, plotix::ValidityBitmap points,
                   std::size_t pointCount);
    /// The same, with the finer level of the index already filled. Requires: y no longer than x.
    CPTPointSeries(plotix::PagedArray<double> x, plotix::SharedArray<float> y, plotix::ValidityBitmap points,
                   std::size_t pointCount, CPTFineBlocks fine);
    /// A paged series: of all `points`, which stand at the first elements of x. Looks at no more than the pages of its
    /// first and its last point. Requires: runs of so many elements, whose times are those of x.
    CPTPointSeries(plotix::PagedArray<double> x, const std::shared_ptr<const CPTPagedPoints>& points,
                   std::shared_ptr<const CPTSeriesRuns> runs, std::size_t pointCount);
    ~CPTPointSeries();

    /// A series holding the single point (0, 0).
    static std::shared_ptr<const CPTPointSeries> origin();

    std::size_t count() const { return m_pointCount; }       ///< points
    std::size_t elementCount() const { return m_y.size(); }  ///< elements, dropped ones included
    bool isPoint(std::size_t element) const { return m_points.isValid(element); }

    /// The index-th point, counting points only. Walks the bitmap by words: for tests and few points. Holds what it
    /// reads. Requires: index < count().
    CPTPoint pointAt(std::size_t index) const;

    /// The runs of a paged series; null for one in memory.
    const std::shared_ptr<const CPTSeriesRuns>& runs() const { return m_runs; }

    /// Keeps elements in memory as long as it lives.
    struct [[nodiscard]] Hold {
        plotix::PagedMemory::Hold times, points;
    };
    /// Holds x, y, bitmap and index of elements [first, end). Requires: first ≤ end ≤ elementCount().
    Hold hold(std::size_t first, std::size_t end) const { return {m_x.hold(first, end), m_y.hold(first, end)}; }

    /// The first element whose x is not below `x`, and the first whose x is above; elementCount() where there is none.
    /// Holds a page at most. Requires: isXSorted().
    std::size_t elementFrom(double x) const;
    std::size_t elementAfter(double x) const;

    const plotix::PagedArray<double>& x() const { return m_x; }
    const plotix::PagedArray<float>& y() const { return m_y; }
    const plotix::ValidityBitmap& points() const { return m_points; }

    /// Unique among the series of this process, never 0: the key under which results worked out from a series are kept.
    std::uint64_t serial() const { return m_serial; }

    /// Whether x is finite and never decreases over the elements, dropped ones included. Of a paged series as its runs
    /// tell.
    bool isXSorted() const { return m_xSorted; }

    /// The course of x, over at least all elements; null where x is not sorted, empty or paged. Lives at least as long
    /// as the series.
    const plotkit::TimeCourse* xCourse() const { return m_xCourse.get(); }

    /// Smallest and largest x and y over the points; absent when there are none. Points with a coordinate that is not
    /// finite are left out: no range can show them.
    struct Extent {
        double minX, maxX;
        float minY, maxY;
    };
    std::optional<Extent> extent() const { return m_extent; }

    /// The min/max index over the elements; built with the series. Never null.
    const CPTSeriesIndex& index() const { return *m_index; }

private:
    std::optional<Extent> computedExtent() const;
    std::optional<Extent> extentOfAll() const;

    plotix::PagedArray<double> m_x;
    plotix::PagedArray<float> m_y;
    plotix::ValidityBitmap m_points;
    std::size_t m_pointCount;
    std::uint64_t m_serial;
    bool m_xSorted = true;
    std::shared_ptr<const plotkit::TimeCourse> m_xCourse;
    std::optional<Extent> m_extent;
    std::unique_ptr<const CPTSeriesIndex> m_index;
    std::shared_ptr<const CPTSeriesRuns> m_runs;
};

using CPTPointSeriesPtr = std::shared_ptr<const CPTPointSeries>;

/// The array controller of one series: plots bind to its "arrangedObjects.x" and "arrangedObjects.y".
///
/// Its arranged order is its content order. Main thread only.
class CPTSeriesController : public QObject {
    Q_OBJECT
public:
    explicit CPTSeriesController(CPTPointSeriesPtr content) : m_content(std::move(content)) {}

    const CPTPointSeriesPtr& content() const { return m_content; }
    const CPTPointSeriesPtr& arrangedObjects() const { return m_content; }
    void setContent(CPTPointSeriesPtr content)
    {
        m_content = std::move(content);
        emit arrangedObjectsChanged();
    }

signals:
    void arrangedObjectsChanged();

private:
    CPTPointSeriesPtr m_content;
};

using CPTSeriesControllerPtr = std::shared_ptr<CPTSeriesController>;
