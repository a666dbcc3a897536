#pragma once

#include <QtCore/QSizeF>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

class QPainter;
namespace plotkit {
struct GraphGeometry;
}

/// Room along one edge of the plot area frame, inside it and outside the labels: for a legend, an overview, flags.
struct CPTLayerRoom {
    enum class Edge { Top, Right, Bottom, Left };

    Edge edge = Edge::Bottom;
    double depth = 0;  ///< points
};

/// What somebody draws above everything of a graph: a crosshair, a mark, a selection.
///
/// Add it to a graph, draw in `drawInGraph`, and call `setNeedsDisplay` when it looks different: a view then copies its
/// kept picture of the graph and draws the layers over it, without drawing the graph again. Images and PDF pages show
/// layers too. A layer is in one graph at a time, which *shares* it. Main thread only.
class CPTGraphLayer {
public:
    CPTGraphLayer() = default;
    virtual ~CPTGraphLayer();
    CPTGraphLayer(const CPTGraphLayer&) = delete;
    CPTGraphLayer& operator=(const CPTGraphLayer&) = delete;

    /// Draws in points, y downward. The painter's state is restored afterwards. Must not change the graph. `geometry`:
    /// see plotkit/layout/GraphGeometry.h.
    virtual void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) = 0;

    /// Whether it drew roughly when it was last asked to: then it is soon asked to draw exactly. Only where the
    /// geometry says that it may.
    virtual bool isRough() const { return false; }

    /// The room it needs beside the plots; none at first. `frame` is what layers below it have left of the frame: the
    /// room goes from end to end of that. `GraphGeometry::roomOf` tells where it is. When the answer changes, the whole
    /// graph must be drawn again: call its setNeedsDisplay().
    virtual std::optional<CPTLayerRoom> room(const QSizeF& frame) const;

    /// Asks for the layers alone to be drawn again; in no graph: nothing happens.
    void setNeedsDisplay() const;

    /// Set by the graph; called by setNeedsDisplay().
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    std::function<void()> m_changeHandler;
};

using CPTGraphLayerPtr = std::shared_ptr<CPTGraphLayer>;
