#include "hostapp/exchange/ExportClock.h"

#include "hostapp/exchange/ExactText.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace plotix {

namespace {

constexpr double kQuarter = 900;  // seconds; no zone changes its clocks in between
constexpr double kCalendarLimit = 3e11;

}  // namespace

void setClock(ExportForm& form, const QTimeZone& zone)
{
    form.clock = zone == QTimeZone::utc() ? ExportForm::Clock::Utc : ExportForm::Clock::Local;
    form.zone = zone;
}

int ExportClock::offset(double seconds)
{
    if (m_clock == ExportForm::Clock::Utc || !(std::abs(seconds) < kCalendarLimit))
        return 0;
    const auto quarter = static_cast<std::int64_t>(std::floor(seconds / kQuarter));
    if (!m_isKnown || quarter != m_quarter) {
        const auto whole = static_cast<qint64>(std::floor(seconds));
        m_offset = m_zone.isValid() ? m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(whole, Qt::UTC))
                                    : QDateTime::fromSecsSinceEpoch(whole).offsetFromUtc();
        m_quarter = quarter;
        m_isKnown = true;
    }
    return m_offset;
}

std::string ExportClock::text(double seconds)
{
    std::string utc = exactTime(seconds);
    const int east = offset(seconds);
    const double local = std::floor(seconds) + east;
    // An offset with seconds, as clocks had before there were zones, cannot be written: such a moment stays in UTC.
    if (m_clock == ExportForm::Clock::Utc || east % 60 != 0 || !hasCalendarText(local))
        return utc;
    const std::size_t point = utc.find('.');
    std::string written = exactTime(local);
    written.pop_back();  // the Z
    if (point != std::string::npos)
        written += utc.substr(point, utc.size() - point - 1);
    const int minutes = std::abs(east) / 60;
    char distance[16];
    std::snprintf(distance, sizeof distance, "%c%02d:%02d", east < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return written + distance;
}

std::string ExportClock::name() const
{
    if (m_clock == ExportForm::Clock::Utc)
        return "time (UTC)";
    return "time (" + (m_zone.isValid() ? m_zone.id() : QTimeZone::systemTimeZoneId()).toStdString() + ")";
}

QString cellName(const QString& name, bool guarded)
{
    const bool isLikeFormula = !name.isEmpty() && QStringLiteral("=+-@\t\r").contains(name.front());
    return guarded && isLikeFormula ? QLatin1Char('\'') + name : name;
}

}  // namespace plotix
