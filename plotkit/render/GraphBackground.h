#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/PixelRuns.h"

#include <QtGui/QImage>

#include <optional>
#include <vector>

/// What lies beneath everything else of a graph and does not move with a pan: fill, plot area frame, and the panels of
/// its strips.
///
/// On a raster device they are kept as an image between frames and painted anew only when size, density, position or
/// looks change. A graph painter *owns* one. Main thread only.
namespace plotkit {

/// What a graph is painted over.
enum class Beneath {
    Picture,  ///< where the graph is translucent it shows through
    Nothing   ///< whatever stands in the rectangle is replaced
};

class GraphBackground {
public:
    /// Where it stands, in points.
    struct Places {
        struct Panel {
            QRectF rect;
            CPTFill fill;
            friend bool operator==(const Panel&, const Panel&) = default;
        };
        QRectF rect, frame;
        std::vector<Panel> panels = {};  ///< within the frame
        friend bool operator==(const Places&, const Places&) = default;
    };

    /// Draws the fill of the rectangle, the frame and the panels. Pixels do not depend on whether they were kept.
    void draw(GraphCanvas& canvas, const CPTXYGraph& graph, const Places& places, Beneath beneath = Beneath::Picture);

private:
    struct Look {
        QPointF origin;  // where the picture's pixels begin, as a fraction of a pixel
        double density = 0;
        QSize pixels;
        Places places;
        CPTFill fill;
        CPTFill frameFill;
        std::optional<CPTLineStyle> border;
        double cornerRadius = 0;
        bool isOpaque = true;
        friend bool operator==(const Look&, const Look&) = default;
    };

    /// Between the frame's corners, and the panels' sides, all columns are alike, as fills change from row to row only.
    /// One of them, and how many others need not be painted, in device pixels; none where a point is no whole number of
    /// pixels.
    struct AlikeColumns {
        int column = 0;
        int spare = 0;
    };

    static AlikeColumns alikeColumns(const GraphCanvas& canvas, const CPTPlotAreaFrame& style, const Places& places);
    static void paintOver(GraphCanvas& canvas, const CPTXYGraph& graph, const Places& places, Beneath beneath);
    bool makeImage(const QSize& pixels, bool isOpaque);
    bool make(const CPTXYGraph& graph, const Look& look, const AlikeColumns& alike);
    const QImage& wholeImage();

    Look m_look;
    QImage m_memory;   // of `m_image`, and kept while the window's size changes
    QImage m_image;    // of `m_look`, or narrower where the runs hold the rest; null when there is none
    PixelRuns m_runs;  // of `m_look`, where that is shorter
};

}  // namespace plotkit
