#pragma once

#include "records/store/RecordStore.h"

/// How many stored values a block of records would replace by others. Free function; any thread.
namespace plotix {

struct ReplacedValues {
    std::size_t values = 0;      ///< valid ones that would become others, or none
    std::size_t properties = 0;  ///< that have such values
};

/// The same value again replaces nothing. Requires: the block's times ascend.
ReplacedValues replacedValues(RecordStore& stored, RowId agent, const RecordBlock& block);

}  // namespace plotix
