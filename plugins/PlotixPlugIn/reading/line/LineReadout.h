#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/line/ReadoutBox.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <vector>

/// What a trend says at a time: the rows of the readout, and where the records read stand on their lines. Free
/// functions; main thread only.
namespace plotix {

/// A record on its line, where a dot is drawn.
struct ReadDot {
    QColor color;
    QPointF place;  ///< points
};

struct ReadAt {
    Readout readout;            ///< without a state
    std::vector<ReadDot> dots;  ///< only those within the areas of their lines
};

/// `chosen`: the line the keys follow, if it is one. A record that is farther away than records of its line usually are
/// from each other, or than can be overlooked in the picture, is given with its distance.
ReadAt readAt(const std::vector<TrendLine>& lines, double time, const plotkit::GraphGeometry& geometry,
              const ValueTexts& texts, const QString& chosen);

/// The time at a coordinate; where a record of a line stands within two points of it, the time of the nearest one.
double timeNear(const std::vector<TrendLine>& lines, double x, const plotkit::GraphGeometry& geometry);

/// Seconds in a point of the graph's default space; 0 where it shows none.
double secondsPerPoint(const plotkit::GraphGeometry& geometry);

}  // namespace plotix
