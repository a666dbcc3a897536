#pragma once

#include "plotkit/layout/FilledArea.h"
#include "plotkit/layout/PlotDots.h"
#include "plotkit/layout/ReducedPlot.h"

#include <QtGui/QPainterPath>

/// What plots are on a page of vectors: laid-out lines, dots and areas as paths. Places are whole steps of the page,
/// which makes short numbers. Pure; any thread.
namespace plotkit {

QPainterPath pathOf(const ReducedPlot& reduced);

/// Dots, for a round pen: one at each place.
QPainterPath pathOfDots(const std::vector<QPointF>& places);
/// The same for cells, those that follow each other downward as one stroke. `steps`: of the page in a unit of the
/// cells.
QPainterPath pathOfDots(const DotCells& cells, double steps);

/// To be filled. `steps`: of the page in a unit of the area.
QPainterPath pathOf(const FilledArea& area, double steps);

}  // namespace plotkit
