#pragma once

#include "hostapp/exchange/tables/TableSample.h"

#include <optional>

/// Which of a file's first rows is what: where the measurements begin, and which of the rows above them is the header.
/// Pure; any thread.
namespace plotix {

struct HeaderRows {
    std::size_t firstRow = 0;           ///< the first with measurements; the number of rows where there is none
    std::optional<std::size_t> header;  ///< absent: the columns have no names
    std::optional<std::size_t> units;   ///< a row of units below the header
    std::optional<std::size_t> groups;  ///< a row above the header whose few names stand for several columns each
};

HeaderRows findHeaderRows(const TableSample& sample);

/// A row's fields without the mark of a comment in front.
std::vector<std::string> uncommented(const std::vector<std::string>& fields);

}  // namespace plotix
