#include "hostapp/core/QuickRanges.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace plotix {

namespace {

constexpr double kDaySeconds = 86400;  // Last24Hours means seconds, not a calendar day

/// Calendar arithmetic from one moment in one zone.
class Calendar {
public:
    Calendar(Date now, const QTimeZone& zone)
        : m_now(now),
          m_zone(zone),
          m_local(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(now.seconds * 1000)), zone))
    {
    }

    QDate today() const { return m_local.date(); }

    /// The first moment of a day, also where its midnight is skipped.
    Date startOf(const QDate& day) const
    {
        return {static_cast<double>(day.startOfDay(m_zone).toMSecsSinceEpoch()) / 1000};
    }

    /// The present time of day on another day; a time that a clock change skips becomes the moment of the change.
    Date sameTimeOn(const QDate& day) const
    {
        const QDateTime moment(day, m_local.time(), m_zone);
        const double fraction = m_now.seconds * 1000 - std::floor(m_now.seconds * 1000);
        return {(static_cast<double>(moment.toMSecsSinceEpoch()) + fraction) / 1000};
    }

private:
    Date m_now;
    QTimeZone m_zone;
    QDateTime m_local;
};

QDate startOfWeek(const QDate& day, Qt::DayOfWeek firstDay)
{
    return day.addDays(-((day.dayOfWeek() - firstDay + 7) % 7));
}

QDate startOfMonth(const QDate& day)
{
    return QDate(day.year(), day.month(), 1);
}

}  // namespace

QuickRanges::QuickRanges() : QuickRanges(Setting{}) {}

QuickRanges::QuickRanges(Setting setting) : m_setting(std::move(setting)) {}

void QuickRanges::dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const
{
    dateRangeIn(m_setting.zone.isValid() ? m_setting.zone : QTimeZone::systemTimeZone(), range, start, end);
}

void QuickRanges::dateRangeIn(const QTimeZone& zone, KTVQuickRange range, OptionalDate& start, OptionalDate& end) const
{
    const Date now = m_setting.clock ? m_setting.clock() : currentDate();
    const Calendar calendar(now, zone);
    const QDate today = calendar.today();
    const QDate week = startOfWeek(today, m_setting.locale.firstDayOfWeek());
    const QDate month = startOfMonth(today);
    const QDate year(today.year(), 1, 1);
    const auto days = [&](const QDate& first, const QDate& afterLast) {
        start = calendar.startOf(first);
        end = calendar.startOf(afterLast);
    };
    const auto untilNow = [&](Date first) {
        start = first;
        end = now;
    };
    switch (range) {
    case KTVQuickRange::Today: return days(today, today.addDays(1));
    case KTVQuickRange::Last24Hours: return untilNow({now.seconds - kDaySeconds});
    case KTVQuickRange::Yesterday: return days(today.addDays(-1), today);
    case KTVQuickRange::ThisWeek: return days(week, week.addDays(7));
    case KTVQuickRange::LastWeek: return days(week.addDays(-7), week);
    case KTVQuickRange::Last7Days: return untilNow(calendar.sameTimeOn(today.addDays(-7)));
    case KTVQuickRange::ThisMonth: return days(month, month.addMonths(1));
    case KTVQuickRange::LastMonth: return days(month.addMonths(-1), month);
    case KTVQuickRange::Last30Days: return untilNow(calendar.sameTimeOn(today.addDays(-30)));
    case KTVQuickRange::ThisYear: return days(year, year.addYears(1));
    case KTVQuickRange::LastYear: return days(year.addYears(-1), year);
    case KTVQuickRange::Last12Months: return untilNow(calendar.sameTimeOn(today.addMonths(-12)));
    case KTVQuickRange::AllTime:
        if (const auto extent = m_setting.allTime ? m_setting.allTime() : std::nullopt) {
            start = extent->first;
            end = extent->second;
        }
    }
}

QString quickRangeName(KTVQuickRange range)
{
    return QString::fromLatin1(quickRange(range).identifier);
}

std::optional<KTVQuickRange> quickRangeNamed(const QString& name)
{
    for (const QuickRange& row : kQuickRanges)
        if (name.compare(QLatin1String(row.identifier), Qt::CaseInsensitive) == 0)
            return row.range;
    return std::nullopt;
}

QString quickRangeTitle(KTVQuickRange range)
{
    return QString::fromLatin1(quickRange(range).title);
}

}  // namespace plotix
