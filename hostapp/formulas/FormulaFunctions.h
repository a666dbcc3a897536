#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <span>

/// The functions of the language, as data: the parser counts their arguments by it, the compiler looks up what they
/// work out, and completion and help list them. Any thread.
namespace plotix {

/// What a function works out value by value, or over time.
enum class FormulaOperation : std::uint8_t {
    Absolute,
    SquareRoot,
    Exponential,
    Logarithm,
    Logarithm10,
    Sine,
    Cosine,
    Tangent,
    Round,
    Floor,
    Ceiling,
    Least,
    Greatest,
    Choice,      ///< if
    PlainValue,  ///< the number of a value in a unit
    DewPoint,
    Hold,
    Earlier,
    Derivative,
    Window  ///< an aggregate over spans
};

/// Over what a window reaches.
enum class WindowSpan : std::uint8_t {
    Everything,  ///< from the first record on
    Trailing,    ///< the span that ends at the record, without its beginning
    Day,         ///< the local calendar day the record lies in
    Slot         ///< equal parts of the local day, counted from midnight
};

/// What is worked out of the values there.
enum class WindowAggregate : std::uint8_t { Mean, Minimum, Maximum, Sum, Integral };

struct FormulaFunction {
    const char* name;  ///< stored in formulas: never change
    FormulaOperation operation;
    int leastArguments, mostArguments;
    const char* signature;  ///< for people
    const char* meaning;    ///< English; FormulaText translates it
    WindowSpan span = WindowSpan::Everything;
    WindowAggregate aggregate = WindowAggregate::Mean;
};

/// In the order of a menu.
std::span<const FormulaFunction> formulaFunctions();

/// Whatever the case; null when there is none.
const FormulaFunction* formulaFunctionNamed(const QString& name);

/// What it does, a few words in the language of the program.
QString meaningOf(const FormulaFunction& function);

}  // namespace plotix
