#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "hostapp/formulas/FormulaFunctions.h"

#include <array>
#include <vector>

/// A formula ready to be worked out: steps in an order in which each finds what it needs, units gone into factors. A
/// value; any thread.
namespace plotix {

struct FormulaStep {
    enum class Do : std::uint8_t {
        Input,     ///< `input`
        Constant,  ///< `number`
        Linear,    ///< × number + offset
        Add,
        Subtract,
        Multiply,
        Divide,
        Power,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Equal,
        Different,
        Call  ///< `operation` of the arguments
    };
    Do what{};
    FormulaOperation operation{};
    WindowSpan span{};
    WindowAggregate aggregate{};
    std::array<int, 3> arguments{-1, -1, -1};  ///< positions of earlier steps
    double number = 0;                         ///< a constant, a factor, or seconds
    double offset = 0;
    int input = 0;

    /// Whether each value needs only its arguments' values at the same time.
    bool isPointwise() const;
};

/// A property the formula names.
struct FormulaInput {
    qint64 agent = 0, property = 0;
    friend bool operator==(const FormulaInput&, const FormulaInput&) = default;
};

/// How far around a span of time values are needed to work out those in it, in seconds.
struct FormulaReach {
    double before = 0, after = 0;
    bool fromBeginning = false;  ///< everything before

    void include(const FormulaReach& other);
    friend bool operator==(const FormulaReach&, const FormulaReach&) = default;
};

struct FormulaProgram {
    std::vector<FormulaStep> steps;    ///< the last one is the result
    std::vector<FormulaInput> inputs;  ///< each once
    std::vector<qint64> agents;        ///< whose records' times the result has; several: their union
    QString unit;                      ///< of the result
    PropertyFormula::Join join{};
    double longestGap = 0;  ///< seconds
    FormulaReach reach;
};

/// What each input needs, from the steps. Requires: everything else is set.
FormulaReach reachOf(const FormulaProgram& program);

}  // namespace plotix
