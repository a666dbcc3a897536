#include "hostapp/site/NewTrend.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

namespace plotix {

namespace {
class NewTrend {
    Q_DECLARE_TR_FUNCTIONS(NewTrend)
};
}  // namespace

std::pair<Date, Date> rangeForNewTrend(std::optional<double> lastRecord, Date now, const QTimeZone& zone)
{
    const auto moment = [&zone](double seconds) {
        return QDateTime::fromMSecsSinceEpoch(qRound64(seconds * 1000), zone);
    };
    const QDateTime weekAgo = moment(now.seconds).addDays(-7);
    if (!lastRecord || *lastRecord >= static_cast<double>(weekAgo.toMSecsSinceEpoch()) / 1000)
        return {Date{static_cast<double>(weekAgo.toMSecsSinceEpoch()) / 1000}, now};
    const QDate lastDay = moment(*lastRecord).date();
    return {Date{static_cast<double>(lastDay.addDays(-6).startOfDay(zone).toSecsSinceEpoch())},
            Date{static_cast<double>(lastDay.addDays(1).startOfDay(zone).toSecsSinceEpoch())}};
}

QString titleForProperties(const KTVPropertyList& properties)
{
    switch (properties.size()) {
    case 0: return NewTrend::tr("New Trend");
    case 1: return properties[0]->name();
    case 2: return NewTrend::tr("%1 and %2").arg(properties[0]->name(), properties[1]->name());
    default:
        return NewTrend::tr("%1, %2 and %3 more")
            .arg(properties[0]->name(), properties[1]->name())
            .arg(properties.size() - 2);
    }
}

}  // namespace plotix
