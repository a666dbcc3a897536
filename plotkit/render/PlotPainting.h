#pragma once

#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/ReducedPlot.h"
#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/raster/PolylineRasteriser.h"
#include "plotkit/render/GraphCanvas.h"

#include <QtGui/QImage>

/// Draws the plots of a graph: their reduced polylines become pixels on a raster device and paths on any other.
///
/// Keeps its working memory from frame to frame; a graph painter *owns* one. Work depends on the pixels shown, never on
/// the number of points. Main thread only.
namespace plotkit {

class PlotPainting {
public:
    /// Draws the visible plots, first to last in each strip, clipped to it. `plotArea` is in points; an empty one draws
    /// nothing.
    void drawPlots(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea);

private:
    void drawPixels(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea);
    void drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea);
    void strokePlot(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot);
    bool reduce(const CPTScatterPlot& plot, const PlotView& view);
    void drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const std::vector<CPTScatterPlotPtr>& plots,
                   const QRectF& area);
    void strokePlots(const PixelBuffer& buffer, const QRect& clip, const CPTXYGraph& graph,
                     const std::vector<CPTScatterPlotPtr>& plots, const QRectF& area, double density);
    void prepareLayer(const QSize& size);

    ReducedPlot m_reduced;
    PlotEnveloping m_enveloping;
    PlotEnvelope m_envelope;
    PolylineRasteriser m_rasteriser;
    std::size_t m_slot = 0;  // of the plot drawn next
    QImage m_layer;
};

}  // namespace plotkit
