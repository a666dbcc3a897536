#pragma once

#include "plotkit/model/CPTGraphLayer.h"
#include "plugins/PlotixPlugIn/reading/overview/OverviewPicture.h"
#include "plugins/PlotixPlugIn/reading/overview/OverviewWindow.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <optional>

/// The overview below a graph: all lines, dimmed but for what is shown, a window round that, and first and last time.
///
/// The graph and the overview's part *share* it. Main thread only.
namespace plotix {

class OverviewLayer : public CPTGraphLayer {
public:
    /// Needs the whole graph drawn again where there were no lines before, or are none now.
    void take(const CPTXYGraph& graph, const std::optional<TimeSpan>& asked) { m_picture.take(graph, asked); }

    void drawInGraph(QPainter& painter, const plotkit::GraphGeometry& geometry) override;
    std::optional<CPTLayerRoom> room(const QSizeF& frame) const override;

    /// Where its window stands; nothing where it is not drawn.
    std::optional<OverviewWindow> windowIn(const plotkit::GraphGeometry& geometry) const;

private:
    void drawTimes(QPainter& painter, const OverviewWindow& window, const QRectF& room,
                   const CPTTextStyle& style) const;

    OverviewPicture m_picture;
    ValueTexts m_texts;
};

}  // namespace plotix
