#pragma once

#include "hostapp/exchange/DateOrder.h"
#include "hostapp/exchange/ImportOptions.h"
#include "hostapp/exchange/tables/TableShape.h"

/// Which columns of a table are the time, and how it is written. Pure; any thread. Throws ImportFailure that names the
/// columns there are.
namespace plotix {

struct TimeColumns {
    enum class Form {
        Single,        ///< one column
        DateAndClock,  ///< a date, then a time of day, then perhaps AM or PM
        Parts          ///< year, month, day, then perhaps hour, minute, second
    };
    Form form = Form::Single;
    std::vector<std::size_t> fields;
    TimeLayout layout = TimeLayout::YearFirst;
    ClockDigits clockDigits = ClockDigits::Hours;  ///< of times of day that are numbers beside the date
    bool areBounded = false;          ///< numbers since 1970 are times from 1990 to ten years from now alone
    bool needsDateOrder = false;      ///< the order of day and month must come from the whole file
    std::vector<std::size_t> others;  ///< columns of times that were not chosen
    QString statedZone;               ///< by the header; empty: none
};

/// The columns named; without, the first whose sample reads as times, columns called time or date before others. A date
/// without a time of day is joined with a column of times of day, or of hours. Plain numbers count as times only under
/// such a name, or in front of a table without a header.
TimeColumns timeColumnsOf(const TableSample& sample, const TableShape& shape, const std::vector<std::size_t>& named);

}  // namespace plotix
