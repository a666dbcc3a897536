#pragma once

#include "plotkit/layout/FilledArea.h"
#include "plotkit/layout/PlotEnvelope.h"
#include "plotkit/layout/PlotView.h"
#include "plotkit/model/CPTXYGraph.h"

#include <functional>
#include <vector>

/// Which area a plot of a graph fills, if any, laid out in columns.
///
/// Keeps its working memory from frame to frame; whoever draws plots *owns* one. Main thread only.
namespace plotkit {

class PlotFills {
public:
    using ViewOf = std::function<PlotView(const CPTScatterPlot& plot)>;
    using EnvelopingOf = std::function<PlotEnveloping&(std::size_t slot)>;  ///< which works out that slot's envelope

    /// One of the plots that share a strip. Borrows them.
    struct PlotAt {
        const std::vector<CPTScatterPlotPtr>& plots;
        std::size_t index;
        std::size_t firstSlot;  ///< where an enveloping keeps the first of them, the others follow
    };

    /// Whether the plot is drawn as a line.
    static bool isLine(const CPTScatterPlot& plot);

    /// The area of a plot, up to the next call; null where it fills nothing.
    const FilledArea* areaOf(const CPTXYGraph& graph, const PlotAt& which, const EnvelopingOf& envelopingOf,
                             const ViewOf& viewOf);

private:
    PlotEnvelope m_line, m_other;
    FilledArea m_area;
};

}  // namespace plotkit
