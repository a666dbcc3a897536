#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace plotix {

/// A column's values and which of them are valid. Borrows both; they must outlive the view. Pure; any thread.
struct ColumnView {
    const double* values = nullptr;
    const std::uint64_t* valid = nullptr;  ///< null: every element is valid
    std::size_t firstValid = 0;            ///< position of the first element's bit
};

/// The value that an element which was never stored reads as.
inline double absentValue()
{
    return std::numeric_limits<double>::quiet_NaN();
}

}  // namespace plotix
