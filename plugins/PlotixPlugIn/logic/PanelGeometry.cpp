#include "plugins/PlotixPlugIn/logic/PanelGeometry.h"

#include <algorithm>

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

// A view this high has space for the whole panel; below it the panel gives way, down to its lowest.
constexpr int kRoomyView = 640;
constexpr int kCrampedView = 400;
constexpr int kLowestPanel = 66;  // heading and two rows
constexpr int kFullPanel = 150;   // as the interface description has it

/// What the panel's upper edge moves down by, beside moving with the lower edge of the view.
int panelGivesWay(int oldViewHeight, int newViewHeight)
{
    return panelHeightIn(oldViewHeight, kFullPanel) - panelHeightIn(newViewHeight, kFullPanel);
}

bool standsAbove(const QRect& part, const QRect& panel)
{
    return panel.height() > 0 && part.y() + part.height() <= panel.y();
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

int panelHeightIn(int viewHeight, int fullHeight)
{
    const int lowest = std::min(kLowestPanel, fullHeight);
    const int missing = kRoomyView - std::clamp(viewHeight, kCrampedView, kRoomyView);
    return fullHeight - missing * (fullHeight - lowest) / (kRoomyView - kCrampedView);
}

TrendViewFrames framesAfterResizing(const TrendViewFrames& now, const QSize& oldSize, const QSize& newSize)
{
    const int wider = newSize.width() - oldSize.width();
    const int taller = newSize.height() - oldSize.height();
    const int lower = now.panel.height() > 0 ? panelGivesWay(oldSize.height(), newSize.height()) : 0;
    const auto down = [&](const QRect& part) { return taller + (standsAbove(part, now.panel) ? lower : 0); };
    TrendViewFrames frames = now;
    frames.panel = QRect(now.panel.topLeft() + QPoint(0, taller + lower), now.panel.size() + QSize(wider, -lower));
    frames.button.translate(0, down(now.button));
    frames.label.translate(0, down(now.label));
    frames.graph.setSize(now.graph.size() + QSize(wider, down(now.graph)));
    frames.dates.setWidth(now.dates.width() + wider);
    frames.sharing.translate(wider, 0);
    return frames;
}

}  // namespace plotix
