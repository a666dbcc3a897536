#pragma once

#include "plotkit/render/GraphBackground.h"
#include "plotkit/render/PlotPainting.h"
#include "plotkit/render/TextImages.h"

/// Draws whole graphs and keeps working memory from one to the next. A view that repaints *owns* one. Main thread only.
namespace plotkit {

class GraphPainter {
public:
    /// Paints the graph into `rect` (points) of the painter: fill, frame, grid, axis lines, plots, ticks, texts,
    /// layers, in this order. An empty rectangle draws nothing. Reports to no delegate. Waits for all that it needs,
    /// unless told by `parts` what it may do without.
    void paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, FrameParts* parts = nullptr);

    /// The same without the layers.
    void paintBelowLayers(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect,
                          Beneath beneath = Beneath::Picture, FrameParts* parts = nullptr);

private:
    void paintLaidOut(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, const GraphLayout& layout,
                      Beneath beneath, FrameParts* parts);

    GraphBackground m_background;
    PlotPainting m_plots;
    TextImages m_texts;
};

/// Paints the layers alone, the lowest first. An empty rectangle draws nothing. `mayBeRough`: see GraphGeometry.
void paintLayers(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, bool mayBeRough = false);

/// Tells the delegates of the graph's visible plots that they were drawn, each plot once, first to last.
///
/// Call after the painter has ended: a delegate may change widgets, the graph, or let go of it.
void reportFinishedDrawing(const CPTXYGraph& graph);

}  // namespace plotkit
