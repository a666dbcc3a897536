#include "hostapp/formulas/FormulaBlocks.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace plotix {

namespace {

using Do = FormulaStep::Do;
using enum FormulaOperation;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kWord = 64;

template <class Work>
void each(const double* one, double* to, std::size_t count, const Work& work)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = work(one[i]);
}

template <class Work>
void both(const double* one, const double* other, double* to, std::size_t count, const Work& work)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = work(one[i], other[i]);
}

/// 1 or 0, and nothing where there is nothing to compare.
template <class Holds>
void compare(const double* one, const double* other, double* to, std::size_t count, const Holds& holds)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = std::isunordered(one[i], other[i]) ? kNone : (holds(one[i], other[i]) ? 1.0 : 0.0);
}

/// Magnus over water, as the World Meteorological Organization has it: °C and % to °C.
double dewPoint(double temperature, double humidity)
{
    constexpr double kB = 17.62, kC = 243.12;
    const double gamma = std::log(humidity / 100) + kB * temperature / (kC + temperature);
    return kC * gamma / (kB - gamma);
}

void call(const FormulaStep& step, const std::array<const double*, 3>& a, double* to, std::size_t n)
{
    switch (step.operation) {
    case Absolute: each(a[0], to, n, [](double x) { return std::abs(x); }); break;
    case SquareRoot: each(a[0], to, n, [](double x) { return std::sqrt(x); }); break;
    case Exponential: each(a[0], to, n, [](double x) { return std::exp(x); }); break;
    case Logarithm: each(a[0], to, n, [](double x) { return std::log(x); }); break;
    case Logarithm10: each(a[0], to, n, [](double x) { return std::log10(x); }); break;
    case Sine: each(a[0], to, n, [](double x) { return std::sin(x); }); break;
    case Cosine: each(a[0], to, n, [](double x) { return std::cos(x); }); break;
    case Tangent: each(a[0], to, n, [](double x) { return std::tan(x); }); break;
    case Round: each(a[0], to, n, [](double x) { return std::round(x); }); break;
    case Floor: each(a[0], to, n, [](double x) { return std::floor(x); }); break;
    case Ceiling: each(a[0], to, n, [](double x) { return std::ceil(x); }); break;
    // The other one's NaN is answered by the comparison, one's own by the sum.
    case Least: both(a[0], a[1], to, n, [](double x, double y) { return x < y ? x : (y <= x ? y : x + y); }); break;
    case Greatest: both(a[0], a[1], to, n, [](double x, double y) { return x > y ? x : (y >= x ? y : x + y); }); break;
    case DewPoint: both(a[0], a[1], to, n, dewPoint); break;
    case Choice:
        for (std::size_t i = 0; i < n; ++i)
            to[i] = std::isnan(a[0][i]) ? kNone : (a[0][i] != 0 ? a[1][i] : a[2][i]);
        break;
    default: std::fill_n(to, n, kNone); break;
    }
}

}  // namespace

void runStep(const FormulaStep& step, const std::array<const double*, 3>& a, double* to, std::size_t n)
{
    const double number = step.number, offset = step.offset;
    switch (step.what) {
    case Do::Constant: std::fill_n(to, n, number); break;
    case Do::Linear: each(a[0], to, n, [=](double x) { return x * number + offset; }); break;
    case Do::Add: both(a[0], a[1], to, n, [](double x, double y) { return x + y; }); break;
    case Do::Subtract: both(a[0], a[1], to, n, [](double x, double y) { return x - y; }); break;
    case Do::Multiply: both(a[0], a[1], to, n, [](double x, double y) { return x * y; }); break;
    case Do::Divide: both(a[0], a[1], to, n, [](double x, double y) { return x / y; }); break;
    // 1 to the power of nothing, and nothing to the power of 0, are 1 to the library.
    case Do::Power:
        both(a[0], a[1], to, n, [](double x, double y) { return std::isunordered(x, y) ? kNone : std::pow(x, y); });
        break;
    case Do::Less: compare(a[0], a[1], to, n, [](double x, double y) { return x < y; }); break;
    case Do::LessOrEqual: compare(a[0], a[1], to, n, [](double x, double y) { return x <= y; }); break;
    case Do::Greater: compare(a[0], a[1], to, n, [](double x, double y) { return x > y; }); break;
    case Do::GreaterOrEqual: compare(a[0], a[1], to, n, [](double x, double y) { return x >= y; }); break;
    case Do::Equal: compare(a[0], a[1], to, n, [](double x, double y) { return x == y; }); break;
    case Do::Different: compare(a[0], a[1], to, n, [](double x, double y) { return x != y; }); break;
    case Do::Input:
    case Do::Call: call(step, a, to, n); break;
    }
}

void copyMasked(const double* values, const ValidityBitmap& validity, std::size_t first, std::size_t count, double* to)
{
    for (std::size_t at = 0; at < count; at += kWord) {
        const std::size_t part = std::min(kWord, count - at);
        const std::uint64_t bits = validity.isAllValid() ? ~std::uint64_t{0} : validity.words()[(first + at) / kWord];
        for (std::size_t i = 0; i < part; ++i)
            to[at + i] = ((bits >> i) & 1U) != 0 ? values[first + at + i] : kNone;
    }
}

bool areValid(const ValidityBitmap& validity, std::size_t first, std::size_t count)
{
    if (validity.isAllValid())
        return true;
    for (std::size_t at = 0; at < count; at += kWord) {
        const std::size_t part = std::min(kWord, count - at);
        const std::uint64_t wanted = part == kWord ? ~std::uint64_t{0} : (std::uint64_t{1} << part) - 1;
        if ((validity.words()[(first + at) / kWord] & wanted) != wanted)
            return false;
    }
    return true;
}

void FiniteBits::take(double* values, std::size_t first, std::size_t count)
{
    // What is not finite makes its lane a NaN for good.
    constexpr std::size_t kLanes = 8;
    std::array<double, kLanes> lanes{};
    std::size_t at = 0;
    for (; at + kLanes <= count; at += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes[lane] += values[at + lane] * 0.0;
    for (; at < count; ++at)
        lanes[0] += values[at] * 0.0;
    double sum = 0;
    for (const double lane : lanes)
        sum += lane;
    if (sum == 0 && m_words.empty())
        return;
    if (m_words.empty()) {
        m_words.assign((m_count + kWord - 1) / kWord, ~std::uint64_t{0});
        if (m_count % kWord != 0)
            m_words.back() = (std::uint64_t{1} << (m_count % kWord)) - 1;
    }
    if (sum == 0)
        return;
    for (std::size_t i = 0; i < count; ++i)
        if (!std::isfinite(values[i])) {
            values[i] = kNone;
            m_words[(first + i) / kWord] &= ~(std::uint64_t{1} << ((first + i) % kWord));
        }
}

ValidityBitmap FiniteBits::bitmap()
{
    return m_words.empty() ? ValidityBitmap()
                           : ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(m_words)));
}

}  // namespace plotix
