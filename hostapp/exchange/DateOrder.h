#pragma once

#include "hostapp/exchange/TimeText.h"

#include <limits>

/// The order of day, month and year in the dates of a file. Pure; any thread.
namespace plotix {

/// What the dates of a whole file say about the order of day, month and year.
struct DateOrderEvidence {
    /// How the times run if dates are read in one order.
    struct Course {
        TimeLayout layout{};
        bool isImpossible = false;  ///< some number is too large for its place
        std::int64_t previous = std::numeric_limits<std::int64_t>::min();
        std::int64_t largestStep = 0;  ///< seconds, either way
    };

    bool dots = false;     ///< dates have dots, which nobody writes with the month first
    bool isShort = false;  ///< all dates have years of two digits
    std::size_t dates = 0;
    std::size_t sameDay = 0;  ///< dates equal to the one before
    std::array<int, 3> last{};
    std::array<Course, 3> courses{{{TimeLayout::DayFirst}, {TimeLayout::MonthFirst}, {TimeLayout::ShortYearFirst}}};

    void add(const DateAndTime& date);
};

/// Day or month first, judged by all dates of the file; throws ImportFailure when they leave it open or disagree.
TimeLayout decidedLayout(const DateOrderEvidence& evidence);

}  // namespace plotix
