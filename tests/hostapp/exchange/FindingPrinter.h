#pragma once

#include "hostapp/exchange/ImportFinding.h"

#include <optional>
#include <ostream>

namespace plotix {

/// What a failing test shows of a finding.
inline void PrintTo(const ImportFinding& finding, std::ostream* out)
{
    *out << "finding " << static_cast<int>(finding.what) << ", line " << finding.line << ", column “"
         << finding.column.toStdString() << "”, text “" << finding.text.toStdString() << "”, " << finding.found
         << " of " << finding.expected << " columns (" << finding.columns.join(QStringLiteral(", ")).toStdString()
         << ")";
}

/// What the action finds wrong; nothing where it throws no failure.
template <class Action>
std::optional<ImportFinding> findingOf(Action action)
{
    try {
        action();
    } catch (const ImportFailure& failure) {
        return failure.finding();
    }
    return {};
}

}  // namespace plotix
