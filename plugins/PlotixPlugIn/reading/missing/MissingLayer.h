#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/missing/KeptStretches.h"
#include "plugins/PlotixPlugIn/reading/missing/LaneStretches.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"

#include <optional>
#include <vector>

/// The stretches without valid records over a graph, hatched, those whose records came late or were corrected, and a
/// quality strip at the foot of each lane.
///
/// The graph and the part *share* it. It *borrows* the lines until `stop`. Main thread only.
namespace plotix {

class MissingLayer : public CPTGraphLayer {
public:
    explicit MissingLayer(TrendLines& lines) : m_lines(&lines) {}
    void stop() { m_lines = nullptr; }

    struct Shown {
        bool stretches = false, amended = false, strip = false;
    };
    /// `read`: outside it nothing is known to be missing.
    void show(const Shown& shown, const std::optional<TimeSpan>& read);

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    struct LaneLines {
        const CPTXYPlotSpace* space;
        std::vector<std::size_t> lines;  ///< positions of the trend's own among those shown
    };

    void find(const plotkit::GraphGeometry& geometry, const std::vector<TrendLine>& lines);
    static std::vector<LaneLines> lanesOf(const CPTXYGraph& graph, const std::vector<TrendLine>& lines);
    void drawStretches(QPainter& painter, const plotkit::GraphGeometry& geometry, const LaneLines& lane) const;
    void drawStrip(QPainter& painter, const plotkit::GraphGeometry& geometry, const LaneLines& lane,
                   const std::vector<TrendLine>& lines) const;

    TrendLines* m_lines;
    Shown m_shown;
    std::optional<TimeSpan> m_read;
    KeptStretches m_kept;
    TimeSpan m_known;  // of what is drawn, that of which something is known
    const std::vector<KeptStretches::OfLine>* m_stretches = nullptr;  // kept; of the lines shown, in their order
};

}  // namespace plotix
