#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <optional>
#include <utility>

/// The spans of a trend, and what brings them together: its dates, its graph and the records it holds.
///
/// Values and free functions; main thread only. Spans are first and last moment, seconds since 1970-01-01 UTC.
namespace plotix {

using MomentSpan = std::pair<double, double>;

/// The same to a hundredth of a second: a graph stores location and length, which rounds its end.
bool isSameSpan(const MomentSpan& one, const MomentSpan& other);
bool isWithin(const MomentSpan& inner, const MomentSpan& outer);

struct TrendSpans {
    MomentSpan dates;                 ///< of the date panel
    std::optional<MomentSpan> drawn;  ///< by the graph; nothing: there is no graph yet
    std::optional<MomentSpan> read;   ///< the records shown were asked for; nothing: none were yet
    std::optional<MomentSpan> held;   ///< from the first to the last of these records; nothing: there are none
    std::optional<MomentSpan> asked;  ///< the latest whose answer is still to come
    bool datesLead = false;           ///< the dates were changed after the graph was last moved
    bool datesEdited = false;         ///< they are being changed right now; it is told when that has paused
};

/// Nothing when the plug-in cannot tell.
std::optional<TrendSpans> spansOf(const KTVPlugIn* plugIn);

/// What a trend needs so that dates, graph and records agree.
enum class TrendNeed {
    Nothing,
    Waiting,     ///< for records that are on their way
    OtherDates,  ///< the dates are reversed; only the user can help
    Show,        ///< the chosen dates are not drawn: showRange()
    Read,        ///< the graph was moved beyond what was read: readRange()
    MoveDates    ///< the graph was moved where no dates could follow: moveDatesToDrawn()
};

enum class Wanted {
    Covered,  ///< the records may reach beyond what is drawn
    Exact     ///< the records are those of the dates and no others: for paper, whose table tells their averages
};

/// A trend without a graph, or that cannot tell its spans, needs nothing.
TrendNeed needOf(const TrendSpans& spans, Wanted wanted);

/// Does what the need asks for; the records come later. Nothing to do: nothing happens.
void meet(TrendNeed need, KTVPlugIn& plugIn, const TrendSpans& spans);

}  // namespace plotix
