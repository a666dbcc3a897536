#pragma once

#include "hostapp/formulas/FormulaProblem.h"
#include "hostapp/formulas/FormulaProgram.h"

#include <QtCore/QString>

#include <optional>

/// Adds steps to a program and keeps account of their units: what does not fit is refused, what fits after a conversion
/// is converted. One thread.
///
/// Temperatures in °C or °F are points on a scale with a zero of its own. How many points a value is the sum of is
/// counted: the difference of two is none, and so a difference, in K; half the sum of two is one, and so a temperature
/// again. A value in K taken from or added to one in °C is a difference.
///
/// Every function throws FormulaFailure without a place (its position is -1): who called knows it.
namespace plotix {

/// A value in a program.
struct Quantity {
    int step = -1;                  ///< -1: a number that has no step yet
    QString unit;                   ///< empty: a plain number
    std::optional<double> literal;  ///< a number known now
    bool isWritten = false;         ///< a number without a unit in the formula: takes on the unit of what it meets
    double points = 1;              ///< of how many temperatures it is the sum; only where the zero is arbitrary
    bool isDifference = false;      ///< of two temperatures
};

class QuantityArithmetic {
public:
    explicit QuantityArithmetic(FormulaProgram& program) : m_program(program) {}

    Quantity input(const FormulaInput& input, const QString& unit);
    Quantity number(double number, const QString& unit);

    Quantity negative(const Quantity& value);
    Quantity sum(const Quantity& one, const Quantity& other, FormulaStep::Do what);  ///< Add or Subtract
    Quantity product(const Quantity& one, const Quantity& other);
    Quantity quotient(const Quantity& one, const Quantity& other);
    Quantity power(const Quantity& base, const Quantity& exponent);
    Quantity comparison(const Quantity& one, const Quantity& other, FormulaStep::Do what);

    /// A function of values; `seconds`: of one that takes a span.
    Quantity call(const FormulaFunction& function, const std::vector<Quantity>& arguments, double seconds);
    /// The number of the value in a unit.
    Quantity plainValue(const Quantity& value, const QString& unit);
    /// The result in the unit wanted; nothing wanted: in its own.
    Quantity result(const Quantity& value, const std::optional<QString>& unit);

private:
    using Do = FormulaStep::Do;
    int add(const FormulaStep& step);
    int stepOf(const Quantity& value);
    Quantity linear(const Quantity& value, double scale, double offset, const QString& unit);
    Quantity inUnit(const Quantity& value, const QString& unit, bool asDifference);
    Quantity pair(FormulaStep step, const Quantity& one, const Quantity& other);
    std::pair<Quantity, Quantity> alike(const Quantity& one, const Quantity& other);
    Quantity scaled(const Quantity& value, double factor);
    Quantity asDifference(const Quantity& value);
    Quantity plain(const FormulaFunction& function, const Quantity& value);
    Quantity requireFactor(const Quantity& value) const;
    Quantity window(const FormulaFunction& function, const Quantity& value, double seconds);
    Quantity choice(const FormulaFunction& function, const std::vector<Quantity>& arguments);
    Quantity dewPoint(const FormulaFunction& function, const std::vector<Quantity>& arguments);
    Quantity applied(const FormulaFunction& function, const Quantity& value, double seconds = 0);

    FormulaProgram& m_program;
};

}  // namespace plotix
