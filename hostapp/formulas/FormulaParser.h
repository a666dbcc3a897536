#pragma once

#include "hostapp/formulas/FormulaFunctions.h"
#include "hostapp/formulas/FormulaProblem.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// A formula's text as a tree. Knows no property and no unit: what names mean is the compiler's affair. Any thread.
///
///     comparison := sum [("<" | "<=" | ">" | ">=" | "=" | "<>") sum]       also "==" and "!="
///     sum        := product {("+" | "-") product}
///     product    := sign {("*" | "/") sign}
///     sign       := ["-" | "+"] sign | power
///     power      := atom ["^" sign]
///     atom       := number [unit] | function "(" argument {"," argument} ")" | name ["." name] | "(" comparison ")"
///     unit       := word of letters and % ° ‰ µ ² ³, or "[" any text "]"
///     name       := letters, digits and "_", not a digit first | '"' any text, "" for the mark itself '"'
namespace plotix {

struct FormulaNode {
    enum class Kind {
        Number,    ///< `number`, in the unit `text` or plain
        Name,      ///< `text`, of the agent `agent` where that is there
        Unit,      ///< `text`: an argument that is a unit
        Function,  ///< `function` of `arguments`
        Negative,
        Sum,
        Difference,
        Product,
        Quotient,
        Power,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Equal,
        Different
    };
    Kind kind{};
    int position = 0, length = 0;  ///< in the text, in UTF-16 units
    double number = 0;
    QString text;
    std::optional<QString> agent;
    const FormulaFunction* function = nullptr;
    std::vector<FormulaNode> arguments;
};

struct ParsedFormula {
    std::optional<FormulaNode> tree;
    std::optional<FormulaProblem> problem;  ///< there unless the tree is
};

ParsedFormula parseFormula(const QString& text);

/// A name as it stands in a formula: quoted where it has to be.
QString quotedName(const QString& name);

/// The text with other names in it: `renamed` is asked for each name and answers what stands there from now on, or
/// nothing where the name stays. A text that cannot be parsed is answered as it is.
struct FormulaName {
    std::optional<QString> agent;
    QString property;
};
using RenamedName = std::function<std::optional<FormulaName>(const FormulaName&)>;
QString withNames(const QString& text, const RenamedName& renamed);

/// All names in the text, in order; none when it cannot be parsed.
std::vector<FormulaName> namesIn(const QString& text);

}  // namespace plotix
