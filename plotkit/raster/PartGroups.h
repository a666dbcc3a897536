#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Sharing out the parts of a broken line among as few strokes as will do.
///
/// A stroke by columns joins whatever stands above the same x. Parts whose pens meet along x must therefore not share
/// one; where the breaks are wide, two strokes hold any number of parts. Pure; any thread.
namespace plotkit {

/// A part's reach along x.
struct PartExtent {
    double from = 0, to = 0;  ///< from ≤ to
};

/// For each part the number of its group, counted from 0. Parts of one group are at least `apart` from each other.
/// Nothing where the parts do not follow each other along x, in either direction, or would want more than
/// `mostGroups`.
std::vector<std::size_t> groupsOfParts(std::span<const PartExtent> parts, double apart, std::size_t mostGroups);

}  // namespace plotkit
