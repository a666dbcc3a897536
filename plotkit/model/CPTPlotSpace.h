#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QPointF>

#include <functional>
#include <memory>
#include <vector>

class CPTXYPlotSpace;
class CPTScatterPlot;

/// Decides what a plot space's ranges become. Borrowed by the plot space, must outlive its use there or be reset.
class CPTPlotSpaceDelegate {
public:
    virtual ~CPTPlotSpaceDelegate();

    virtual bool plotSpaceShouldScaleBy(CPTXYPlotSpace* space, double factor, QPointF aboutPoint) = 0;
    /// The range to use instead of the proposed one.
    virtual CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                        CPTCoordinate coordinate) = 0;
    virtual void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace* space, CPTCoordinate coordinate) = 0;
    virtual bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace* space, QPointF atPoint) = 0;
    virtual bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace* space) = 0;
};

/// Two ranges that plots and axes of a graph stand in, both 0…1 at first.
///
/// Setting a range asks the delegate first, stores its answer, then tells it. The graph *shares* it with whoever added
/// it. Main thread only.
class CPTXYPlotSpace {
public:
    CPTPlotSpaceDelegate* delegate() const { return m_delegate; }
    void setDelegate(CPTPlotSpaceDelegate* delegate) { m_delegate = delegate; }

    bool allowsUserInteraction() const { return m_allowsUserInteraction; }
    void setAllowsUserInteraction(bool allowed) { m_allowsUserInteraction = allowed; }

    const CPTPlotRange& xRange() const;
    const CPTPlotRange& yRange() const { return m_yRange; }
    void setXRange(const CPTPlotRange& range);
    void setYRange(const CPTPlotRange& range);

    /// From here on shows the x range that another space of the same graph stores itself, and passes over x ranges
    /// proposed to this one: a second value axis over the same time. Held *weakly*; null, or the other one gone: its
    /// own x range again, as it was left.
    void followXOf(const std::shared_ptr<const CPTXYPlotSpace>& leader);

    /// Proposes the union of the plots' x extents, then that of their y extents, each as it stands (length zero too).
    /// Hidden plots count. No points at all: nothing is proposed.
    void scaleToFitPlots(const std::vector<std::shared_ptr<CPTScatterPlot>>& plots);

    /// Zooms both axes by `factor` (> 1 shows less) so that `aboutPoint` (plot-space coordinates) stays where it is,
    /// unless the delegate declines. Factors that are not positive and finite are ignored.
    void scaleBy(double factor, QPointF aboutPoint);

    /// Called after every change of a range, but not of one that is followed.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    void setRange(CPTPlotRange& stored, const CPTPlotRange& proposed, CPTCoordinate coordinate);

    CPTPlotSpaceDelegate* m_delegate = nullptr;
    bool m_allowsUserInteraction = false;
    std::weak_ptr<const CPTXYPlotSpace> m_xLeader;
    CPTPlotRange m_xRange{0, 1};
    CPTPlotRange m_yRange{0, 1};
    std::function<void()> m_changeHandler;
};

using CPTXYPlotSpacePtr = std::shared_ptr<CPTXYPlotSpace>;
