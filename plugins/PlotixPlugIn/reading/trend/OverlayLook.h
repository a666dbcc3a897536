#pragma once

#include "plotkit/model/CPTXYGraph.h"

/// Whether a graph is dark or light, for whoever draws above it. Main thread only.
namespace plotix {

/// By its own labels: light writing means a dark graph.
inline bool isDark(const CPTXYGraph& graph)
{
    const QColor labels = graph.axes().axes().front()->labelTextStyle().color;
    return !labels.isValid() || labels.lightnessF() > 0.5F;
}

}  // namespace plotix
