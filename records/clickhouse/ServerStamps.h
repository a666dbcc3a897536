#pragma once

#include <cstdint>

/// Numbers that a process gives to what it stores. Any thread.
namespace plotix::stamps {

/// Later than every version that this process gave or saw, and by its clock: what has a later version counts.
std::uint64_t version();
/// This one was seen.
void saw(std::uint64_t version);

/// One that nobody else has, above 0, and higher than all that this process gave before: the seconds since 1970, and
/// kRandomBits by chance.
inline constexpr int kRandomBits = 31;
std::uint64_t number();

/// The day of now, for rows that go by the day they came.
std::uint32_t day();

}  // namespace plotix::stamps
