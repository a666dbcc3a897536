#pragma once

#include "plotkit/model/CPTPlotRange.h"
#include "plotkit/model/CPTStrip.h"

#include <QtCore/QPointF>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CPTXYPlotSpace;
class CPTScatterPlot;

/// Decides what a plot space's ranges become. *Borrowed* by the plot space: reset it there before it goes. Main thread
/// only.
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

/// Which ranges of a plot space follow the user's hands: pointer, wheel, keys.
enum class CPTMovableRanges { Both, OnlyX, OnlyY };

/// What the numbers of a y range are: values, or the powers of ten that give them.
enum class CPTScaleType { Linear, Logarithmic };

/// The x and the y range that plots and axes of a graph are drawn by, both 0…1 at first.
///
/// Setting a range asks the delegate first, stores its answer, then tells it. The graph *shares* it with whoever added
/// it. Main thread only.
class CPTXYPlotSpace {
public:
    CPTPlotSpaceDelegate* delegate() const { return m_delegate; }
    void setDelegate(CPTPlotSpaceDelegate* delegate) { m_delegate = delegate; }

    bool allowsUserInteraction() const { return m_allowsUserInteraction; }
    void setAllowsUserInteraction(bool allowed) { m_allowsUserInteraction = allowed; }

    /// Which of its ranges zooms and pans change; both at first. A fit changes both, whatever this says.
    CPTMovableRanges movableRanges() const { return m_movableRanges; }
    void setMovableRanges(CPTMovableRanges ranges) { m_movableRanges = ranges; }

    /// The part of the plot area that its plots are drawn in; all of it at first.
    const CPTStrip& strip() const { return m_strip; }
    void setStrip(const CPTStrip& strip);

    const CPTPlotRange& xRange() const;
    const CPTPlotRange& yRange() const { return m_yRange; }
    void setXRange(const CPTPlotRange& range);
    void setYRange(const CPTPlotRange& range);

    /// Says what the numbers of its y range, and of its plots' series, are; linear at first. Changes no number by
    /// itself.
    CPTScaleType yScaleType() const { return m_yScaleType; }
    void setYScaleType(CPTScaleType type) { m_yScaleType = type; }
    /// The number of the y range at which a value stands; none, which is a NaN, for what has no power of ten.
    double yOfValue(double value) const;

    /// From now on this space shows the x range stored in `leader`, another space of the same graph, and ignores x
    /// ranges proposed to itself: for a second value axis over the same time. The leader is held *weakly*. Once it is
    /// null or gone, this space shows its own last x range again.
    void followXOf(const std::shared_ptr<const CPTXYPlotSpace>& leader);
    std::shared_ptr<const CPTXYPlotSpace> xLeader() const { return m_xLeader.lock(); }

    /// Proposes the union of the plots' x extents, then that of their y extents, each without padding (length zero
    /// too). Hidden plots count. No points at all: nothing is proposed.
    void scaleToFitPlots(const std::vector<std::shared_ptr<CPTScatterPlot>>& plots);
    /// Who answers, for a fit, which y range these plots need; nothing: y stays. None at first: their extents count.
    using Fitter = std::function<std::optional<CPTPlotRange>(const std::vector<std::shared_ptr<CPTScatterPlot>>&)>;
    void setFitter(Fitter fitter) { m_fitter = std::move(fitter); }

    /// Who keeps proposed ranges within what can be: asked first, the delegate about its answer. None at first.
    using Bounder = std::function<CPTPlotRange(const CPTPlotRange& proposed, CPTCoordinate)>;
    void setBounder(Bounder bounder) { m_bounder = std::move(bounder); }

    /// Zooms the movable ranges by `factor` (> 1 shows less) so that `aboutPoint` (plot-space coordinates) stays where
    /// it is, unless the delegate declines. Factors that are not positive and finite are ignored.
    void scaleBy(double factor, QPointF aboutPoint);

    /// Called after every change of this space's own ranges, not of the leader's.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    void setRange(CPTPlotRange& stored, const CPTPlotRange& proposed, CPTCoordinate coordinate);

    CPTPlotSpaceDelegate* m_delegate = nullptr;
    bool m_allowsUserInteraction = false;
    CPTMovableRanges m_movableRanges = CPTMovableRanges::Both;
    CPTStrip m_strip;
    CPTScaleType m_yScaleType = CPTScaleType::Linear;
    Fitter m_fitter;
    Bounder m_bounder;
    std::weak_ptr<const CPTXYPlotSpace> m_xLeader;
    CPTPlotRange m_xRange{0, 1};
    CPTPlotRange m_yRange{0, 1};
    std::function<void()> m_changeHandler;
};

using CPTXYPlotSpacePtr = std::shared_ptr<CPTXYPlotSpace>;
