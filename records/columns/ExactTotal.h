#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// The sum of any doubles without any rounding: a whole number of 2176 bits that counts in units of 2^-1074, the least
/// double above zero. So it does not matter in which order values come, nor in how many parts they are summed, and a
/// mean is rounded once.
///
/// A value of about half a kilobyte; any thread. Room for 2^64 values.
namespace plotix {

class ExactTotal {
public:
    /// Bytes of the number, from the lowest. Two's complement.
    static constexpr std::size_t kBytes = 272;

    /// The number without the zero bytes it ends with, and without repeated signs in front.
    struct Written {
        std::size_t at = 0;  ///< zero bytes left out
        std::size_t size = 0;
        std::array<std::byte, kBytes> room;  ///< without memory of its own

        std::span<const std::byte> bytes() const { return std::span(room).first(size); }
    };

    /// Requires: no NaN. Infinities are counted apart from the number.
    void add(double value);
    void add(const ExactTotal& other);
    /// A written number. Requires: at + bytes.size() < kBytes.
    void add(std::size_t at, std::span<const std::byte> bytes);

    /// The double nearest to it, of two the even one; NaN for infinities of both signs.
    double value() const { return mean(1); }
    /// The double nearest to it ÷ count. Requires: count > 0.
    double mean(std::uint64_t count) const;

    /// Without infinities.
    Written written() const;

    friend bool operator==(const ExactTotal& one, const ExactTotal& other);

private:
    static constexpr std::size_t kLimbs = kBytes / 4;
    using Words = std::array<std::uint32_t, kLimbs>;

    void touch(std::size_t begin, std::size_t end);
    Words words() const;  ///< two's complement
    void settle();        ///< carries, before limbs overflow

    std::array<std::int64_t, kLimbs> m_limbs{};  ///< of 32 bits each, and what is to be carried
    std::size_t m_begin = kLimbs, m_end = 0;     ///< those that may be other than 0
    std::uint32_t m_additions = 0;               ///< since carries were settled
    bool m_hasPlus = false, m_hasMinus = false;  ///< infinities
};

}  // namespace plotix
