#include "plotkit/model/CPTFormatter.h"

#include "plotkit/model/UserLocale.h"

#include <unicode/decimfmt.h>
#include <unicode/smpdtfmt.h>

#include <cmath>

CPTFormatter::~CPTFormatter() = default;

QString CPTFormatter::stringForTick(double number, double /*step*/) const
{
    return stringForNumber(number);
}

struct CPTTimeFormatter::Icu {
    std::unique_ptr<icu::SimpleDateFormat> format;  // null for an unreadable pattern
};

CPTTimeFormatter::CPTTimeFormatter(const QString& pattern, plotix::Date referenceDate, const QTimeZone& zone)
    : m_pattern(pattern), m_referenceDate(referenceDate), m_icu(std::make_unique<Icu>())
{
    UErrorCode status = U_ZERO_ERROR;
    auto format =
        std::make_unique<icu::SimpleDateFormat>(plotkit::toIcu(pattern), plotkit::userLocale("LC_TIME"), status);
    if (U_FAILURE(status))
        return;
    format->adoptTimeZone(plotkit::icuTimeZone(zone));
    m_icu->format = std::move(format);
}

CPTTimeFormatter::~CPTTimeFormatter() = default;

QString CPTTimeFormatter::stringForNumber(double number) const
{
    const double seconds = m_referenceDate.seconds + number;
    if (!m_icu->format || !std::isfinite(seconds))
        return {};
    icu::UnicodeString text;
    // Whole milliseconds: a tick a rounding error below a full second must not read as the second before.
    m_icu->format->format(std::round(seconds * 1000.0), text);
    return plotkit::fromIcu(text);
}

struct CPTNumberFormatter::Icu {
    std::unique_ptr<icu::DecimalFormat> format;  // null for an unreadable pattern
    double largestZero = 0;                      // magnitudes up to this one are written as zero
};

CPTNumberFormatter::CPTNumberFormatter(const QString& pattern, int minimumFractionDigits)
    : m_pattern(pattern), m_minimumFractionDigits(minimumFractionDigits), m_icu(std::make_unique<Icu>())
{
    UErrorCode status = U_ZERO_ERROR;
    auto symbols = std::make_unique<icu::DecimalFormatSymbols>(plotkit::userLocale("LC_NUMERIC"), status);
    if (U_FAILURE(status))
        return;
    auto format = std::make_unique<icu::DecimalFormat>(plotkit::toIcu(pattern), symbols.release(), status);
    if (U_FAILURE(status))
        return;
    format->setMinimumIntegerDigits(1);
    format->setMaximumFractionDigits(std::max(format->getMaximumFractionDigits(), minimumFractionDigits));
    format->setMinimumFractionDigits(minimumFractionDigits);
    m_icu->largestZero = 0.5 * std::pow(10.0, -format->getMaximumFractionDigits());
    m_icu->format = std::move(format);
}

CPTNumberFormatter::~CPTNumberFormatter() = default;

QString CPTNumberFormatter::stringForNumber(double number) const
{
    if (!m_icu->format || std::isnan(number))
        return {};
    icu::UnicodeString text;
    // A tick that misses zero by a rounding error would otherwise read "-0.0".
    m_icu->format->format(std::abs(number) <= m_icu->largestZero ? 0.0 : number, text);
    return plotkit::fromIcu(text);
}
