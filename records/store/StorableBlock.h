#pragma once

#include "records/store/RecordBlock.h"

/// The checks every store makes before it accepts a block. Pure; any thread. Each throws ReportableError.
namespace plotix {

/// Every record has a time that is a finite number, and an element in each column. True: the times ascend, which is
/// found out on the way.
bool requireWholeRecords(const RecordBlock& block);

/// No property has two columns.
void requireDistinctProperties(const RecordBlock& block);

/// Throws the error for a property that is not the agent's.
[[noreturn]] void refuseProperty(RowId agent, RowId property);

}  // namespace plotix
