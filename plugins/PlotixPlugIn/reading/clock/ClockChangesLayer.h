#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/clock/ClockChanges.h"

#include <QtCore/QString>

/// Where the clocks of a trend's zone are changed: a thin line across all lanes, with what they are changed by at the
/// time axis. The graph and the clock's part *share* it. Main thread only.
namespace plotix {

/// "clocks +1 h", "clocks −30 min".
QString changeText(const ClockChange& change);

class ClockChangesLayer : public CPTGraphLayer {
public:
    void show(std::vector<ClockChange> changes);
    const std::vector<ClockChange>& changes() const { return m_changes; }

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    std::vector<ClockChange> m_changes;
};

}  // namespace plotix
