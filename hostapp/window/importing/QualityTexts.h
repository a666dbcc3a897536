#pragma once

#include "hostapp/exchange/ImportFinding.h"

/// What an import says of columns of quality, worded for the window. Pure; any thread.
namespace plotix {

/// Empty for findings about anything else.
QString textOfQuality(const ImportFinding& finding);

/// "3 values are marked as bad by “TI-101 Status”".
QString textOfMarked(std::size_t values, const QString& quality);

/// What a column of quality does: of one column, or of several.
QString textOfJudging(const QStringList& columns);

}  // namespace plotix
