#pragma once

#include <QtCore/QtEndian>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/// Reads numbers in their most frequent form: digits, perhaps a decimal mark among them, perhaps a minus sign first.
///
/// Eight characters at a time, without a branch for each. Any other form is left to `readNumber`, which reads all of
/// them. Pure; any thread.
namespace plotix {

/// How many bytes must be readable from the start of a number on, whatever they hold.
constexpr std::size_t kPlainNumberReach = 64;

/// digits / 10^decimals as the nearest double. False when one division of exact numbers does not suffice (digits beyond
/// 2^53, more than 22 decimals); `value` then stays as it is.
/// Clinger, "How to Read Floating Point Numbers Accurately", 1990.
inline bool divideExactly(std::int64_t digits, std::size_t decimals, double& value)
{
    static constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::int64_t kLargest = std::int64_t{1} << 53;
    if (digits > kLargest || digits < -kLargest || decimals >= kPowers.size())
        return false;
    value = static_cast<double>(digits);
    if (decimals > 0)
        value /= kPowers[decimals];
    return true;
}

/// The number of eight digits, the first in the lowest byte, each 0 … 9: two, four, eight of them put together.
inline std::uint64_t eightDigits(std::uint64_t digits)
{
    digits = digits * 10 + (digits >> 8);
    constexpr std::uint64_t kPairs = 0x000000ff'000000ffU;
    constexpr std::uint64_t kFirstAndThird = 100 + (std::uint64_t{1'000'000} << 32);
    constexpr std::uint64_t kSecondAndFourth = 1 + (std::uint64_t{10'000} << 32);
    return ((digits & kPairs) * kFirstAndThird + ((digits >> 16) & kPairs) * kSecondAndFourth) >> 32;
}

/// Takes the digits at the front, appends them to `number`, and counts them. Stops after 16 of them; `number` is right
/// for up to 18.
inline const char* takeDigits(const char* cursor, std::uint64_t& number, std::size_t& count)
{
    static constexpr std::array<std::uint64_t, 8> kPowers = {1, 10, 100, 1000, 10'000, 100'000, 1'000'000, 10'000'000};
    constexpr std::uint64_t kZeros = 0x3030303030303030U;
    constexpr std::uint64_t kToHighestBit = 0x7676767676767676U;  // brings 10 and more there
    constexpr std::uint64_t kHighestBits = 0x8080808080808080U;
    for (;;) {
        const std::uint64_t word = qFromLittleEndian<std::uint64_t>(cursor) ^ kZeros;
        const std::uint64_t others = ((word + kToHighestBit) | word) & kHighestBits;
        if (others != 0) {
            const auto digits = static_cast<std::size_t>(std::countr_zero(others)) / 8;
            count += digits;
            if (digits > 0)
                number = number * kPowers[digits] + eightDigits(word << (64 - 8 * digits));
            return cursor + digits;
        }
        number = number * 100'000'000 + eightDigits(word);
        cursor += 8;
        count += 8;
        if (count > 16)
            return cursor;
    }
}

/// Takes the number at the front; answers what follows it, or null, with `value` and `hasMark` unchanged, when there is
/// none in this form.
/// Requires: kPlainNumberReach readable bytes.
inline const char* takePlainNumber(const char* cursor, char mark, double& value, bool& hasMark)
{
    constexpr std::size_t kMostDigits = 18;  // that fit 63 bits
    const bool isNegative = *cursor == '-';
    cursor += isNegative ? 1 : 0;
    std::uint64_t digits = 0;
    std::size_t count = 0;
    cursor = takeDigits(cursor, digits, count);
    const std::size_t wholes = count;
    const bool foundMark = *cursor == mark;
    if (foundMark)
        cursor = takeDigits(cursor + 1, digits, count);
    double read = 0;
    if (count == 0 || count > kMostDigits || !divideExactly(static_cast<std::int64_t>(digits), count - wholes, read))
        return nullptr;
    value = isNegative ? -read : read;
    hasMark = foundMark;
    return cursor;
}

}  // namespace plotix
