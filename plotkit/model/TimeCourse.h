#pragma once

#include "plotkit/model/CPTSeriesIndex.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// How times run on, as straight lines: where the blocks of a series' index begin in time, without reading the times.
///
/// A line stands for 4096 elements and says how far off the times at the beginnings of its blocks are at most. Evenly
/// spaced times are off by nothing, those of a clock that trembles by a little; a gap spoils the one line it falls
/// into. A few bytes stand for some ten thousand, so that a search stays in the near cache. Values may be read by any
/// thread.
namespace plotkit {

class TimeCourse {
public:
    static constexpr std::size_t kBlock = CPTFineBlocks::kElements;
    static constexpr std::size_t kLineElements = 128 * kBlock;

    /// Takes in more of the same times. Requires: x is finite, never decreases, and begins with what was taken in.
    void extend(std::span<const double> x);

    /// How many elements were taken in.
    std::size_t elements() const { return m_elements; }

    /// Two neighbouring blocks' beginnings and their distances from a value, each of which is at most `off` from what
    /// reading the times and subtracting would give.
    struct Neighbours {
        std::size_t after;  ///< element at which the later block begins; the earlier one begins kBlock before
        double above;       ///< time at `after` less the value
        double below;       ///< the value less the time at the earlier block
        double off;         ///< infinite where nothing is known
    };

    /// The blocks between which the value lies, as far as the lines tell: it does where both distances are greater than
    /// `off`. `guess` is an element thereabouts; nothing where the value is far from it, or before all times.
    std::optional<Neighbours> around(double value, std::size_t guess) const;

private:
    struct Line {
        double start;  // exact
        double step;   // a block
        double off;
    };
    std::optional<std::size_t> lineOf(double value, std::size_t guess) const;

    std::vector<Line> m_lines;
    std::size_t m_elements = 0;
};

}  // namespace plotkit
