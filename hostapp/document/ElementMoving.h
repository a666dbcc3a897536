#pragma once

#include "hostapp/document/EditProgress.h"

#include <functional>

/// The values of one property on their way to another, perhaps of another agent. Free function; any thread.
namespace plotix {

struct ElementMove {
    RowId agent = 0, property = 0;      ///< from
    RowId toAgent = 0, toProperty = 0;  ///< to
    /// From the one's archived unit to the other's; empty: as they are.
    std::function<double(double)> converted{};
};

struct ElementsMoved {
    std::size_t values = 0;
    std::size_t conflicts = 0;  ///< left out, since the target has another value at that time
};

/// Stores the source's valid values where the target has none; the source keeps them. `stored`: the records as they
/// are. Its parts are those of the source's agent.
ElementsMoved moveElements(RecordStore& stored, RecordTransaction& records, const ElementMove& move, EditMeter& meter);

}  // namespace plotix
