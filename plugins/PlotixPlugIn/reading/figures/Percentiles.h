#pragma once

#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include <optional>
#include <span>
#include <vector>

/// Median and percentiles of a line over a span, exactly, from every record of the span.
///
/// The records are gone through a few times in blocks, counting, and only the neighbourhood of what is looked for is
/// kept: the memory needed does not grow with the records. Free functions; any thread.
namespace plotix {

/// For each of `shares` (0 to 1: 0.5 is the median) the value below which that share of the points lies: between the
/// two points of neighbouring rank, in proportion. All NaN without points; nothing when stopped. Tells `work` each
/// element of the span about `kPercentilePasses` times.
std::optional<std::vector<double>> percentiles(const LineSummary& line, double from, double to,
                                               std::span<const double> shares, const Work& work = {});

inline constexpr int kPercentilePasses = 2;  ///< usually; values of very unlike sizes take more

}  // namespace plotix
