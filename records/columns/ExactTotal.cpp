#include "records/columns/ExactTotal.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace plotix {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::uint32_t kMostAdditions = std::uint32_t{1} << 28;  // each adds less than 2^33 to a limb
constexpr std::size_t kExtra = 3;                                 // words behind the unit, for the digits of a mean
constexpr int kUnit = -1074;

template <std::size_t kSize>
bool bitOf(const std::array<std::uint32_t, kSize>& words, std::size_t bit)
{
    return ((words[bit / 32] >> (bit % 32)) & 1U) != 0;
}

/// The double nearest to the number, whose lowest bit stands for 2^(kUnit − 32 kExtra); `hasRest`: something was left
/// out below.
template <std::size_t kSize>
double rounded(const std::array<std::uint32_t, kSize>& words, bool hasRest)
{
    std::size_t top = kSize;
    while (top > 0 && words[top - 1] == 0)
        --top;
    if (top == 0)
        return 0;
    const std::size_t highest = top * 32 - 1 - static_cast<std::size_t>(std::countl_zero(words[top - 1]));
    const std::size_t lowest = std::max<std::size_t>(highest < 52 ? 0 : highest - 52, kExtra * 32);
    std::uint64_t digits = 0;
    for (std::size_t bit = highest + 1; bit > lowest; --bit)
        digits = digits << 1 | (bitOf(words, bit - 1) ? 1U : 0U);
    const bool isHalf = bitOf(words, lowest - 1);
    for (std::size_t bit = 0; bit + 1 < lowest && !hasRest; ++bit)
        hasRest = bitOf(words, bit);
    if (isHalf && (hasRest || (digits & 1U) != 0))
        ++digits;
    return std::ldexp(static_cast<double>(digits), static_cast<int>(lowest) - static_cast<int>(kExtra * 32) + kUnit);
}

}  // namespace

void ExactTotal::add(double value)
{
    const auto pattern = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t exponent = (pattern >> 52) & 0x7FF;
    const bool isNegative = (pattern >> 63) != 0;
    if (exponent == 0x7FF) {
        (isNegative ? m_hasMinus : m_hasPlus) = true;
        return;
    }
    const std::uint64_t mantissa = (pattern & 0xFFFFFFFFFFFFF) | (exponent == 0 ? 0 : std::uint64_t{1} << 52);
    const std::uint64_t bit = exponent == 0 ? 0 : exponent - 1;
    const Wide shifted = static_cast<Wide>(mantissa) << (bit % 32);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto part = static_cast<std::int64_t>(static_cast<std::uint32_t>(shifted >> (32 * i)));
        m_limbs[bit / 32 + i] += isNegative ? -part : part;
    }
    touch(bit / 32, bit / 32 + 3);
}

void ExactTotal::add(const ExactTotal& other)
{
    m_hasPlus = m_hasPlus || other.m_hasPlus;
    m_hasMinus = m_hasMinus || other.m_hasMinus;
    if (other.m_begin >= other.m_end)
        return;
    ExactTotal settled;
    const ExactTotal* added = &other;
    if (other.m_additions > 0) {
        settled = other;
        settled.settle();
        added = &settled;
    }
    for (std::size_t i = added->m_begin; i < added->m_end; ++i)
        m_limbs[i] += added->m_limbs[i];
    touch(added->m_begin, added->m_end);
}

void ExactTotal::add(std::size_t at, std::span<const std::byte> bytes)
{
    if (bytes.empty())
        return;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        m_limbs[(at + i) / 4] += static_cast<std::int64_t>(bytes[i]) << (8 * ((at + i) % 4));
    const std::size_t end = at + bytes.size();
    if ((bytes.back() & std::byte{0x80}) != std::byte{0})
        m_limbs[end / 4] -= std::int64_t{1} << (8 * (end % 4));
    touch(at / 4, end / 4 + 1);
}

void ExactTotal::touch(std::size_t begin, std::size_t end)
{
    m_begin = std::min(m_begin, begin);
    m_end = std::max(m_end, end);
    if (++m_additions >= kMostAdditions)
        settle();
}

ExactTotal::Words ExactTotal::words() const
{
    Words words;
    std::int64_t carry = 0;
    std::fill_n(words.begin(), std::min(m_begin, kLimbs), 0);
    for (std::size_t i = m_begin; i < kLimbs; ++i) {
        const std::int64_t sum = m_limbs[i] + carry;
        words[i] = static_cast<std::uint32_t>(sum);
        carry = sum >> 32;
        if (i >= m_end && (carry == 0 || carry == -1) && static_cast<std::int32_t>(words[i]) == carry) {
            std::fill(words.begin() + static_cast<std::ptrdiff_t>(i), words.end(), words[i]);
            break;
        }
    }
    return words;
}

/// All limbs but the last one are then below 2^32 and not negative.
void ExactTotal::settle()
{
    std::int64_t carry = 0;
    for (std::size_t i = m_begin; i < m_end; ++i) {
        const std::int64_t sum = m_limbs[i] + carry;
        m_limbs[i] = sum & 0xFFFFFFFF;
        carry = sum >> 32;
    }
    if (carry != 0 && m_end < kLimbs)
        m_limbs[m_end++] = carry;
    m_additions = 0;
}

double ExactTotal::mean(std::uint64_t count) const
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (m_hasPlus || m_hasMinus)
        return m_hasPlus && m_hasMinus ? std::numeric_limits<double>::quiet_NaN() : m_hasPlus ? kInfinity : -kInfinity;
    Words number = words();
    const bool isNegative = (number.back() >> 31) != 0;
    if (isNegative) {
        std::uint64_t carry = 1;
        for (std::uint32_t& word : number) {
            carry += static_cast<std::uint32_t>(~word);
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    std::array<std::uint32_t, kLimbs + kExtra> quotient;
    std::uint64_t rest = 0;
    for (std::size_t i = quotient.size(); i-- > 0;) {
        const Wide left = static_cast<Wide>(rest) << 32 | (i < kExtra ? 0 : number[i - kExtra]);
        quotient[i] = static_cast<std::uint32_t>(left / count);
        rest = static_cast<std::uint64_t>(left % count);
    }
    const double mean = rounded(quotient, rest != 0);
    return isNegative ? -mean : mean;
}

ExactTotal::Written ExactTotal::written() const
{
    const Words number = words();
    std::size_t begin = std::min(m_begin, kLimbs);
    while (begin < kLimbs && number[begin] == 0)
        ++begin;
    if (begin == kLimbs)
        return Written();
    const std::uint32_t sign = static_cast<std::int32_t>(number.back()) < 0 ? ~std::uint32_t{0} : 0;
    std::size_t end = std::min(m_end + 2, kLimbs);
    while (end > begin + 1 && number[end - 1] == sign && ((number[end - 2] ^ sign) >> 31) == 0)
        --end;
    const std::span<const std::byte> all = std::as_bytes(std::span(number));
    std::size_t first = begin * 4;
    while (all[first] == std::byte{0})
        ++first;
    std::size_t last = end * 4;
    const auto signByte = static_cast<std::byte>(sign);
    while (last > first + 1 && all[last - 1] == signByte &&
           ((all[last - 2] ^ signByte) & std::byte{0x80}) == std::byte{0})
        --last;
    Written written;
    written.at = first;
    written.size = last - first;
    std::memcpy(written.room.data(), all.data() + first, written.size);
    return written;
}

bool operator==(const ExactTotal& one, const ExactTotal& other)
{
    return one.m_hasPlus == other.m_hasPlus && one.m_hasMinus == other.m_hasMinus && one.words() == other.words();
}

}  // namespace plotix
