#include "plotkit/model/SortedSearch.h"

#include <algorithm>

namespace plotkit {

std::size_t firstElementAt(std::span<const double> x, std::size_t from, std::size_t last, std::size_t guess,
                           double value)
{
    std::size_t low = from;  // everything before is smaller
    std::size_t high = last;
    guess = std::clamp(guess, from, last);
    if (guess < last && x[guess] < value) {
        low = guess + 1;
        for (std::size_t step = 1; low + step < last; step *= 2) {
            if (!(x[low + step] < value)) {
                high = low + step;
                break;
            }
            low += step + 1;
        }
    } else {
        high = guess;
        for (std::size_t step = 1; high >= from + step; step *= 2) {
            if (x[high - step] < value) {
                low = high - step + 1;
                break;
            }
            high -= step;
        }
    }
    const auto begin = x.begin();
    return static_cast<std::size_t>(
        std::lower_bound(begin + static_cast<std::ptrdiff_t>(low), begin + static_cast<std::ptrdiff_t>(high), value) -
        begin);
}

}  // namespace plotkit
