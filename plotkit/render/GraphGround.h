#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/render/GraphCanvas.h"

#include <QtGui/QImage>

#include <optional>

/// What lies under everything of a graph and stays while it is panned: fill and plot area frame.
///
/// On a raster device both are kept as an image between frames and painted anew only when size, density, place or
/// looks change. Main thread only.
namespace plotkit {

class GraphGround {
public:
    /// Draws the fill of `rect` and the frame (points). Pixels do not depend on whether they were kept.
    void draw(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& rect, const QRectF& frame);

private:
    struct Look {
        QPointF origin;  // where the picture's pixels begin, as a fraction of a pixel
        double density = 0;
        QSize pixels;
        QRectF rect;
        QRectF frame;
        CPTFill fill;
        CPTFill frameFill;
        std::optional<CPTLineStyle> border;
        double cornerRadius = 0;
        friend bool operator==(const Look&, const Look&) = default;
    };

    Look m_look;
    QImage m_image;  // of `m_look`; null when there is none
};

}  // namespace plotkit
