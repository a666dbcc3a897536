#pragma once

#include "hostapp/cli/CommandLine.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteEditing.h"

#include <optional>

namespace CLI {
class App;
}

/// Computed properties on the command line: made, changed and listed by `plotix edit`. Main thread only.
namespace plotix {

struct FormulaWish {
    QString text;  ///< NAME = FORMULA
    QString unit, color;
    std::optional<PropertyFormula::Join> join;
    std::optional<double> longestGap;  ///< seconds
    bool lists = false;

    bool isPlain() const { return unit.isEmpty() && color.isEmpty() && !join && !longestGap; }
};

/// The options --compute, --unit, --color, --join, --longest-gap and --computed; the wish must live until the words are
/// parsed.
void addFormulaOptions(CLI::App* command, FormulaWish& wish);

/// What is wrong with these options together; nothing: they fit.
std::optional<QString> contradictionIn(const FormulaWish& wish);

/// Makes the property, or changes the computed one of that name; what is not wished for stays as it is. Writes the
/// formula with a caret at the error before it throws ReportableError.
EditOutcome compute(const FormulaWish& wish, const QString& site, const SiteDocument& document, const SiteAgent& agent,
                    std::ostream& errors);

/// Every computed property on a line, with its unit, or with what is wrong with it.
void listFormulas(const SiteDocument& document, std::ostream& out);

}  // namespace plotix
