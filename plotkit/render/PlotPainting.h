#pragma once

#include "plotkit/layout/FrameParts.h"
#include "plotkit/layout/LineDashes.h"
#include "plotkit/layout/PlotDots.h"
#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/PlotMovement.h"
#include "plotkit/layout/ReducedPlot.h"
#include "plotkit/model/CPTXYGraph.h"
#include "plotkit/raster/PolylineRasteriser.h"
#include "plotkit/render/GraphCanvas.h"
#include "plotkit/render/PlotFills.h"

#include <QtGui/QImage>
#include <QtGui/QPainterPath>

#include <functional>
#include <optional>
#include <vector>

/// Draws the plots of a graph: their reduced polylines become pixels on a raster device and paths on any other.
///
/// Keeps its working memory from frame to frame; a graph painter *owns* one. Work depends on the pixels shown, never on
/// the number of points. Main thread only.
namespace plotkit {

class PlotPainting {
public:
    /// Draws the visible plots, first to last in each strip, clipped to it. `plotArea` is in points; an empty one draws
    /// nothing. Without `parts` the picture is exact whatever it takes; so is one on a page.
    void drawPlots(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea, FrameParts* parts = nullptr);

private:
    void drawPixels(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea, FrameParts* parts);
    void findLacking(const GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea, FrameParts& parts);
    struct Moving {
        CPTPointSeriesPtr series;
        PlotView view;
        std::size_t slot;
        CPTPlotRange next;
    };
    SeriesParts partsAhead(const std::vector<Moving>& moving, double share) const;
    SeriesParts partsAhead(const std::vector<Moving>& moving) const;
    PlotEnveloping& envelopingOf(std::size_t slot) { return isByRunsAlone(slot) ? m_provisional : m_enveloping; }
    bool isByRunsAlone(std::size_t slot) const { return slot < m_byRunsAlone.size() && m_byRunsAlone[slot]; }
    void drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const QRectF& plotArea);
    void prepareLines(const std::vector<CPTScatterPlotPtr>& plots, const PlotFills::ViewOf& viewOf, double density);
    void strokePlot(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot);
    void strokeLine(const CPTScatterPlot& plot, const PlotView& view, double density, std::size_t slot);
    /// Where a page shows plots, in steps of the page.
    struct PageClip {
        bool isNeeded = false;  ///< the device leaves a painter's clip out of account
        QRectF rect;

        QPainterPath lines(const QPainterPath& path) const;
        QPainterPath area(const QPainterPath& path) const;
    };
    struct PagePlace {
        std::size_t slot;
        const PageClip& clip;
    };
    void drawPath(QPainter& painter, const CPTScatterPlot& plot, const PagePlace& place,
                  const std::function<PlotView(double)>& viewAt);
    bool reduceForPage(const CPTScatterPlot& plot, std::size_t slot, const std::function<PlotView(double)>& viewAt);
    const ReducedPlot& dashed(const std::optional<DashPattern>& dashes, const PlotView& view);
    bool reduce(const CPTScatterPlot& plot, const PlotView& view);
    /// Of a line that breaks at gaps the points that stand alone, as dots wider than the line.
    void strokeLonePoints(const CPTScatterPlot& plot, double density);
    void drawPaths(GraphCanvas& canvas, const CPTXYGraph& graph, const std::vector<CPTScatterPlotPtr>& plots,
                   const QRectF& area);
    void strokePlots(const PixelBuffer& buffer, const QRect& clip, const CPTXYGraph& graph,
                     const std::vector<CPTScatterPlotPtr>& plots, const QRectF& area, double density);
    void prepareLayer(const QSize& size);

    ReducedPlot m_reduced, m_dashed;
    PlotEnveloping m_enveloping;
    PlotEnveloping m_provisional{PlotReading::RunsAlone};
    std::vector<bool> m_byRunsAlone;  // by slot, of the frame being drawn
    PlotMovement m_movement;
    PlotEnvelope m_envelope;
    PlotFills m_fills;
    PlotDots m_dots;
    std::vector<QPointF> m_places;
    std::vector<QPointF> m_lone;  // of the plot drawn last, in the units of its view
    PolylineRasteriser m_rasteriser;
    std::size_t m_slot = 0;  // of the plot drawn next
    QImage m_layer;
};

}  // namespace plotkit
