#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/PixelRuns.h"

#include <QtGui/QImage>

#include <optional>

/// What lies beneath everything else of a graph and does not move with a pan: fill and plot area frame.
///
/// On a raster device both are kept as an image between frames and painted anew only when size, density, position or
/// looks change. A graph painter *owns* one. Main thread only.
namespace plotkit {

class GraphBackground {
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

    /// Between the frame's corners all columns are alike, as fills change from row to row only. One of them, and how
    /// many others need not be painted, in device pixels; none where a point is no whole number of pixels.
    struct AlikeColumns {
        int column = 0;
        int spare = 0;
    };

    static AlikeColumns alikeColumns(const GraphCanvas& canvas, const CPTPlotAreaFrame& style, const QRectF& rect,
                                     const QRectF& frame);
    bool makeImage(const QSize& pixels);
    bool make(const CPTXYGraph& graph, const Look& look, const AlikeColumns& alike);
    const QImage& wholeImage();

    Look m_look;
    QImage m_memory;   // of `m_image`, and kept while the window's size changes
    QImage m_image;    // of `m_look`, or narrower where the runs hold the rest; null when there is none
    PixelRuns m_runs;  // of `m_look`, where that is shorter
};

}  // namespace plotkit
