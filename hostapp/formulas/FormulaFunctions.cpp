#include "hostapp/formulas/FormulaFunctions.h"

#include <QtCore/QCoreApplication>

namespace plotix {

namespace {

using enum FormulaOperation;
using Span = WindowSpan;
using Of = WindowAggregate;

constexpr int kAny = 100;

constexpr FormulaFunction kFunctions[] = {
    {"mean", Window, 2, 2, "mean(x, 1 h)", QT_TRANSLATE_NOOP("FormulaText", "moving mean of the span that ends here"),
     Span::Trailing, Of::Mean},
    {"minimum", Window, 2, 2, "minimum(x, 1 h)",
     QT_TRANSLATE_NOOP("FormulaText", "least value of the span that ends here"), Span::Trailing, Of::Minimum},
    {"maximum", Window, 2, 2, "maximum(x, 1 h)",
     QT_TRANSLATE_NOOP("FormulaText", "greatest value of the span that ends here"), Span::Trailing, Of::Maximum},
    {"sum", Window, 2, 2, "sum(x, 1 h)",
     QT_TRANSLATE_NOOP("FormulaText", "sum of the values of the span that ends here"), Span::Trailing, Of::Sum},
    {"daily_mean", Window, 1, 1, "daily_mean(x)", QT_TRANSLATE_NOOP("FormulaText", "mean of the local day"), Span::Day,
     Of::Mean},
    {"daily_minimum", Window, 1, 1, "daily_minimum(x)",
     QT_TRANSLATE_NOOP("FormulaText", "least value of the local day"), Span::Day, Of::Minimum},
    {"daily_maximum", Window, 1, 1, "daily_maximum(x)",
     QT_TRANSLATE_NOOP("FormulaText", "greatest value of the local day"), Span::Day, Of::Maximum},
    {"daily_sum", Window, 1, 1, "daily_sum(x)", QT_TRANSLATE_NOOP("FormulaText", "sum of the values of the local day"),
     Span::Day, Of::Sum},
    {"daily_integral", Window, 1, 1, "daily_integral(x)",
     QT_TRANSLATE_NOOP("FormulaText", "integral over the local day, such as kWh of kW"), Span::Day, Of::Integral},
    {"resampled_mean", Window, 2, 2, "resampled_mean(x, 15 min)",
     QT_TRANSLATE_NOOP("FormulaText", "mean of each such part of the local day"), Span::Slot, Of::Mean},
    {"resampled_minimum", Window, 2, 2, "resampled_minimum(x, 15 min)",
     QT_TRANSLATE_NOOP("FormulaText", "least value of each such part of the local day"), Span::Slot, Of::Minimum},
    {"resampled_maximum", Window, 2, 2, "resampled_maximum(x, 15 min)",
     QT_TRANSLATE_NOOP("FormulaText", "greatest value of each such part of the local day"), Span::Slot, Of::Maximum},
    {"resampled_sum", Window, 2, 2, "resampled_sum(x, 15 min)",
     QT_TRANSLATE_NOOP("FormulaText", "sum of each such part of the local day"), Span::Slot, Of::Sum},
    {"derivative", Derivative, 1, 1, "derivative(x)",
     QT_TRANSLATE_NOOP("FormulaText", "change in time since the value before")},
    {"integral", Window, 1, 2, "integral(x) or integral(x, 1 h)",
     QT_TRANSLATE_NOOP("FormulaText", "integral since the first record, or of the span that ends here"),
     Span::Everything, Of::Integral},
    {"hold", Hold, 1, 2, "hold(x) or hold(x, 10 min)",
     QT_TRANSLATE_NOOP("FormulaText", "the last value where there is none")},
    {"earlier", Earlier, 2, 2, "earlier(x, 7 d)",
     QT_TRANSLATE_NOOP("FormulaText", "what it was then; days go by the local clock")},
    {"dew_point", DewPoint, 2, 2, "dew_point(temperature, humidity)",
     QT_TRANSLATE_NOOP("FormulaText", "dew point, by Magnus' formula over water")},
    {"min", Least, 2, kAny, "min(a, b, …)", QT_TRANSLATE_NOOP("FormulaText", "the least of several")},
    {"max", Greatest, 2, kAny, "max(a, b, …)", QT_TRANSLATE_NOOP("FormulaText", "the greatest of several")},
    {"if", Choice, 3, 3, "if(a > b, x, y)", QT_TRANSLATE_NOOP("FormulaText", "x where the condition holds, else y")},
    {"value", PlainValue, 2, 2, "value(x, kW)",
     QT_TRANSLATE_NOOP("FormulaText", "the number of x in that unit, without it")},
    {"abs", Absolute, 1, 1, "abs(x)", QT_TRANSLATE_NOOP("FormulaText", "without its sign")},
    {"round", Round, 1, 1, "round(x)", QT_TRANSLATE_NOOP("FormulaText", "to the nearest whole number")},
    {"floor", Floor, 1, 1, "floor(x)", QT_TRANSLATE_NOOP("FormulaText", "down to a whole number")},
    {"ceil", Ceiling, 1, 1, "ceil(x)", QT_TRANSLATE_NOOP("FormulaText", "up to a whole number")},
    {"sqrt", SquareRoot, 1, 1, "sqrt(x)", QT_TRANSLATE_NOOP("FormulaText", "square root")},
    {"exp", Exponential, 1, 1, "exp(x)", QT_TRANSLATE_NOOP("FormulaText", "power of e")},
    {"ln", Logarithm, 1, 1, "ln(x)", QT_TRANSLATE_NOOP("FormulaText", "natural logarithm")},
    {"log10", Logarithm10, 1, 1, "log10(x)", QT_TRANSLATE_NOOP("FormulaText", "logarithm to the base of ten")},
    {"sin", Sine, 1, 1, "sin(x)", QT_TRANSLATE_NOOP("FormulaText", "sine; plain numbers are radians")},
    {"cos", Cosine, 1, 1, "cos(x)", QT_TRANSLATE_NOOP("FormulaText", "cosine; plain numbers are radians")},
    {"tan", Tangent, 1, 1, "tan(x)", QT_TRANSLATE_NOOP("FormulaText", "tangent; plain numbers are radians")},
};

}  // namespace

std::span<const FormulaFunction> formulaFunctions()
{
    return kFunctions;
}

const FormulaFunction* formulaFunctionNamed(const QString& name)
{
    for (const FormulaFunction& function : kFunctions)
        if (name.compare(QLatin1String(function.name), Qt::CaseInsensitive) == 0)
            return &function;
    return nullptr;
}

QString meaningOf(const FormulaFunction& function)
{
    return QCoreApplication::translate("FormulaText", function.meaning);
}

}  // namespace plotix
