#pragma once

#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/tables/TimeColumns.h"

#include <optional>

/// Tables whose rows each name their quantity: time; name; value; unit. Pure; any thread.
namespace plotix {

struct NamedRows {
    std::vector<std::size_t> names;  ///< joined they name the quantity
    std::size_t value = 0;
    std::optional<std::size_t> unit;  ///< a column of units
};

/// Whether the table is of this kind, and which columns are which: there is one column of values, under a name such as
/// value or state beside one such as tag or sensor; or there is one only, and a column of texts tells the rows at one
/// time apart. With Arrangement::Names a table that is none throws ImportFailure.
std::optional<NamedRows> namedRowsOf(const TableSample& sample, const TableShape& shape, const TimeColumns& time,
                                     Arrangement wanted);

/// The columns of texts, without those that only judge the values.
std::vector<std::size_t> textFieldsOf(const TableSample& sample, const TableShape& shape, const TimeColumns& time);

}  // namespace plotix
