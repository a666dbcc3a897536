#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/overview/OverviewPicture.h"
#include "plugins/PlotixPlugIn/reading/overview/OverviewWindow.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <optional>

/// The overview below a graph: all lines, dimmed but for what is shown, a window round that, and first and last time.
///
/// The graph and the overview's part *share* it. Main thread only.
namespace plotix {

class OverviewLayer : public CPTGraphLayer {
public:
    /// `trend` is *borrowed* until `stop`.
    explicit OverviewLayer(const ReadTrend& trend) : m_trend(&trend), m_texts(trend.clock()) {}
    void stop() { m_trend = nullptr; }
    void setClock(const CPTClock& clock) { m_texts.setClock(clock); }

    /// Takes the lines as they are, as drawing does. Needs the whole graph drawn again where there were none before, or
    /// are none now.
    void take(const CPTXYGraph& graph);

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;
    /// Its lines are drawn anew only when the view rests: they change with the room of the labels, often in a zoom.
    bool isRough() const override { return m_picture.isRough(); }
    std::optional<CPTLayerRoom> room(const QSizeF& frame) const override;

    /// Where its window stands; nothing where it is not drawn.
    std::optional<OverviewWindow> windowIn(const plotkit::GraphGeometry& geometry) const;

private:
    void drawTimes(QPainter& painter, const OverviewWindow& window, const QRectF& room,
                   const CPTTextStyle& style) const;

    const ReadTrend* m_trend;
    OverviewPicture m_picture;
    ValueTexts m_texts;
};

}  // namespace plotix
