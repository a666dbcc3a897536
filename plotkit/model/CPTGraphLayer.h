#pragma once

#include <functional>
#include <memory>
#include <utility>

class QPainter;
namespace plotkit {
struct GraphGeometry;
}

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

    /// Asks for the layers alone to be drawn again; in no graph: nothing happens.
    void setNeedsDisplay() const;

    /// Set by the graph; called by setNeedsDisplay().
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    std::function<void()> m_changeHandler;
};

using CPTGraphLayerPtr = std::shared_ptr<CPTGraphLayer>;
