#pragma once

#include "base/vectors/Targets.h"

#include <vector>

/// The same loops for each processor, to be compared with one another.
///
/// Tells Highway for a moment that this processor has fewer targets than it has: one thread only, before others run.
namespace plotix::testing {

/// What `Kernels::best()` answers on processors that have each one of the targets that this one runs: the widest first,
/// and last the target that handles one number at a time, which the others must equal.
template <class Kernels>
std::vector<const Kernels*> everyTarget()
{
    std::vector<const Kernels*> kernels;
    const auto chooseAmong = [](std::int64_t targets) {
        hwy::SetSupportedTargetsForTest(targets);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    };
    chooseAmong(0);  // all of them
    for (std::int64_t left = (hwy::SupportedTargets() | HWY_SCALAR) & HWY_TARGETS; left != 0; left &= left - 1) {
        chooseAmong(left & -left);
        kernels.push_back(&Kernels::best());
    }
    chooseAmong(0);
    return kernels;
}

}  // namespace plotix::testing
