#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/host/KTVAmendments.h"

#include <QtGui/QPainter>

#include <vector>

/// How records that came late or were corrected look: a row of dots and a row of crosses along the top of their lane,
/// over a faint ground, and dashes or a thread in the quality strip; all of them can be told apart without colours.
/// Free functions; main thread only.
namespace plotix {

/// What of one kind is drawn: coordinates of its left and right ends in `area`, in order and apart. Stretches are at
/// least `least` points wide; what touches is one.
std::vector<std::pair<double, double>> amendedPlaces(const std::vector<KTVAmendment>& amendments,
                                                     KTVAmendment::Kind kind, const plotkit::AxisMapping& times,
                                                     const QRectF& area, double least);

/// `amendments`: of all lines of the lane.
void drawAmended(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& area,
                 const std::vector<KTVAmendment>& amendments);

/// Over a line's row of the strip.
void drawAmendedInStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const QRectF& row,
                        const std::vector<KTVAmendment>& amendments);

}  // namespace plotix
