#pragma once

#include <cstddef>

/// What a bin of a series holds, as values: shared by the loops that sum bins up and the class that keeps the sums. Any
/// thread.
namespace plotkit {

/// The points of one bin: the first, the last, and the extremes. `enter` and `leave` say where the first and the last
/// stand, as fractions of the bin's width. In a crowded bin that ends with a block of the index, `last` may be the next
/// bin's first point.
struct BinSummary {
    float first, min, max, last;
    float enter, leave;
    bool isEmpty() const { return !(min <= max); }
};

/// Summaries of bins side by side, each number in a row of its own. *Borrows* the rows, which can be read and written
/// SlidingRow::kPadding numbers beyond the last bin.
struct BinRows {
    float *first, *min, *max, *last, *enter, *leave;

    void set(std::size_t bin, const BinSummary& summary) const
    {
        first[bin] = summary.first;
        min[bin] = summary.min;
        max[bin] = summary.max;
        last[bin] = summary.last;
        enter[bin] = summary.enter;
        leave[bin] = summary.leave;
    }
    BinSummary at(std::size_t bin) const { return {first[bin], min[bin], max[bin], last[bin], enter[bin], leave[bin]}; }
};

}  // namespace plotkit
