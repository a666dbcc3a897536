#pragma once

#include <QtCore/QString>

/// What is wrong with a formula and where, as a value; `sentenceOf` words it for people. Any thread.
namespace plotix {

struct FormulaProblem {
    enum class Kind {
        Empty,
        Unfinished,  ///< it ends where a value should stand
        Unexpected,  ///< `one`: the text
        UnclosedQuote,
        UnclosedBracket,
        UnknownFunction,  ///< `one`: its name
        WrongArguments,   ///< `one`: how the function is written
        NotASpan,         ///< `one`: how the function is written
        UnknownUnit,      ///< `one`: the text
        UnknownAgent,     ///< `one`: its name
        UnknownName,      ///< `one`: the name, `other`: the agent's
        NoProperty,       ///< numbers alone
        NoFit,            ///< `one` and `other`: two units; empty: none
        NotPlain,         ///< `one`: the function, `other`: the unit
        PowerNotWhole,
        RootOfUnit,               ///< `one`: the unit
        TemperatureInProduct,     ///< `one`: the unit
        SumOfTemperatures,        ///< `one`: the unit
        ResultDoesNotFit,         ///< `one`: the unit that follows, `other`: the one chosen
        DifferenceAsTemperature,  ///< `other`: the unit chosen
        Cycle,                    ///< `one`: the name that leads back
        Broken,                   ///< `one`: the computed property, `other`: what is wrong with it, a sentence
        TooDeep
    };

    Kind kind{};
    int position = 0;  ///< in the formula's text, in UTF-16 units
    int length = 0;    ///< 0: at the end
    QString one = {}, other = {};
};

/// One sentence, in the language of the program.
QString sentenceOf(const FormulaProblem& problem);

/// The formula on one line and a caret under the place, for a terminal; two lines without a line's end.
QString markedText(const QString& formula, const FormulaProblem& problem);

/// How the room's own units give up; never leaves the room.
struct FormulaFailure {
    FormulaProblem problem;
};

}  // namespace plotix
