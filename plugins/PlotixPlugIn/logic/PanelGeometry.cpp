#include "plugins/PlotixPlugIn/logic/PanelGeometry.h"

namespace plotix {

namespace {

/// `distance` in upward coordinates: positive is up. The graph's upper edge stays.
TrendViewFrames framesAfterShift(const TrendViewFrames& now, int distance, int parentHeight)
{
    const auto moved = [&](const QRect& frame) {
        return flipped(flipped(frame, parentHeight).translated(0, distance), parentHeight);
    };
    QRect graph = flipped(now.graph, parentHeight).translated(0, distance);
    graph.setHeight(graph.height() - distance);
    TrendViewFrames frames = now;
    frames.button = moved(now.button);
    frames.label = moved(now.label);
    frames.graph = flipped(graph, parentHeight);
    return frames;
}

}  // namespace

QRect flipped(const QRect& frame, int parentHeight)
{
    return {frame.x(), parentHeight - (frame.y() + frame.height()), frame.width(), frame.height()};
}

int panelShift(const QRect& panel)
{
    return kPanelGap + panel.height();
}

TrendViewFrames framesAfterShowing(const TrendViewFrames& now, int parentHeight)
{
    return framesAfterShift(now, panelShift(now.panel), parentHeight);
}

TrendViewFrames framesAfterHiding(const TrendViewFrames& now, int parentHeight)
{
    return framesAfterShift(now, -panelShift(now.panel), parentHeight);
}

TrendViewFrames framesAfterResizing(const TrendViewFrames& now, const QSize& oldSize, const QSize& newSize)
{
    const int wider = newSize.width() - oldSize.width();
    const int taller = newSize.height() - oldSize.height();
    TrendViewFrames frames = now;
    frames.panel = QRect(now.panel.topLeft() + QPoint(0, taller), now.panel.size() + QSize(wider, 0));
    frames.button.translate(0, taller);
    frames.label.translate(0, taller);
    frames.graph.setSize(now.graph.size() + QSize(wider, taller));
    frames.dates.setWidth(now.dates.width() + wider);
    frames.sharing.translate(wider, 0);
    return frames;
}

}  // namespace plotix
