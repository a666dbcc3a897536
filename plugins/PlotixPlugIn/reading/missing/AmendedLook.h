#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"

#include <QtGui/QPainter>

#include <vector>

/// How records that came late or were corrected look: a row of dots and a row of crosses along the top of their lane,
/// over a faint ground, and dashes or a thread in the quality strip; all of them can be told apart without colours.
/// Free functions; main thread only.
namespace plotix {

/// Those of the lines that share a lane; *borrowed*.
using AmendedLines = std::vector<const AmendedRecords*>;

/// What of one kind is drawn: coordinates of its left and right ends in `area`, in order and apart. Stretches are at
/// least `least` points wide; what touches is one, and so is what lies within half a point: the work goes with the
/// points of the area.
std::vector<std::pair<double, double>> amendedPlaces(const AmendedLines& lines, KTVAmendment::Kind kind,
                                                     const plotkit::AxisMapping& times, const QRectF& area,
                                                     double least);

void drawAmended(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& area,
                 const AmendedLines& lines);

/// Over a line's row of the strip.
void drawAmendedInStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& row,
                        const AmendedRecords& line);

}  // namespace plotix
