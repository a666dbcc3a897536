#include "hostapp/site/TrendZone.h"

#include "base/ZoneNames.h"
#include "hostapp/site/PlugInOperations.h"
#include "plugins/PlotixPlugIn/host/KTVSiteClock.h"

namespace plotix {

QTimeZone zoneOfTrend(const KTVPlugIn* trend)
{
    const QVariantMap clock = reading(trend).value_or(QVariantMap()).value(QStringLiteral("clock")).toMap();
    const QString zone = clock.value(QStringLiteral("zone")).toString();
    if (zone != QLatin1String("site"))
        return zoneNamed(zone).value_or(QTimeZone());
    const auto* zoned = dynamic_cast<const KTVZonedAgent*>(trend->agent().get());
    const KTVSiteClock* siteClock = zoned ? zoned->siteClock() : nullptr;
    return siteClock ? siteClock->zone() : QTimeZone();
}

}  // namespace plotix
