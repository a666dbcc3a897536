#include "plotkit/model/CPTFormatter.h"

#include <QtCore/QLocale>
#include <QtCore/QTimeZone>

#include <unicode/decimfmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cmath>

namespace {

/// A locale set by the program goes before the environment; in the environment the category goes before LANG.
icu::Locale userLocale(const char* category)
{
    if (QLocale() != QLocale::system())
        return icu::Locale::createCanonical(QLocale().name().toLatin1().constData());
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        QByteArray name = qgetenv(variable);
        name.truncate(name.indexOf('.') < 0 ? name.size() : name.indexOf('.'));
        name.truncate(name.indexOf('@') < 0 ? name.size() : name.indexOf('@'));
        if (name == "C" || name == "POSIX")
            break;
        if (!name.isEmpty())
            return icu::Locale::createCanonical(name.constData());
    }
    return icu::Locale::getUS();  // the portable locale writes month names in English
}

/// Asked anew for every formatter: ICU remembers its first answer, but a zone may change while we run.
icu::TimeZone* userTimeZone()
{
    const QByteArray identifier = QTimeZone::systemTimeZoneId();
    std::unique_ptr<icu::TimeZone> zone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(identifier.constData())));
    if (*zone == icu::TimeZone::getUnknown())
        zone.reset(icu::TimeZone::detectHostTimeZone());
    return zone.release();
}

icu::UnicodeString toIcu(const QString& text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()));
}

QString fromIcu(const icu::UnicodeString& text)
{
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

}  // namespace

CPTFormatter::~CPTFormatter() = default;

struct CPTTimeFormatter::Icu {
    std::unique_ptr<icu::SimpleDateFormat> format;  // null for an unreadable pattern
};

CPTTimeFormatter::CPTTimeFormatter(const QString& pattern, plotix::Date referenceDate)
    : m_pattern(pattern), m_referenceDate(referenceDate), m_icu(std::make_unique<Icu>())
{
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(toIcu(pattern), userLocale("LC_TIME"), status);
    if (U_FAILURE(status))
        return;
    format->adoptTimeZone(userTimeZone());
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
    return fromIcu(text);
}

struct CPTNumberFormatter::Icu {
    std::unique_ptr<icu::DecimalFormat> format;  // null for an unreadable pattern
    double largestZero = 0;                      // magnitudes up to this one are written as zero
};

CPTNumberFormatter::CPTNumberFormatter(const QString& pattern, int minimumFractionDigits)
    : m_pattern(pattern), m_minimumFractionDigits(minimumFractionDigits), m_icu(std::make_unique<Icu>())
{
    UErrorCode status = U_ZERO_ERROR;
    auto symbols = std::make_unique<icu::DecimalFormatSymbols>(userLocale("LC_NUMERIC"), status);
    if (U_FAILURE(status))
        return;
    auto format = std::make_unique<icu::DecimalFormat>(toIcu(pattern), symbols.release(), status);
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
    return fromIcu(text);
}
