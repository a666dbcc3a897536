#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <optional>

/// The marks over a graph that is behind: a shade where records have not been read yet, and a word where other dates
/// have been chosen than the graph shows.
///
/// A layer; the graph and the trend's reading *share* it. Main thread only.
namespace plotix {

class SpanMarks : public CPTGraphLayer {
public:
    /// What has been read (nothing: nothing is shaded), and the dates that were chosen (nothing: those of the graph).
    void show(const std::optional<TimeSpan>& read, const std::optional<TimeSpan>& chosen);

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    std::optional<TimeSpan> m_read, m_chosen;
};

}  // namespace plotix
