#include "hostapp/window/moments/MomentEdit.h"

#include "base/WholeDay.h"

#include <QtWidgets/QCalendarWidget>

#include <cmath>

namespace plotix {

namespace {

const QTime kEndOfDay(23, 59, 59, 999);

}  // namespace

MomentEdit::MomentEdit(double moment, Day day, QWidget* parent) : QDateTimeEdit(parent), m_day(day), m_moment(moment)
{
    // What clocks anywhere show, the skipped hours of the user's zone included.
    setTimeSpec(Qt::UTC);
    setCalendarPopup(true);
    if (m_day != Day::SameTime)
        for (const auto picked : {&QCalendarWidget::clicked, &QCalendarWidget::activated})
            connect(calendarWidget(), picked, this, [this](QDate date) {
                setTime(m_day == Day::End ? kEndOfDay : QTime(0, 0));
                setDate(date);
            });
    setMoment(moment);
}

QDateTime MomentEdit::clockTime(double seconds) const
{
    const auto whole = static_cast<qint64>(std::floor(seconds));
    const QDateTime time =
        m_zone.isValid() ? QDateTime::fromSecsSinceEpoch(whole, m_zone) : QDateTime::fromSecsSinceEpoch(whole);
    return {time.date(), time.time(), Qt::UTC};
}

double MomentEdit::moment() const
{
    const QDateTime shown = dateTime();
    if (shown == clockTime(m_moment))
        return m_moment;
    if (m_day == Day::End && shown.time() == kEndOfDay)
        if (const OptionalDate last = lastMomentOf(shown.date(), m_zone))
            return last->seconds;
    const QDateTime time =
        m_zone.isValid() ? QDateTime(shown.date(), shown.time(), m_zone) : QDateTime(shown.date(), shown.time());
    return static_cast<double>(time.toMSecsSinceEpoch()) / 1000;
}

void MomentEdit::setMoment(double seconds)
{
    m_moment = seconds;
    setDateTime(clockTime(seconds));
}

void MomentEdit::sayBy(const QTimeZone& zone)
{
    const double kept = moment();
    m_zone = zone;
    setMoment(kept);
}

}  // namespace plotix
