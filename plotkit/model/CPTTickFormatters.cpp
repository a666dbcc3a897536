#include "plotkit/model/CPTTickFormatters.h"

#include "plotkit/model/UserLocale.h"

#include <unicode/dtptngen.h>
#include <unicode/numberformatter.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

namespace {

using icu::number::LocalizedNumberFormatter;
using icu::number::Notation;
using icu::number::NumberFormatter;
using icu::number::Precision;

constexpr int kMostDigits = 15;
constexpr double kExponentFrom = 1e15;  // doubles have no digits to show beyond
constexpr double kSecondsPerDay = 86'400;

QString formatted(const LocalizedNumberFormatter& formatter, double number)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = formatter.formatDouble(number, status).toString(status);
    return U_FAILURE(status) ? QString() : plotkit::fromIcu(text);
}

/// What a tick says, by how far away the next one is. Skeletons: the locale puts the fields into its own order.
struct TimeLook {
    double stepBelow;  // seconds
    const char* firstLine;
    const char* secondLine;
};

constexpr std::array<TimeLook, 8> kTimeLooks{{
    {0.0099, "jmsSSS", "MMMd"},
    {0.099, "jmsSS", "MMMd"},
    {0.99, "jmsS", "MMMd"},
    {60, "jms", "MMMd"},
    {kSecondsPerDay, "jm", "MMMd"},
    {28 * kSecondsPerDay, "MMMd", "y"},
    {365 * kSecondsPerDay, "MMM", "y"},
    {HUGE_VAL, "y", ""},
}};

QString patternOf(icu::DateTimePatternGenerator& generator, const char* skeleton)
{
    UErrorCode status = U_ZERO_ERROR;
    QString pattern = plotkit::fromIcu(generator.getBestPattern(icu::UnicodeString(skeleton), status));
    pattern.replace(QChar(0x202F), QLatin1Char(' '));  // few fonts have the narrow space before AM and PM
    return U_FAILURE(status) ? QString() : pattern;
}

std::array<QString, kTimeLooks.size()> patternsOf(const icu::Locale& locale)
{
    std::array<QString, kTimeLooks.size()> patterns;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    if (U_FAILURE(status))
        return patterns;
    for (std::size_t index = 0; index < kTimeLooks.size(); ++index) {
        patterns[index] = patternOf(*generator, kTimeLooks[index].firstLine);
        if (*kTimeLooks[index].secondLine)
            patterns[index] += QLatin1Char('\n') + patternOf(*generator, kTimeLooks[index].secondLine);
    }
    return patterns;
}

/// The steps from which on a moment is written by a skeleton, from the finest to the coarsest.
struct MomentLook {
    double stepBelow;  // seconds
    const char* skeleton;
};

constexpr std::array<MomentLook, 3> kMomentLooks{{
    {0.99, "yMMMEdjmsSSS"},
    {60, "yMMMEdjms"},
    {HUGE_VAL, "yMMMEdjm"},
}};

/// Kept for each locale, as below.
const std::array<QString, kMomentLooks.size()>& knownMomentPatterns()
{
    static std::map<std::string, std::array<QString, kMomentLooks.size()>> known;
    const icu::Locale locale = plotkit::userLocale("LC_TIME");
    const auto [entry, isNew] = known.try_emplace(locale.getName());
    if (!isNew)
        return entry->second;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    for (std::size_t index = 0; U_SUCCESS(status) && index < kMomentLooks.size(); ++index)
        entry->second[index] = patternOf(*generator, kMomentLooks[index].skeleton);
    return entry->second;
}

/// Kept for each locale: to find them takes milliseconds.
const std::array<QString, kTimeLooks.size()>& knownPatterns()
{
    static std::map<std::string, std::array<QString, kTimeLooks.size()>> known;
    const icu::Locale locale = plotkit::userLocale("LC_TIME");
    const auto [entry, isNew] = known.try_emplace(locale.getName());
    if (isNew)
        entry->second = patternsOf(locale);
    return entry->second;
}

}  // namespace

int fractionDigitsForStep(double step)
{
    if (!(step > 0) || !std::isfinite(step))
        return 0;
    constexpr int kMore = 3;
    constexpr double kRounding = 1e-6;
    const int least = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - kRounding)), 0, kMostDigits);
    for (int digits = least; digits <= std::min(least + kMore, kMostDigits); ++digits) {
        const double scaled = step * std::pow(10.0, digits);
        if (std::abs(scaled - std::round(scaled)) < kRounding * scaled)
            return digits;
    }
    return least;
}

struct CPTTickNumberFormatter::Icu {
    icu::Locale locale = plotkit::userLocale("LC_NUMERIC");
    std::map<int, LocalizedNumberFormatter> byDigits = {};  // made when first asked for

    const LocalizedNumberFormatter& withDigits(int digits)
    {
        const auto found = byDigits.find(digits);
        if (found != byDigits.end())
            return found->second;
        return byDigits.emplace(digits, NumberFormatter::withLocale(locale).precision(Precision::fixedFraction(digits)))
            .first->second;
    }
};

CPTTickNumberFormatter::CPTTickNumberFormatter() : m_icu(std::make_unique<Icu>()) {}

CPTTickNumberFormatter::~CPTTickNumberFormatter() = default;

QString CPTTickNumberFormatter::stringForNumber(double number) const
{
    if (std::isnan(number))
        return {};
    constexpr int kDecimals = 6;
    return formatted(NumberFormatter::withLocale(m_icu->locale).precision(Precision::maxFraction(kDecimals)), number);
}

QString CPTTickNumberFormatter::stringForTick(double number, double step) const
{
    if (std::isnan(number))
        return {};
    if (std::abs(number) >= kExponentFrom)
        return formatted(NumberFormatter::withLocale(m_icu->locale)
                             .notation(Notation::scientific())
                             .precision(Precision::maxSignificantDigits(kMostDigits)),
                         number);
    const int digits = fractionDigitsForStep(step);
    // A tick that misses zero by a rounding error would otherwise read "-0.0".
    const bool isZero = std::abs(number) <= 0.5 * std::pow(10.0, -digits);
    return formatted(m_icu->withDigits(digits), isZero ? 0.0 : number);
}

struct CPTTickTimeFormatter::Icu {
    std::array<QString, kTimeLooks.size()> patterns = knownPatterns();
    std::array<std::optional<CPTTimeFormatter>, kTimeLooks.size()> formatters = {};  // made when first asked for
};

CPTTickTimeFormatter::CPTTickTimeFormatter() : m_icu(std::make_unique<Icu>()) {}

CPTTickTimeFormatter::~CPTTickTimeFormatter() = default;

const CPTTimeFormatter& CPTTickTimeFormatter::formatterFor(double step) const
{
    std::size_t index = 0;
    while (index + 1 < kTimeLooks.size() && !(step < kTimeLooks[index].stepBelow))
        ++index;
    std::optional<CPTTimeFormatter>& formatter = m_icu->formatters[index];
    if (!formatter)
        formatter.emplace(m_icu->patterns[index]);
    return *formatter;
}

QString CPTTickTimeFormatter::stringForNumber(double number) const
{
    return stringForTick(number, 1);
}

QString CPTTickTimeFormatter::stringForTick(double number, double step) const
{
    return formatterFor(step).stringForNumber(number);
}

QString CPTTickTimeFormatter::pattern() const
{
    constexpr double kMinute = 60;
    return formatterFor(kMinute).pattern();
}

CPTMomentFormatter::CPTMomentFormatter()
{
    for (const QString& pattern : knownMomentPatterns())
        m_formatters.push_back(std::make_unique<const CPTTimeFormatter>(pattern));
}

CPTMomentFormatter::~CPTMomentFormatter() = default;

QString CPTMomentFormatter::stringForNumber(double number) const
{
    return stringForTick(number, 1);
}

QString CPTMomentFormatter::stringForTick(double number, double step) const
{
    std::size_t index = 0;
    while (index + 1 < kMomentLooks.size() && !(step < kMomentLooks[index].stepBelow))
        ++index;
    return m_formatters[index]->stringForNumber(number);
}

QString CPTMomentFormatter::pattern() const
{
    return m_formatters.back()->pattern();
}
