#pragma once

#include <cstddef>
#include <span>

/// Looking a value up in times that never decrease. Free functions; any thread.
namespace plotkit {

/// The first element in [from, last) at or after `value`; `last` when there is none.
///
/// Gallops away from `guess`, so that a good guess costs a few comparisons and a bad one no more than twice a binary
/// search. Requires: from ≤ last ≤ x.size(), x sorted there.
std::size_t firstElementAt(std::span<const double> x, std::size_t from, std::size_t last, std::size_t guess,
                           double value);

}  // namespace plotkit
