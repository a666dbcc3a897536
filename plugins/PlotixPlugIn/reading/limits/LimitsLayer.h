#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtCore/QRectF>

#include <functional>
#include <vector>

namespace plotkit {
struct GraphGeometry;
}

/// The limits of a trend's lines over a graph: a dashed line with its name, and a light band where values are beyond
/// it. One that lies outside the values shown is named at the edge it lies beyond.
///
/// The graph and the limits' part *share* it. Main thread only.
namespace plotix {

/// A limit where it stands in a picture; points.
struct PlacedLimit {
    KTVLimit limit;
    QString text;
    QRectF area;  ///< of the lane, or of the one scale
    double y = 0;
    long sharedBy = 1;  ///< lines of the scale that have it
    long inScale = 1;   ///< lines of the scale

    bool isInside() const { return y >= area.top() && y <= area.bottom(); }
    /// Where all that is shown there is meant: a band over other lines would say of them what holds for one.
    bool hasBand() const { return sharedBy == inScale; }
};

/// Those of the lines shown, one that several lines of a scale share once. Where a scale has several lines, the text
/// names the one that is meant. A limit without a place on a logarithmic scale has none.
std::vector<PlacedLimit> placedLimits(const std::vector<TrendLine>& lines, const plotkit::GraphGeometry& geometry,
                                      const ValueTexts& texts);

/// The part of a limit's area where values are beyond it, and not beyond a farther one, whose band that is.
QRectF bandOf(const PlacedLimit& placed, const std::vector<PlacedLimit>& all);

class LimitsLayer : public CPTGraphLayer {
public:
    using Lines = std::function<const std::vector<TrendLine>&()>;

    /// `lines` is called whenever limits are drawn, until `stop`.
    explicit LimitsLayer(Lines lines) : m_lines(std::move(lines)) {}
    void stop() { m_lines = nullptr; }

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;

private:
    Lines m_lines;
    ValueTexts m_texts;
};

}  // namespace plotix
