#pragma once

#include "hostapp/formulas/FormulaDirectory.h"

#include <vector>

/// What may be meant by the beginning of a name in a formula. Free function; any thread.
namespace plotix {

struct FormulaCompletion {
    QString text;    ///< what takes the place of the beginning, as it stands in a formula
    QString label;   ///< for the list
    QString detail;  ///< a property's unit, a function's meaning; in the language of the program
    bool isFunction = false;
};

struct FormulaCompletions {
    int position = 0, length = 0;  ///< the beginning, in the formula's text
    std::vector<FormulaCompletion> candidates;
};

/// At a place in the text: properties of the agent, other agents, functions; behind an agent's name and a point that
/// one's properties. Those that begin as the name does come before those that contain it. Nothing behind a number,
/// where a unit stands. `nothing`: what is offered where no name has begun.
enum class CompleteNothing { WithEverything, WithNothing };
FormulaCompletions completionsAt(const QString& text, int place, const FormulaDirectory& directory, qint64 agent,
                                 CompleteNothing nothing = CompleteNothing::WithNothing);

}  // namespace plotix
