#include "hostapp/formulas/FormulaProblem.h"

#include <QtCore/QCoreApplication>

namespace plotix {

namespace {

class FormulaText {
    Q_DECLARE_TR_FUNCTIONS(FormulaText)
};

QString unitText(const QString& unit)
{
    return unit.isEmpty() ? FormulaText::tr("a number without a unit") : unit;
}

QString unitSentenceOf(const FormulaProblem& problem)
{
    using enum FormulaProblem::Kind;
    switch (problem.kind) {
    case NoFit:
        return FormulaText::tr("%1 and %2 do not fit together: they are different quantities.")
            .arg(unitText(problem.one), unitText(problem.other));
    case NotPlain:
        return FormulaText::tr("%1 takes a number without a unit, not %2: divide by a quantity of that kind first.")
            .arg(problem.one, unitText(problem.other));
    case PowerNotWhole: return FormulaText::tr("A value with a unit can only be raised to a whole number.");
    case RootOfUnit: return FormulaText::tr("%1 is not the square of any unit.").arg(problem.one);
    case TemperatureInProduct:
        return FormulaText::tr(
                   "A temperature in %1 cannot be multiplied or summed up, since its zero is arbitrary: use a "
                   "difference of two, or value(…, K).")
            .arg(problem.one);
    case SumOfTemperatures:
        return FormulaText::tr(
                   "The result is a sum of temperatures in %1, which means nothing: take their difference, "
                   "or divide by how many they are. To convert one, write its name alone and choose the unit.")
            .arg(problem.one);
    case ResultDoesNotFit:
        return FormulaText::tr("The result is %1, which cannot be shown in %2.")
            .arg(unitText(problem.one), unitText(problem.other));
    case DifferenceAsTemperature:
        return FormulaText::tr("The result is a difference of temperatures: choose K, not %1.").arg(problem.other);
    default: return {};
    }
}

QString nameSentenceOf(const FormulaProblem& problem)
{
    using enum FormulaProblem::Kind;
    switch (problem.kind) {
    case UnknownFunction: return FormulaText::tr("There is no function “%1”.").arg(problem.one);
    case UnknownUnit: return FormulaText::tr("“%1” is no unit.").arg(problem.one);
    case UnknownAgent: return FormulaText::tr("There is no agent “%1”.").arg(problem.one);
    case UnknownName: return FormulaText::tr("“%2” has no property “%1”.").arg(problem.one, problem.other);
    case NoProperty: return FormulaText::tr("The formula names no property.");
    case Cycle: return FormulaText::tr("“%1” leads back to the property that is being computed.").arg(problem.one);
    case Broken: return FormulaText::tr("“%1” cannot be computed: %2").arg(problem.one, problem.other);
    default: return {};
    }
}

}  // namespace

QString sentenceOf(const FormulaProblem& problem)
{
    using enum FormulaProblem::Kind;
    switch (problem.kind) {
    case Empty: return FormulaText::tr("The formula is empty.");
    case Unfinished: return FormulaText::tr("Something is missing at the end.");
    case Unexpected:
        if (problem.one == QLatin1String(","))
            return FormulaText::tr(
                "A comma separates a function's arguments; decimals stand behind a point, as in 0.5.");
        if (!problem.one.isEmpty() && problem.one.front().isLetter())
            return FormulaText::tr("“%1” does not belong here; a name with blanks stands in quotation marks, as in "
                                   "\"Air Temperature\".")
                .arg(problem.one);
        return FormulaText::tr("“%1” does not belong here.").arg(problem.one);
    case UnclosedQuote: return FormulaText::tr("This name has no closing quotation mark.");
    case UnclosedBracket: return FormulaText::tr("This bracket is not closed.");
    case WrongArguments: return FormulaText::tr("The function is written %1.").arg(problem.one);
    case NotASpan:
        return FormulaText::tr("Here stands a span of time, such as 10 min, 1 h or 7 d: %1.").arg(problem.one);
    case TooDeep: return FormulaText::tr("The formula is nested too deeply.");
    default: break;
    }
    const QString name = nameSentenceOf(problem);
    return name.isEmpty() ? unitSentenceOf(problem) : name;
}

QString markedText(const QString& formula, const FormulaProblem& problem)
{
    QString line = formula;
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
    const QString mark(qMax(1, problem.length), QLatin1Char('^'));
    return line + QLatin1Char('\n') + QString(problem.position, QLatin1Char(' ')) + mark;
}

}  // namespace plotix
