#pragma once

#include "hostapp/formulas/FormulaBlocks.h"
#include "hostapp/formulas/FormulaProgram.h"

#include <span>
#include <vector>

/// A pointwise step with everything pointwise that it is made of: worked out a block at a time, in one go. *Borrows*
/// the program; any thread may run it.
namespace plotix {

class PointwiseGroup {
public:
    /// Requires: the step there is pointwise.
    PointwiseGroup(const FormulaProgram& program, int position);

    /// The steps whose values it begins with: inputs, and those over time.
    const std::vector<int>& leaves() const { return m_leaves; }

    /// What a run writes on its way: of one thread, for any number of runs.
    class Scratch {
    public:
        explicit Scratch(const PointwiseGroup& group);

    private:
        friend class PointwiseGroup;
        std::vector<double> m_blocks;
        std::vector<const double*> m_found;  // by step
    };
    /// `leaves`: where the values of each are, a NaN where there is none. Requires: count ≤ kFormulaBlock.
    void run(std::span<const double* const> leaves, Scratch& scratch, std::size_t count, double* to) const;

private:
    void gather(int position);

    const FormulaProgram& m_program;
    std::vector<int> m_order, m_leaves;
};

}  // namespace plotix
