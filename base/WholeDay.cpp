#include "base/WholeDay.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

#include <cmath>
#include <limits>

namespace plotix {

OptionalDate lastMomentOf(const QDate& day)
{
    return lastMomentOf(day, QTimeZone());
}

OptionalDate lastMomentOf(const QDate& day, const QTimeZone& zone)
{
    const QDateTime next = zone.isValid() ? day.addDays(1).startOfDay(zone) : day.addDays(1).startOfDay();
    if (!day.isValid() || !next.isValid())
        return std::nullopt;
    const double seconds = static_cast<double>(next.toMSecsSinceEpoch()) / 1000;
    return Date{std::nextafter(seconds, -std::numeric_limits<double>::infinity())};
}

}  // namespace plotix
