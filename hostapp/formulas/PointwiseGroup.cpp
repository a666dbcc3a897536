#include "hostapp/formulas/PointwiseGroup.h"

#include <algorithm>
#include <array>

namespace plotix {

PointwiseGroup::PointwiseGroup(const FormulaProgram& program, int position) : m_program(program)
{
    gather(position);
}

/// Arguments come before what they are arguments of.
void PointwiseGroup::gather(int position)
{
    const FormulaStep& step = m_program.steps[static_cast<std::size_t>(position)];
    std::vector<int>& found = step.isPointwise() ? m_order : m_leaves;
    if (std::find(found.begin(), found.end(), position) != found.end())
        return;
    if (step.isPointwise())
        for (const int argument : step.arguments)
            if (argument >= 0)
                gather(argument);
    found.push_back(position);
}

PointwiseGroup::Scratch::Scratch(const PointwiseGroup& group)
    : m_blocks(group.m_order.size() * kFormulaBlock), m_found(group.m_program.steps.size(), nullptr)
{
}

void PointwiseGroup::run(std::span<const double* const> leaves, Scratch& scratch, std::size_t count, double* to) const
{
    std::vector<const double*>& found = scratch.m_found;
    for (std::size_t i = 0; i < leaves.size(); ++i)
        found[static_cast<std::size_t>(m_leaves[i])] = leaves[i];
    double* free = scratch.m_blocks.data();
    for (const int each : m_order) {
        const FormulaStep& step = m_program.steps[static_cast<std::size_t>(each)];
        double* result = each == m_order.back() ? to : free;
        free += kFormulaBlock;
        std::array<const double*, 3> arguments{};
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (step.arguments[i] >= 0)
                arguments[i] = found[static_cast<std::size_t>(step.arguments[i])];
        runStep(step, arguments, result, count);
        found[static_cast<std::size_t>(each)] = result;
    }
}

}  // namespace plotix
