#pragma once

#include "plotkit/model/CPTGraphLayer.h"
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
    /// What the stretches were found for.
    struct View {
        CPTPlotRange times;
        double width = 0;
        std::vector<std::pair<std::uint64_t, double>> lines;  ///< serials and longest joins
        TimeSpan known;
        friend bool operator==(const View&, const View&) = default;
    };
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
    std::optional<View> m_view;
    std::vector<std::vector<MissingStretch>> m_stretches;  // of the lines shown, in their order
};

}  // namespace plotix
