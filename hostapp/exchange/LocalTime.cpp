#include "hostapp/exchange/LocalTime.h"

#include "hostapp/exchange/ImportFinding.h"
#include "hostapp/exchange/TimeWords.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTimeZone>

#include <unicode/basictz.h>
#include <unicode/tzrule.h>
#include <unicode/tztrans.h>

#include <cstdlib>

namespace plotix {

namespace {

constexpr std::int64_t kFarAway = std::int64_t{1} << 60;

icu::UnicodeString toUnicode(const QString& text)
{
    return {reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size())};
}

/// Seconds east of UTC as "+01:00".
QString offsetText(std::int64_t seconds)
{
    const std::int64_t minutes = std::abs(seconds) / 60;
    return QStringLiteral("%1%2:%3")
        .arg(seconds < 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

/// "+02:00", "-5", "UTC+2" and "CET" as the library writes fixed offsets.
QString zoneIdentifier(const QString& zone)
{
    const std::string word = zone.toStdString();
    const std::optional<LeadingWord> shortName = zoneAt(word);
    if (shortName && shortName->length == word.size())
        return QStringLiteral("GMT") + offsetText(shortName->value);
    static const QRegularExpression offset(QStringLiteral("^(?:UTC|GMT)?([+-]\\d{1,2}(?::?\\d{2})?)$"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = offset.match(zone);
    return match.hasMatch() ? QStringLiteral("GMT") + match.captured(1) : zone;
}

std::int64_t offsetOf(const icu::TimeZoneRule& rule)
{
    return (rule.getRawOffset() + rule.getDSTSavings()) / 1000;
}

}  // namespace

struct LocalTime::Zone {
    std::unique_ptr<icu::BasicTimeZone> zone;

    std::int64_t offsetFor(std::int64_t local, UTimeZoneLocalOption option) const
    {
        int32_t raw = 0, saving = 0;
        UErrorCode status = U_ZERO_ERROR;
        zone->getOffsetFromLocal(static_cast<double>(local) * 1000, option, option, raw, saving, status);
        return (raw + saving) / 1000;
    }
};

LocalTime::LocalTime(const QString& zone) : m_zone(std::make_unique<Zone>())
{
    m_name = zone.trimmed().isEmpty() ? QString::fromUtf8(QTimeZone::systemTimeZoneId()) : zone.trimmed();
    // The user's own zone is the system's, whatever it is called.
    const QString identifier = zone.trimmed().isEmpty() ? m_name : zoneIdentifier(m_name);
    std::unique_ptr<icu::TimeZone> made(icu::TimeZone::createTimeZone(toUnicode(identifier)));
    icu::UnicodeString name;
    if (made->getID(name) == icu::UnicodeString("Etc/Unknown"))
        throw ImportFailure({.what = ImportFinding::What::UnknownTimeZone, .text = identifier});
    auto* basic = dynamic_cast<icu::BasicTimeZone*>(made.get());
    if (basic == nullptr)
        throw ImportFailure({.what = ImportFinding::What::UnusableTimeZone, .text = identifier});
    made.release();
    m_zone->zone.reset(basic);
}

QString LocalTime::offsetBeforeSkip() const
{
    return offsetText(m_beforeSkip);
}

LocalTime::~LocalTime() = default;
LocalTime::LocalTime(LocalTime&&) noexcept = default;
LocalTime& LocalTime::operator=(LocalTime&&) noexcept = default;

std::int64_t LocalTime::utcFromLocal(std::int64_t local, std::optional<double> previous)
{
    m_wasSkipped = false;
    if (local >= m_begin && local < m_end)
        return local - m_offset;
    const std::int64_t former = m_zone->offsetFor(local, UCAL_TZ_LOCAL_FORMER);
    const std::int64_t latter = m_zone->offsetFor(local, UCAL_TZ_LOCAL_LATTER);
    if (former > latter) {  // repeated
        const std::int64_t firstPass = local - former;
        const std::int64_t secondPass = local - latter;
        const bool isSecond =
            previous && static_cast<double>(firstPass) <= *previous && static_cast<double>(secondPass) > *previous;
        return isSecond ? secondPass : firstPass;
    }
    if (former < latter) {
        m_wasSkipped = true;
        m_beforeSkip = former;
        return local - former;
    }

    m_offset = former;
    const double utc = static_cast<double>(local - former) * 1000;
    icu::TimeZoneTransition change;
    m_begin = -kFarAway;
    m_end = kFarAway;
    if (m_zone->zone->getPreviousTransition(utc, true, change))
        m_begin = static_cast<std::int64_t>(change.getTime() / 1000) +
                  std::max(offsetOf(*change.getFrom()), offsetOf(*change.getTo()));
    if (m_zone->zone->getNextTransition(utc, false, change))
        m_end = static_cast<std::int64_t>(change.getTime() / 1000) +
                std::min(offsetOf(*change.getFrom()), offsetOf(*change.getTo()));
    return local - former;
}

}  // namespace plotix
