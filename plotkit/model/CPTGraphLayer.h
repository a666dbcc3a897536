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
/// Add it to a graph, draw in `drawInGraph`, and call `setNeedsDisplay` when it looks different: a view then lays the
/// kept picture of the graph down and draws the layers over it, without drawing the graph again. Pictures and pages
/// show layers too. In one graph at a time, which *shares* it. Main thread only.
class CPTGraphLayer {
public:
    CPTGraphLayer() = default;
    virtual ~CPTGraphLayer();
    CPTGraphLayer(const CPTGraphLayer&) = delete;
    CPTGraphLayer& operator=(const CPTGraphLayer&) = delete;

    /// Draws in points, y downward. The painter comes back as it was, whatever is set on it. Must change nothing of the
    /// graph. `geometry` is plotkit/layout/GraphGeometry.h.
    virtual void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) = 0;

    /// Asks for the layers alone to be drawn again; in no graph: nothing happens.
    void setNeedsDisplay() const;

    /// The graph's own, called by setNeedsDisplay().
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

private:
    std::function<void()> m_changeHandler;
};

using CPTGraphLayerPtr = std::shared_ptr<CPTGraphLayer>;
