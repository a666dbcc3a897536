#include "base/WholeDay.h"

#include <QtCore/QDateTime>

#include <cmath>
#include <limits>

namespace plotix {

OptionalDate lastMomentOf(const QDate& day)
{
    const QDateTime next = day.addDays(1).startOfDay();
    if (!day.isValid() || !next.isValid())
        return std::nullopt;
    const double seconds = static_cast<double>(next.toMSecsSinceEpoch()) / 1000;
    return Date{std::nextafter(seconds, -std::numeric_limits<double>::infinity())};
}

}  // namespace plotix
