#pragma once

#include "plotkit/layout/GraphLayout.h"
#include "plotkit/model/CPTStyles.h"

#include <QtGui/QFont>

class QPainter;

/// Fonts for text styles, the size of a text, and a text drawn into its box.
///
/// The same font measures and draws, on every device, with advances that do not depend on hinting: what the layout made
/// room for is what is drawn, at every density. Main thread only.
namespace plotkit {

/// The font of a style, `density` pixels a point. "Helvetica-Bold" is the bold face of Helvetica; a family that is
/// missing is replaced by the nearest sans serif.
QFont fontForStyle(const CPTTextStyle& style, double density = 1.0);

/// Width of the longest line and height of all of them, in points. An empty text answers (0, 0).
QSizeF sizeOfText(const QString& text, const CPTTextStyle& style);

/// Where and how a text is drawn.
struct TextPlacing {
    QRectF box;            ///< painter units
    double density = 1.0;  ///< painter units a point
    bool snaps = false;    ///< lines start on whole pixels
    bool hasHalo = false;  ///< a soft edge keeps the text readable on plots of any colour
};

/// Draws a text into its box, line by line. A line longer than the box ends in an ellipsis.
void drawPlacedText(QPainter& painter, const PlacedText& text, const CPTTextStyle& style, const TextPlacing& placing);

}  // namespace plotkit
