#include "plotkit/render/GraphFrames.h"

#include "plotkit/render/FreshImage.h"
#include "plotkit/render/GraphCanvas.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

namespace plotkit {

bool GraphFrames::paint(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, GraphChange change,
                        FrameTruth truth)
{
    m_truth = truth;
    if (graph.layers().empty()) {
        m_picture = QImage();
        m_areLayersRough = false;
        paintGraph(painter, graph, rect, Beneath::Picture);
        return true;
    }
    bool isPainted =
        change == GraphChange::Anything || m_picture.isNull() || (m_isProvisional && truth == FrameTruth::Exact);
    {
        GraphCanvas canvas(painter);
        if (!canvas.isAligned()) {
            paintGraph(painter, graph, rect, Beneath::Picture);
            paintLayersOf(painter, graph, rect);
            return true;
        }
        const QRect target = canvas.alignedRect(rect).toRect();
        const Look look{target.size(), canvas.toPainter(rect).topLeft() - QPointF(target.topLeft()), canvas.density()};
        isPainted = isPainted || !(look == m_look);
        if (isPainted)
            keep(graph, rect, look);
        if (m_picture.isNull())  // no memory for one of its own
            paintGraph(painter, graph, rect, Beneath::Picture);
        else
            canvas.painter().drawImage(target.topLeft(), m_picture);
    }
    paintLayersOf(painter, graph, rect);
    return isPainted;
}

void GraphFrames::paintLayersOf(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect)
{
    if (m_truth == FrameTruth::Exact) {
        paintLayers(painter, graph, rect);
        return;
    }
    const bool mayBeRough = !std::exchange(m_settlesLayers, false);
    paintLayers(painter, graph, rect, mayBeRough);
    // A layer that drew nothing may still say what it drew last.
    m_areLayersRough = mayBeRough && std::any_of(graph.layers().begin(), graph.layers().end(),
                                                 [](const CPTGraphLayerPtr& layer) { return layer->isRough(); });
}

void GraphFrames::keep(const CPTXYGraph& graph, const QRectF& rect, const Look& look)
{
    if (m_picture.size() != look.pixels)
        m_picture = freshImage(look.pixels, QImage::Format_ARGB32_Premultiplied);
    m_look = look;
    if (m_picture.isNull())
        return;
    QPainter painter(&m_picture);
    painter.translate(look.origin - rect.topLeft() * look.density);
    painter.scale(look.density, look.density);
    paintGraph(painter, graph, rect, Beneath::Nothing);
}

/// Below the layers. What is held until a graph can be painted exactly is needed no longer when it was: it is summed up
/// in the painter's bins.
void GraphFrames::paintGraph(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, Beneath beneath)
{
    if (m_truth == FrameTruth::Exact) {
        // A picture for somebody: what the screen shows is as it was, and settles later.
        m_painter.paintBelowLayers(painter, graph, rect, beneath);
        return;
    }
    FrameParts parts{m_filling.held(), {}, {}};
    m_painter.paintBelowLayers(painter, graph, rect, beneath, &parts);
    const bool wasProvisional = std::exchange(m_isProvisional, !parts.lacking.empty());
    if (m_isProvisional && !m_filling.fill(std::move(parts.lacking))) {
        m_isProvisional = false;
        m_painter.paintBelowLayers(painter, graph, rect, beneath);
    } else if (wasProvisional && !m_isProvisional) {
        m_filling.letGo();
        m_lookedAt.clear();
    }
    if (m_isProvisional)
        return;
    m_filling.bring(std::move(parts.ahead));  // also nothing: what was ahead may be so no longer
    lookAhead(graph);
}

/// A wide frame looks at groups of runs alone, the narrower one after it at the runs.
void GraphFrames::lookAhead(const CPTXYGraph& graph)
{
    std::vector<CPTPointSeriesPtr> paged;
    std::vector<std::uint64_t> serials;
    for (const CPTScatterPlotPtr& plot : graph.allPlots())
        if (!plot->isHidden() && plot->series() && plot->series()->runs()) {
            paged.push_back(plot->series());
            serials.push_back(plot->series()->serial());
        }
    if (serials == m_lookedAt)
        return;
    m_lookedAt = std::move(serials);
    m_filling.lookAt(std::move(paged));
}

}  // namespace plotkit
