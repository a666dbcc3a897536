#pragma once

#include "plotkit/layout/FilledArea.h"
#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/PlotView.h"
#include "plotkit/model/CPTXYGraph.h"

#include <functional>

/// Which area a plot of a graph fills, if any, laid out in columns.
///
/// Keeps its working memory from frame to frame; whoever draws plots *owns* one. Main thread only.
namespace plotkit {

class PlotFills {
public:
    using ViewOf = std::function<PlotView(const CPTScatterPlot& plot)>;

    /// The area of the `slot`-th of the graph's plots, up to the next call; null where it fills nothing. `enveloping`
    /// keeps the lines of these plots at these slots.
    const FilledArea* areaOf(const CPTXYGraph& graph, std::size_t slot, PlotEnveloping& enveloping,
                             const ViewOf& viewOf);

private:
    static bool isLine(const CPTScatterPlot& plot);

    PlotEnvelope m_line, m_other;
    FilledArea m_area;
};

}  // namespace plotkit
