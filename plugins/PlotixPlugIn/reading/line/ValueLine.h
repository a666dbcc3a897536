#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"

#include <functional>
#include <optional>

/// The vertical over all lanes at the time that is read, with a dot on each line and the readout beside it.
///
/// What stands there is worked out when it is drawn: several moves of the pointer between two frames cost one of them.
/// On a screen it is drawn always, in pictures, on pages and on paper only while it is held. The graph and the value
/// line's part *share* it. Main thread only.
namespace plotix {

class ValueLine : public CPTGraphLayer {
public:
    struct Place {
        double time = 0;
        bool isHeld = false;
        std::optional<QPointF> pointer;  ///< where it is over the graph, points
    };
    using Read = std::function<ReadAt(double time, const plotkit::GraphGeometry& geometry)>;

    /// `read` is called whenever the line is drawn, until `stop`.
    explicit ValueLine(Read read) : m_read(std::move(read)) {}

    void show(const std::optional<Place>& place);
    void stop() { m_read = nullptr; }

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    Read m_read;
    std::optional<Place> m_place;
};

}  // namespace plotix
