#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QRectF>

#include <optional>
#include <vector>

/// Where the legend of a graph stands. Pure; main thread only. Points, y downward.
namespace plotkit {

/// A sample of a plot's line and the text beside it.
struct PlacedLegendEntry {
    std::shared_ptr<const CPTScatterPlot> plot;
    QRectF sample;
    PlacedText text;  ///< narrower than the text where there is no room: elide
};

struct LegendLayout {
    QRectF area;  ///< the part of the frame that axes and plots leave to it; empty: there is no legend
    std::vector<PlacedLegendEntry> entries;
    std::optional<PlacedText> more;  ///< "+3": entries for which there is no room
};

/// Below: in as many columns as there is room for, in the middle. Right: one column. It takes at most two fifths of the
/// frame; without room for a single row there is none.
LegendLayout layOutLegend(const CPTXYGraph& graph, const QRectF& frame, const TextMeasure& measureText);

/// What the legend leaves of the frame.
QRectF besideLegend(const CPTXYGraph& graph, const QRectF& frame, const LegendLayout& legend);

}  // namespace plotkit
