#pragma once

#include "plotkit/model/CPTPlotSpace.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>

/// What gestures and keys propose to a plot space: moves and zooms measured in points of the view.
///
/// Points are those of the view, y downward. Plot spaces are *borrowed*; a drag *shares* its own. Main thread only.
namespace plotkit {

/// How much one notch of a wheel, or one press of plus, magnifies.
inline constexpr double kZoomStep = 1.25;
/// The part of a range that one press of an arrow key, or one notch of a horizontal wheel, moves.
inline constexpr double kPanStep = 0.1;

/// The magnification of a wheel turned by `eighthsOfDegree`; 120 are one notch, positive turns magnify.
double zoomFactorForWheel(double eighthsOfDegree);

/// Which of a space's ranges moves may change.
bool movesX(const CPTXYPlotSpace& space);
bool movesY(const CPTXYPlotSpace& space);

/// Zooms about what is shown at a point; a point beside the plot area counts as the nearest one inside.
/// An empty plot area: nothing happens.
void zoomAboutPoint(CPTXYPlotSpace& space, const QRectF& plotArea, double factor, QPointF point);

/// Moves what is shown along x by `points`, positive to the right. An empty plot area: nothing happens.
void panXBy(CPTXYPlotSpace& space, const QRectF& plotArea, double points);

/// Moves the shown part of an axis by a fraction of its length, positive towards its end.
void panByFraction(CPTXYPlotSpace& space, CPTCoordinate coordinate, double fraction);

/// A pan that follows the pointer, always reckoned from the ranges at its beginning, so that it never drifts.
///
/// Ranges that someone else changes meanwhile (a fit, say) become the new start.
class PlotSpaceDrag {
public:
    /// Requires: a plot space.
    PlotSpaceDrag(CPTXYPlotSpacePtr space, const QRectF& plotArea, QPointF point);

    CPTXYPlotSpace& space() const { return *m_space; }

    /// Proposes x first, then y. A pointer that has not moved proposes nothing.
    void moveTo(QPointF point);

private:
    void beginAt(QPointF point);

    CPTXYPlotSpacePtr m_space;
    QRectF m_plotArea;
    QPointF m_startPoint;
    QPointF m_lastPoint;
    CPTPlotRange m_startX, m_startY;
    CPTPlotRange m_lastX, m_lastY;  ///< as the drag left them
};

}  // namespace plotkit
