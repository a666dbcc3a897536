#pragma once

#include "hostapp/formulas/FormulaDirectory.h"
#include "hostapp/formulas/FormulaParser.h"
#include "hostapp/formulas/FormulaProgram.h"

#include <memory>
#include <optional>

/// From a formula's text to a program, among the agents and properties there are: names found, units followed, cycles
/// refused. Free functions; any thread.
namespace plotix {

struct FormulaPlan {
    std::shared_ptr<const FormulaProgram> program;  ///< null where there is a problem
    std::optional<FormulaProblem> problem;
};

/// Of a formula that somebody writes: `agent` is the one whose properties need no agent's name before theirs,
/// `property` the computed property it becomes the formula of, or 0 for a new one. Its chosen unit is the result's.
FormulaPlan planFormula(const FormulaDirectory& directory, qint64 agent, const PropertyFormula& formula,
                        qint64 property = 0);

/// Of a computed property as it is kept: the result is in its archived unit. Requires: it has a formula.
FormulaPlan planProperty(const FormulaDirectory& directory, qint64 property);

/// The property's formula and those of the computed ones that it names, directly or through others; none of a recorded
/// one. Whether it can be worked out does not matter.
std::vector<PropertyFormula> formulasBeneath(const FormulaDirectory& directory, qint64 property);

/// The computed properties whose formulas name this one, directly or through others.
std::vector<qint64> dependentsOf(const FormulaDirectory& directory, qint64 property);

}  // namespace plotix
