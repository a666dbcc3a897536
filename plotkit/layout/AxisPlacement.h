#pragma once

#include "plotkit/layout/AxisLayout.h"
#include "plotkit/layout/AxisMapping.h"
#include "plotkit/model/CPTAxis.h"

#include <QtCore/QRectF>

/// Placing one axis in a picture: line, ticks, grid, labels and title. Internal to the graph's layout. Pure; main
/// thread only, since label formatters are.
namespace plotkit {

/// Whether a title for which there is no room beside the plot area may stand inside it, over the plots.
enum class TextOverPlots { Allowed, Never };

/// What an axis is placed into. Borrows everything.
struct AxisSurroundings {
    const QRectF& rectangle;    ///< the whole picture, or the part of it that labels keep to; no text reaches beyond
    const QRectF& frameInside;  ///< the plot area frame less its border; titles stay inside
    const QRectF& plotArea;     ///< not empty
    const AxisMapping& along;   ///< the axis's own direction
    const AxisMapping& across;  ///< the other axis's direction
    const TextMeasure& measureText;
    TextOverPlots overPlots = TextOverPlots::Allowed;
};

/// Separates the variants of an axis's title, the longest first: one that is longer than its axis gives way to the
/// next, and an empty one to none. The last is placed wherever it has room. (The toolkit's own sign for that.)
inline constexpr QChar kTitleVariants = QChar(0x9c);

/// What is written along the axis: its title with its remark behind it, or one of them alone. Empty: nothing.
QString wholeTitle(const CPTXYAxis& axis);

/// The label of a tick; empty without a formatter.
QString tickText(const CPTXYAxis& axis, double value, double step);

/// How far outward from its line an axis reaches whose labels and title are this deep, in points; 0: there is none.
double depthBesideAxis(const CPTXYAxis& axis, double labelDepth, double titleDepth);

/// Places an axis. One that stands outside the plot area has grid lines only.
AxisLayout placeAxis(const CPTXYAxis& axis, const AxisSurroundings& surroundings);

}  // namespace plotkit
