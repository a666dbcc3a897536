#pragma once

#include "hostapp/formulas/FormulaDirectory.h"

#include <map>

/// Formulas that go on meaning the same after agents and properties were renamed, merged or moved. Free functions; any
/// thread.
namespace plotix {

struct NamesChanged {
    const FormulaDirectory& before;
    const FormulaDirectory& after;
    std::map<qint64, qint64> moved;  ///< properties that became others, by number
};

/// The text of a computed property of agent `home`, which is `homeAfter` now. Names that meant nothing before, and
/// those of what is gone, stay as they are.
QString followed(const QString& text, qint64 home, qint64 homeAfter, const NamesChanged& changed);

}  // namespace plotix
