#pragma once

#include "records/store/RecordBlock.h"

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

/// The values that archive_writer stores at a whole time: readers can tell what they must be.
namespace plotix {

/// Packs well.
inline double evenValue(double time)
{
    return static_cast<double>(static_cast<std::int64_t>(time) % 2000) / 4;
}

/// Any bits, NaNs and -0.0 among them.
inline double oddValue(double time)
{
    std::uint64_t bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(time)) * 0x9E3779B97F4A7C15;
    bits ^= bits >> 31;
    return std::bit_cast<double>(bits % 64 == 0 ? 0x8000000000000000 : bits);
}

/// An agent whose records come in the order of time, and one whose records come late. Each has two properties: one of
/// even values, and the next one of odd ones.
struct WrittenAgent {
    RowId agent, even;

    std::vector<RowId> properties() const { return {even, even + 1}; }
};
inline constexpr WrittenAgent kInOrder{1, 1}, kLate{2, 3};

inline RecordBlock writtenRecords(const WrittenAgent& agent, std::vector<double> times)
{
    std::vector<double> even, odd;
    for (const double time : times) {
        even.push_back(evenValue(time));
        odd.push_back(oddValue(time));
    }
    return {SharedArray<double>::fromVector(std::move(times)),
            {{agent.even, SharedArray<double>::fromVector(std::move(even)), {}},
             {agent.even + 1, SharedArray<double>::fromVector(std::move(odd)), {}}}};
}

/// count times from first on, so far apart.
inline std::vector<double> writtenTimes(double first, int count, double apart = 1)
{
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(first + i * apart);
    return times;
}

/// Late records lie between those at 0, 2, 4, …, which were there before: at odd times, in an order that goes all over
/// them, so that every chunk is written anew again and again.
inline constexpr int kPlacesOfLate = 40'000;
inline double lateTime(int number)
{
    return 2.0 * (static_cast<std::int64_t>(number) * 7919 % kPlacesOfLate) + 1;
}

/// What a writer says of itself where it outlives it: how far what it stored was acknowledged.
struct Acknowledged {
    double inOrder = -1;  ///< the last time
    double late = 0;      ///< records
};

}  // namespace plotix
