#include "plotkit/model/CPTTickFormatters.h"

#include "plotkit/model/UserLocale.h"

#include <unicode/dtptngen.h>
#include <unicode/numberformatter.h>

#include <QtCore/QStringList>

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

std::unique_ptr<icu::DateTimePatternGenerator> generatorFor(const icu::Locale& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    return U_FAILURE(status) ? nullptr : std::move(generator);
}

/// A locale's "j" is the hour as it writes it.
std::string skeletonFor(const char* skeleton, CPTHourForm hours)
{
    std::string text(skeleton);
    if (hours == CPTHourForm::TwentyFour)
        std::replace(text.begin(), text.end(), 'j', 'H');
    return text;
}

std::array<QString, kTimeLooks.size()> patternsOf(const icu::Locale& locale, CPTHourForm hours)
{
    std::array<QString, kTimeLooks.size()> patterns;
    const auto generator = generatorFor(locale);
    if (!generator)
        return patterns;
    for (std::size_t index = 0; index < kTimeLooks.size(); ++index) {
        patterns[index] = patternOf(*generator, skeletonFor(kTimeLooks[index].firstLine, hours).c_str());
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

using KeptFor = std::pair<std::string, CPTHourForm>;

/// Kept for each locale and form, as below.
const std::array<QString, kMomentLooks.size()>& knownMomentPatterns(CPTHourForm hours)
{
    static std::map<KeptFor, std::array<QString, kMomentLooks.size()>> known;
    const icu::Locale locale = plotkit::userLocale("LC_TIME");
    const auto [entry, isNew] = known.try_emplace(KeptFor(locale.getName(), hours));
    if (!isNew)
        return entry->second;
    const auto generator = generatorFor(locale);
    for (std::size_t index = 0; generator && index < kMomentLooks.size(); ++index)
        entry->second[index] = patternOf(*generator, skeletonFor(kMomentLooks[index].skeleton, hours).c_str());
    return entry->second;
}

/// Kept for each locale and form: to find them takes milliseconds.
const std::array<QString, kTimeLooks.size()>& knownPatterns(CPTHourForm hours)
{
    static std::map<KeptFor, std::array<QString, kTimeLooks.size()>> known;
    const icu::Locale locale = plotkit::userLocale("LC_TIME");
    const auto [entry, isNew] = known.try_emplace(KeptFor(locale.getName(), hours));
    if (isNew)
        entry->second = patternsOf(locale, hours);
    return entry->second;
}

/// The letters of a pattern's line, with the hour as the locale has it.
QString lineInLocale(const QString& line, icu::DateTimePatternGenerator& generator)
{
    QByteArray skeleton;
    for (const QChar letter : line)
        if (letter == QLatin1Char('h'))
            skeleton += 'j';
        else if (letter.isLetter() && letter != QLatin1Char('a'))
            skeleton += letter.toLatin1();
    return patternOf(generator, skeleton.constData());
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
    std::array<QString, kTimeLooks.size()> patterns;
    std::array<std::optional<CPTTimeFormatter>, kTimeLooks.size()> formatters = {};  // made when first asked for
};

CPTTickTimeFormatter::CPTTickTimeFormatter(const CPTClock& clock)
    : m_clock(clock), m_icu(std::make_unique<Icu>(knownPatterns(clock.hours)))
{
}

CPTTickTimeFormatter::~CPTTickTimeFormatter() = default;

const CPTTimeFormatter& CPTTickTimeFormatter::formatterFor(double step) const
{
    std::size_t index = 0;
    while (index + 1 < kTimeLooks.size() && !(step < kTimeLooks[index].stepBelow))
        ++index;
    std::optional<CPTTimeFormatter>& formatter = m_icu->formatters[index];
    if (!formatter)
        formatter.emplace(m_icu->patterns[index], plotix::Date(), m_clock.zone);
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

CPTMomentFormatter::CPTMomentFormatter(const CPTClock& clock) : m_clock(clock)
{
    for (const QString& pattern : knownMomentPatterns(clock.hours))
        m_formatters.push_back(std::make_unique<const CPTTimeFormatter>(pattern, plotix::Date(), clock.zone));
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
    const QString text = m_formatters[index]->stringForNumber(number);
    return std::isfinite(number) && plotkit::isShownTwice(m_clock.zone, number)
               ? text + QLatin1Char(' ') + plotkit::offsetText(plotkit::offsetAt(m_clock.zone, number))
               : text;
}

QString CPTMomentFormatter::pattern() const
{
    return m_formatters.back()->pattern();
}

QString patternByClock(const QString& pattern, CPTHourForm hours)
{
    if (hours == CPTHourForm::Usual)
        return pattern;
    QStringList lines = pattern.split(QLatin1Char('\n'));
    const auto generator = generatorFor(plotkit::userLocale("LC_TIME"));
    for (QString& line : lines)
        if (hours == CPTHourForm::Locale && generator)
            line = lineInLocale(line, *generator);
        else
            line.replace(QLatin1String("h:"), QLatin1String("HH:")).remove(QLatin1Char('a'));
    return lines.join(QLatin1Char('\n'));
}
