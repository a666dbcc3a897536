#pragma once

#include <optional>
#include <string_view>

/// Words that stand in cells of numbers: for no value at all, and for the two states of a switch. Pure; any thread.
namespace plotix {

/// Whether a cell stands for "no value": nothing, dashes, NA, n/a, NaN, null, "Bad", "unavailable", the errors of
/// spreadsheets such as #NV and #DIV/0!, and their like in English, German and French, in any case.
bool isMissing(std::string_view field);

/// 1 for on, open, true, yes, running, …, 0 for their opposites, in English, German and French; nothing for other
/// words.
std::optional<double> stateOf(std::string_view field);

}  // namespace plotix
