#pragma once

#include "plotkit/layout/BinEdges.h"
#include "plotkit/model/SeriesPart.h"

#include <cstddef>
#include <cstdint>

/// Which elements of paged series a frame must hold to be exact, and what it may do without them.
///
/// Free functions; any thread.
namespace plotkit {

/// A frame that may be drawn before all that it shows is in memory: plots whose pages would take too long are drawn
/// from what their runs tell, which is where the line is at most. A value.
struct FrameParts {
    /// In memory as well as they can be had.
    SeriesParts held;
    /// What those plots lack; empty: the frame is exact. Filled in by whoever draws.
    SeriesParts lacking;

    /// What the next frames need, where this one is exact and the view goes on moving as it did. Filled in by whoever
    /// draws; of all plots together some kPagesAhead.
    SeriesParts ahead;

    /// Pages that a frame waits for, of all plots together: some milliseconds.
    static constexpr std::size_t kPagesAtOnce = 32;
    /// Some tenths of a second of work, and a sixth of what is kept by default.
    static constexpr std::size_t kPagesAhead = 128;
};

/// Whether the stretch of kStretch bins, in which the bin of that number is, is summed up from runs.
bool isCrowdedByRuns(const CPTSeriesRuns& runs, const BinGrid& grid, std::int64_t number);

/// Adds the elements that are held to cut a paged series into those bins which are not kept, and a run on both sides.
void addPartsHeld(SeriesParts& parts, const CPTPointSeriesPtr& series, const BinGrid& grid, const KeptBins& kept);

/// How many pages of a paged series' points, and of its times, are not in memory; those held are.
struct AbsentPages {
    std::size_t times = 0, points = 0;
};
AbsentPages absentPages(const SeriesPart& part, const SeriesParts& held);

}  // namespace plotkit
