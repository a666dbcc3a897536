#pragma once

#include "plotkit/model/CPTSeriesIndex.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// The course of times, as straight lines: tells when the blocks of a series' index begin without reading the times.
///
/// A line covers 4096 elements and stores its largest error at the beginnings of its blocks: nothing for evenly spaced
/// times, a little for a jittering clock; a gap spoils only the line it falls into. A line of 24 bytes replaces 32 KiB
/// of times, so that a search stays in the near cache. *Shared* by the series of the same times. One thread fills it;
/// then any may read.
namespace plotkit {

class TimeCourse {
public:
    static constexpr std::size_t kBlock = CPTFineBlocks::kElements;
    static constexpr std::size_t kLineElements = 128 * kBlock;

    /// Covers more of the same times. Requires: x is finite, never decreases, and begins with the times covered so far.
    void extend(std::span<const double> x);

    /// How many elements are covered.
    std::size_t elements() const { return m_elements; }

    /// The beginnings of two neighbouring blocks and their distances from a value. Each distance is wrong by at most
    /// `off`, compared with the times themselves.
    struct Neighbours {
        std::size_t after;  ///< element at which the later block begins; the earlier one begins kBlock before
        double above;       ///< time at `after` less the value
        double below;       ///< the value less the time at the earlier block
        double off;         ///< infinite where nothing is known
    };

    /// The blocks between which the value lies by the lines; certain where both distances are greater than `off`.
    /// `guess` is an element nearby; nothing where the value is far from the guess, or before all times.
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
