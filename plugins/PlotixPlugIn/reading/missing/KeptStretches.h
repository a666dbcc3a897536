#pragma once

#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

/// The stretches without valid records of several lines, for a view that is moved: where it is panned they are looked
/// for beyond what is shown, and again only where a move leaves that. What was found while records could not be read is
/// not kept: they may be read with the next look.
///
/// A layer *owns* one. Main thread only.
namespace plotix {

class KeptStretches {
public:
    using OfLine = std::vector<MissingStretch>;

    /// `missingStretches` of each line within `shown`, in their order; valid until the next call. A stretch that holds
    /// records that are not valid is of that kind also where these lie beyond `shown`. `known`: where anything is
    /// known of the lines; `shown` lies within.
    const std::vector<OfLine>& within(const TimeSpan& shown, const TimeSpan& known, double least,
                                      const std::vector<const LineRecords*>& lines);

    std::size_t searches() const { return m_searches; }  ///< how often all lines were gone through

private:
    /// What the stretches were looked for by.
    struct Search {
        double least = 0;
        std::vector<std::pair<std::uint64_t, double>> lines;  ///< serials and longest joins
        friend bool operator==(const Search&, const Search&) = default;
    };

    std::optional<Search> m_search;
    TimeSpan m_searched;
    std::vector<OfLine> m_found;   // in what was searched
    std::vector<TimeSpan> m_last;  // of each line, from its last record to when that ceases to count
    TimeSpan m_shown;
    std::vector<OfLine> m_within;  // of `m_shown`
    std::size_t m_searches = 0;
};

}  // namespace plotix
