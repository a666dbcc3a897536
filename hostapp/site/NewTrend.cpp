#include "hostapp/site/NewTrend.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <tuple>

namespace plotix {

namespace {

constexpr double kRecordedSpan = 3600;  // seconds; it is not moved, so it has room for a while
constexpr double kWatchedSpan = 600;    // seconds; short, so that the first minute is visible

class NewTrend {
    Q_DECLARE_TR_FUNCTIONS(NewTrend)
};

bool sharesAnAxisLive(const KTVProperty& property)
{
    return property.unit() == QLatin1String("%") || property.name() == QLatin1String("Load 1 Minute");
}

KTVPropertyList those(const KTVPropertyList& properties, bool (*wanted)(const KTVProperty&))
{
    KTVPropertyList chosen;
    for (const KTVPropertyPtr& property : properties)
        if (wanted(*property))
            chosen.push_back(property);
    return chosen;
}

KTVPropertyList liveProperties(const KTVPropertyList& properties)
{
    const KTVPropertyList drawn = those(properties, isDrawn);
    const KTVPropertyList together = those(drawn, sharesAnAxisLive);
    return together.empty() ? drawn : together;
}

}  // namespace

TrendPlan planTrend(TrendOccasion occasion, const QString& agentName, const KTVPropertyList& properties,
                    const TrendSpan& records, Date now, const QTimeZone& zone, const std::vector<ValueExtent>& extents)
{
    const auto lastDays = rangeForNewTrend(records ? std::optional(records->second.seconds) : std::nullopt, now, zone);
    switch (occasion) {
    case TrendOccasion::Chosen: break;
    case TrendOccasion::Imported:
    case TrendOccasion::Selected: {
        const auto [from, to] = records.value_or(lastDays);
        const KTVPropertyList drawn = those(properties, isDrawn);
        return {occasion == TrendOccasion::Selected ? drawn : worthShowing(drawn, extents), from, to, agentName};
    }
    case TrendOccasion::Recorded: return {liveProperties(properties), now, {now.seconds + kRecordedSpan}, agentName};
    case TrendOccasion::Watched: {
        constexpr bool kIsFollowed = true;
        return {liveProperties(properties), {now.seconds - kWatchedSpan}, now, agentName, kIsFollowed};
    }
    }
    return {properties, lastDays.first, lastDays.second, titleForProperties(properties)};
}

TrendPlan planFirstTrend(TrendOccasion occasion, const SiteAgent& agent, const TrendSpan& records,
                         const std::vector<ValueExtent>& extents)
{
    return planTrend(occasion, agent.name(), agent.properties().objects(), records, currentDate(),
                     QTimeZone::systemTimeZone(), extents);
}

TrendPlan planChosenTrend(const KTVPropertyList& properties, std::optional<double> lastRecord)
{
    const auto records = lastRecord ? TrendSpan(std::pair(Date{*lastRecord}, Date{*lastRecord})) : std::nullopt;
    return planTrend(TrendOccasion::Chosen, {}, properties, records, currentDate(), QTimeZone::systemTimeZone());
}

TrendPlan planBeside(TrendPlan plan, const TrendSpan& shown, const QVariantMap& reading, const TrendSpan& records)
{
    const bool hasRecordsThen = shown && records && records->first.seconds <= shown->second.seconds &&
                                records->second.seconds >= shown->first.seconds;
    if (hasRecordsThen)
        std::tie(plan.from, plan.to) = *shown;
    const QString clock = QStringLiteral("clock");  // the key of this choice of a trend's reading
    if (reading.contains(clock))
        plan.reading.insert(clock, reading.value(clock));
    return plan;
}

TrendRequest requestOf(std::shared_ptr<SiteDocument> document, std::shared_ptr<SiteAgent> agent, const TrendPlan& plan)
{
    return {std::move(document), std::move(agent), plan.properties, plan.from, plan.to, plan.title};
}

bool isDrawn(const KTVProperty& property)
{
    return property.visible() && property.type() != kPropertyTypeNeverPlotted;
}

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
