#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <memory>

/// The layer by which a part draws into the trend's graph: there only while the part has something to draw, since a
/// graph without layers is painted straight to the screen.
///
/// The part *owns* it; it *shares* the layer with the graph, which it holds weakly. A layer that asks its part for
/// anything has a `stop()`, called before it is let go: whoever else holds it may still draw it. Main thread only.
namespace plotix {

template <class Layer>
class PartLayer {
public:
    enum class Place {
        Above,   ///< what is there
        Beneath  ///< what is there, which stays readable over it
    };

    PartLayer() = default;
    ~PartLayer() { remove(); }
    PartLayer(const PartLayer&) = delete;
    PartLayer& operator=(const PartLayer&) = delete;

    /// Puts the layer that `make` answers into the graph, unless it has one of this already; a layer in another graph
    /// goes. Answers whether a new one was put. Requires: a graph.
    template <class Make>
    bool put(const CPTXYGraphPtr& graph, Place place, Make make)
    {
        if (m_layer && m_graph.lock() == graph)
            return false;
        remove();
        m_graph = graph;
        m_layer = make();
        if (place == Place::Above)
            graph->addLayer(m_layer);
        else
            graph->addLayerBeneath(m_layer);
        return true;
    }
    void remove()
    {
        if (!m_layer)
            return;
        if constexpr (requires { m_layer->stop(); })
            m_layer->stop();
        if (const CPTXYGraphPtr graph = m_graph.lock())
            graph->removeLayer(m_layer);
        m_layer.reset();
        m_graph.reset();
    }

    CPTXYGraphPtr graph() const { return m_graph.lock(); }  ///< that has the layer; null when none has
    explicit operator bool() const { return m_layer != nullptr; }
    Layer* operator->() const { return m_layer.get(); }  ///< Requires: there is one

private:
    std::weak_ptr<CPTXYGraph> m_graph;
    std::shared_ptr<Layer> m_layer;
};

}  // namespace plotix
