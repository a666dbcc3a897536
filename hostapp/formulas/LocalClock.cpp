#include "hostapp/formulas/LocalClock.h"

#include <QtCore/QDateTime>

#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kDay = 86400;
constexpr double kFar = 1e11;  // seconds: no calendar has changes behind it

}  // namespace

double LocalClock::offsetAt(double time)
{
    if (time >= m_begin && time < m_end)
        return m_offset;
    if (!std::isfinite(time) || std::abs(time) > kFar)
        return 0;
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(time)), Qt::UTC);
    m_offset = m_zone.offsetFromUtc(moment);
    m_begin = std::floor(time);
    m_end = m_begin + 1;
    if (!m_zone.hasTransitions()) {
        m_begin = -kFar;
        m_end = kFar;
        return m_offset;
    }
    const QTimeZone::OffsetData before = m_zone.previousTransition(moment.addSecs(1));
    const QTimeZone::OffsetData after = m_zone.nextTransition(moment);
    m_begin = before.atUtc.isValid() ? static_cast<double>(before.atUtc.toSecsSinceEpoch()) : -kFar;
    m_end = after.atUtc.isValid() ? static_cast<double>(after.atUtc.toSecsSinceEpoch()) : kFar;
    return m_offset;
}

double LocalClock::dayOf(double time)
{
    return std::floor((time + offsetAt(time)) / kDay);
}

double LocalClock::timeAt(double local)
{
    const double guess = local - offsetAt(local);
    return local - offsetAt(guess);
}

double LocalClock::beginOf(double day)
{
    const double guess = timeAt(day * kDay);
    // Within an hour that is skipped the guess lies before the change, hence in the day before.
    return dayOf(guess) == day ? guess : m_end;
}

double LocalClock::daysEarlier(double time, double days)
{
    return timeAt(time + offsetAt(time) - days * kDay);
}

}  // namespace plotix
