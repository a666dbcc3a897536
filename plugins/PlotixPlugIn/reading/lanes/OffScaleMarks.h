#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/lanes/Lane.h"

#include <QtCore/QPointF>

#include <memory>
#include <vector>

/// Carets at the edge of a lane where values lie beyond its range, with their number and the farthest of them: what a
/// robust or typed range leaves out is told. A layer; the graph and the arrangement *share* it. Main thread only.
namespace plotix {

/// Values beyond a range that stand near each other in time, as indexes of elements.
struct OffScaleRun {
    std::size_t first = 0, last = 0;  ///< of the values beyond, both included
    std::size_t count = 0;
    float farthest = 0;
};

/// The runs of values below `lowest` or above `highest` among the elements [first, last): values less than `apart`
/// elements from each other are one run. Looks closely only at blocks of the index that reach beyond.
struct OffScaleRuns {
    std::vector<OffScaleRun> below, above;
};
OffScaleRuns offScaleRuns(const CPTPointSeries& series, std::size_t first, std::size_t last, float lowest,
                          float highest, std::size_t apart);

class OffScaleMarks : public CPTGraphLayer {
public:
    /// From now on these lanes' lines; borrows the list until the next call.
    void show(const std::vector<std::unique_ptr<Lane>>& lanes);

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    struct Caret {
        double x = 0;
        bool isAbove = true;
        std::size_t count = 0;
        float farthest = 0;
        CPTColor color;
    };
    /// What was found for a lane, kept while it looks the same: a layer is drawn at every move of the pointer.
    struct Found {
        CPTPlotRange x, y;
        QRectF area;
        std::vector<std::uint64_t> serials;
        std::vector<Caret> carets;
    };

    static std::vector<Caret> caretsOf(const Lane& lane, const plotkit::GraphGeometry& geometry);
    const std::vector<Caret>& carets(std::size_t index, const plotkit::GraphGeometry& geometry);
    void drawLane(QPainter& painter, const Lane& lane, const QRectF& area, const std::vector<Caret>& carets) const;

    const std::vector<std::unique_ptr<Lane>>* m_lanes = nullptr;
    std::vector<Found> m_found;
};

}  // namespace plotix
