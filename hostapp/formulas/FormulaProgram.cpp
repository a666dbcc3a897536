#include "hostapp/formulas/FormulaProgram.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr double kClockChange = 2 * 3600;  // seconds: more than any clock is put on or back
constexpr double kLongestDay = 24 * 3600 + kClockChange;

FormulaReach reachOfStep(const FormulaStep& step, double longestGap)
{
    if (step.what != FormulaStep::Do::Call)
        return {};
    switch (step.operation) {
    case FormulaOperation::Hold: return {step.number, 0, false};
    case FormulaOperation::Derivative: return {longestGap, 0, false};
    case FormulaOperation::Earlier:
        return {step.number + longestGap + kClockChange, std::max(0.0, longestGap + kClockChange - step.number), false};
    case FormulaOperation::Window: break;
    default: return {};
    }
    // A stretch of an integral may begin before the span.
    const double stretch = step.aggregate == WindowAggregate::Integral ? longestGap : 0;
    switch (step.span) {
    case WindowSpan::Everything: return {0, 0, true};
    case WindowSpan::Trailing: return {step.number + stretch, 0, false};
    case WindowSpan::Day: return {kLongestDay + stretch, kLongestDay + stretch, false};
    case WindowSpan::Slot: return {step.number + kClockChange, step.number + kClockChange, false};
    }
    return {};
}

}  // namespace

bool FormulaStep::isPointwise() const
{
    if (what == Do::Input)
        return false;
    return what != Do::Call || (operation != FormulaOperation::Window && operation != FormulaOperation::Hold &&
                                operation != FormulaOperation::Earlier && operation != FormulaOperation::Derivative);
}

void FormulaReach::include(const FormulaReach& other)
{
    before = std::max(before, other.before);
    after = std::max(after, other.after);
    fromBeginning = fromBeginning || other.fromBeginning;
}

FormulaReach reachOf(const FormulaProgram& program)
{
    std::vector<FormulaReach> needed(program.steps.size());
    FormulaReach reach;
    for (std::size_t i = program.steps.size(); i-- > 0;) {
        const FormulaStep& step = program.steps[i];
        if (step.what == FormulaStep::Do::Input)
            reach.include(needed[i]);
        const FormulaReach own = reachOfStep(step, program.longestGap);
        for (const int argument : step.arguments)
            if (argument >= 0)
                needed[static_cast<std::size_t>(argument)].include({needed[i].before + own.before,
                                                                    needed[i].after + own.after,
                                                                    needed[i].fromBeginning || own.fromBeginning});
    }
    if (program.agents.size() > 1) {
        reach.before += program.longestGap;
        reach.after += program.longestGap;
    }
    return reach;
}

}  // namespace plotix
