#pragma once

#include "plotkit/layout/PlotEnvelope.h"

#include <QtCore/QRectF>

#include <vector>

/// The area between a line and a level, or two lines, column by column: as if a vertical stroke stood at every instant.
///
/// In a column a line is everything between its extremes, so what two lines enclose reaches from the outermost of the
/// one to the outermost of the other. Where a line only passes through a column, its middle counts. Pure but for the
/// memory kept between frames; one thread at a time.
namespace plotkit {

/// Columns as wide as those of the envelopes. From `top` down to `bottom` (coordinates, y downward) the column is
/// filled; where top ≥ bottom it is not.
struct FilledArea {
    double left = 0;  ///< coordinate of column 0's left edge
    std::vector<float> top, bottom;
};

/// Fills between the line and a level, inside `area`.
void fillToLevel(FilledArea& filled, const PlotEnvelope& line, double level, const QRectF& area);

/// Fills between two lines, inside `area`, in the columns that both have. Envelopes of different columns fill nothing.
void fillBetween(FilledArea& filled, const PlotEnvelope& line, const PlotEnvelope& other, const QRectF& area);

}  // namespace plotkit
