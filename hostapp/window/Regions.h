#pragma once

class QWidget;

/// The regions of a window, such as its lists, a trend's dates, graph and table, each a key press away.
///
/// A widget is a region if it has a dynamic property "region", a number that says where it comes in the round; views of
/// plug-ins take part by setting it. Main thread only.
namespace plotix {

inline constexpr auto kRegionProperty = "region";

enum class RegionStep { Next, Previous };

/// Where the window's own regions come in the round; a view's own count from 10 on.
inline constexpr int kTrendListRegion = 1;
inline constexpr int kPropertyListRegion = 2;

/// Moves the focus to the next region of the window, or the previous one: to the region itself if it takes the focus,
/// else to the first of its parts that does. Hidden and disabled regions are passed over; without any, nothing happens.
void focusRegion(QWidget& window, RegionStep step);

}  // namespace plotix
