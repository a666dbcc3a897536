#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>

/// Where the parts of the trend view stand, with the details panel shown and hidden.
///
/// The rules are written with y growing upward. From bottom to top: the panel, a gap, button and label, the graph.
/// Frames come in and go out in the toolkit's coordinates, y growing downward from the top of the parent view;
/// `flipped` is the one place that converts. Lengths are points. Pure; any thread.
namespace plotix {

inline constexpr int kPanelGap = 12;  ///< between the panel and what stands above it

/// Frames in the coordinates of one parent view. A missing view has the zero frame.
struct TrendViewFrames {
    QRect panel{0, 0, 0, 0};
    QRect button{0, 0, 0, 0};
    QRect label{0, 0, 0, 0};
    QRect graph{0, 0, 0, 0};
    QRect dates{0, 0, 0, 0};    ///< the date panel, above the graph
    QRect sharing{0, 0, 0, 0};  ///< the sharing button, right of it

    friend bool operator==(const TrendViewFrames&, const TrendViewFrames&) = default;
};

/// The same frame with y counted from the other edge of a parent of that height; twice gives the frame back.
QRect flipped(const QRect& frame, int parentHeight);

/// How far button, label and the graph's lower edge move.
int panelShift(const QRect& panel);

/// Button and label move up, and so does the graph's lower edge; its upper edge is fixed. Relative to `now`: showing
/// twice moves twice. The panel stays.
TrendViewFrames framesAfterShowing(const TrendViewFrames& now, int parentHeight);

/// The mirror image: showing after hiding gives `now` back.
TrendViewFrames framesAfterHiding(const TrendViewFrames& now, int parentHeight);

/// How high the panel is in a view of that height: its full height where there is space for both, less where the graph
/// would be left with nothing, and never less than its heading and two rows.
int panelHeightIn(int viewHeight, int fullHeight);

/// What the parts do when the parent goes from one size to another, panel shown or not: the graph takes the difference,
/// button, label and panel keep their distance from the lower edge, the sharing button from the right one, and panel
/// and date panel take the difference in width. In a low view the panel is lower too, and what stands above it comes
/// down with its upper edge.
/// Frames may get a negative size in a small parent and come back unharmed in a larger one.
TrendViewFrames framesAfterResizing(const TrendViewFrames& now, const QSize& oldSize, const QSize& newSize);

}  // namespace plotix
