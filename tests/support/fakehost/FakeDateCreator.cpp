#include "tests/support/fakehost/FakeDateCreator.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace fakehost {
namespace {

using Range = std::pair<plotix::OptionalDate, plotix::OptionalDate>;

plotix::Date midnight(const QDate& day)
{
    return {static_cast<double>(QDateTime(day, QTime(0, 0), Qt::UTC).toSecsSinceEpoch())};
}

Range days(const QDate& first, const QDate& afterLast)
{
    return {midnight(first), midnight(afterLast)};
}

Range calendarRange(KTVQuickRange range, const plotix::Date& now)
{
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(now.seconds)), Qt::UTC);
    const QDate today = moment.date();
    const QDate monday = today.addDays(1 - today.dayOfWeek());
    const QDate month(today.year(), today.month(), 1), year(today.year(), 1, 1);
    const auto since = [&](const QDate& day) {
        const QDateTime start(day, moment.time(), Qt::UTC);
        return Range{plotix::Date{static_cast<double>(start.toSecsSinceEpoch())}, now};
    };
    switch (range) {
    case KTVQuickRange::Today: return days(today, today.addDays(1));
    case KTVQuickRange::Last24Hours: return {plotix::Date{now.seconds - 86'400}, now};
    case KTVQuickRange::Yesterday: return days(today.addDays(-1), today);
    case KTVQuickRange::ThisWeek: return days(monday, monday.addDays(7));
    case KTVQuickRange::LastWeek: return days(monday.addDays(-7), monday);
    case KTVQuickRange::Last7Days: return since(today.addDays(-7));
    case KTVQuickRange::ThisMonth: return days(month, month.addMonths(1));
    case KTVQuickRange::LastMonth: return days(month.addMonths(-1), month);
    case KTVQuickRange::Last30Days: return since(today.addDays(-30));
    case KTVQuickRange::ThisYear: return days(year, year.addYears(1));
    case KTVQuickRange::LastYear: return days(year.addYears(-1), year);
    case KTVQuickRange::Last12Months: return since(today.addMonths(-12));
    case KTVQuickRange::AllTime: break;
    }
    return {};
}

}  // namespace

void FakeDateCreator::dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const
{
    m_log->note(QStringLiteral("dateCreator.dateRange %1").arg(static_cast<int>(range)));
    const auto set = m_set.find(range);
    const Range answer = set != m_set.end() ? set->second : calendarRange(range, m_now);
    if (answer.first)
        start = answer.first;
    if (answer.second)
        end = answer.second;
}

}  // namespace fakehost
