#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include <QtCore/QElapsedTimer>

#include <optional>

/// Keeps a graph where something can be: pans and zooms end at the first and the last record there is, and within reach
/// of the values.
///
/// What the trend or its host shows by itself is never touched, nor are times when nobody tells how far records reach.
/// A graph without any record stays at the dates that were asked for, not at the beginning of 1970. Its owner *owns*
/// it; it *borrows* the trend. Main thread only.
namespace plotix {

class ViewBounds {
public:
    explicit ViewBounds(ReadTrend& trend) : m_trend(trend) {}
    ~ViewBounds();

    void setOn(bool on);
    bool isOn() const { return m_isOn; }
    /// To be called when the graph, or one of its plot spaces, is a new one.
    void watchSpaces();

private:
    CPTPlotRange bounded(const CPTXYPlotSpace& space, const CPTPlotRange& proposed, CPTCoordinate coordinate);
    std::optional<TimeSpan> whole();

    ReadTrend& m_trend;
    bool m_isOn = false;
    std::optional<TimeSpan> m_recorded;
    QElapsedTimer m_sinceAsked;
};

/// The nearest range to the proposed one that stays within `whole` and a tenth of its own length beside it. One longer
/// than that shows all of it, and is at most one and a half times as long.
CPTPlotRange boundedTimes(const CPTPlotRange& proposed, const TimeSpan& whole);
/// The nearest range in which some of the values stay in sight, and not smaller than a hundredth of it. Equal values,
/// or one range that is no number, bound nothing.
CPTPlotRange boundedValues(const CPTPlotRange& proposed, double lowest, double highest);

}  // namespace plotix
