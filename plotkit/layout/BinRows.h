#pragma once

#include <cstddef>

/// What a bin of a series holds, as values: what sums bins up, and what keeps the sums, agree on these. Any thread.
namespace plotkit {

/// The points of one bin: the first, the last, and the extremes. Where they stand is a fraction of the bin's width. In
/// a crowded bin that ends with a block of the index, `last` may be the very next point.
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
