#pragma once

#include "plotkit/render/GraphPainter.h"

#include <QtCore/QPointF>
#include <QtCore/QSize>
#include <QtGui/QImage>

/// Paints the frames of a view: a graph with layers is kept as a picture, so that moving a layer costs no more than
/// copying that picture and drawing the layers.
///
/// A graph without layers, and one on a device without pixels, is painted straight to where it is shown, and nothing is
/// kept. A view *owns* one. Main thread
/// only.
namespace plotkit {

/// What of a graph may have changed since the frame before.
enum class GraphChange { Anything, LayersOnly };

class GraphFrames {
public:
    /// Paints graph and layers into `rect` (points) and answers whether the graph itself was painted. After a change of
    /// layers only, it is painted if size, density or position between pixels changed too. Kept pictures make no
    /// difference to the pixels, but for rounding where the graph is translucent. Reports to no delegate.
    bool paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, GraphChange change);

private:
    struct Look {
        QSize pixels;
        QPointF origin;  // where the picture's pixels begin, as a fraction of a pixel
        double density = 0;
        friend bool operator==(const Look&, const Look&) = default;
    };

    void keep(const CPTXYGraph& graph, const QRectF& rect, const Look& look);

    GraphPainter m_painter;
    Look m_look;
    QImage m_picture;  // of `m_look`; null when there is none
};

}  // namespace plotkit
