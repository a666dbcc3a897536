#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <QtCore/QByteArray>
#include <QtCore/QSizeF>
#include <QtGui/QImage>

class QPainter;

/// Draws a graph: screen, image and PDF come from one routine. Main thread only.
namespace plotkit {

enum class DrawingReport { Silent, TellDelegates };

/// Paints the graph into `rect` (points) of the painter. Visible plots that were drawn report to their delegates when
/// asked, after the whole graph is painted. On a vector device lines stay vectors. An empty rectangle draws nothing.
void paintGraph(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, DrawingReport report);

/// A transparent image of the graph, `size` points at `density` pixels a point. The same graph gives the same pixels.
/// Empty sizes, densities that are not positive and finite, and sides beyond 32,767 pixels answer a null image.
QImage imageOfGraph(const CPTXYGraph& graph, const QSizeF& size, double density, DrawingReport report);

/// One PDF page of that size, vectors throughout, transparent where the graph is. The same graph gives the same bytes.
/// Empty sizes answer no data.
QByteArray pdfOfGraph(const CPTXYGraph& graph, const QSizeF& size, DrawingReport report);

/// One SVG drawing of that size, which it says in millimetres; lines and outlines of texts throughout, transparent
/// where the graph is. The same graph gives the same bytes. Empty sizes answer no data.
QByteArray svgOfGraph(const CPTXYGraph& graph, const QSizeF& size, DrawingReport report);

}  // namespace plotkit
