#pragma once

#include <optional>
#include <string_view>

/// The words in times: months, days of the week, zones. English, German, French, in any case, with or without a dot or
/// the accents. Pure; any thread.
namespace plotix {

/// A word at the front of a text.
struct LeadingWord {
    std::size_t length = 0;  ///< bytes, a dot behind it included
    int value = 0;
};

/// The month, 1 … 12.
std::optional<LeadingWord> monthAt(std::string_view text);

/// A day of the week; its value means nothing.
std::optional<LeadingWord> weekdayAt(std::string_view text);

/// The zone's offset in seconds east of UTC. Only abbreviations that mean one thing where measurements are made: not
/// IST, which has three meanings.
std::optional<LeadingWord> zoneAt(std::string_view text);

}  // namespace plotix
