#include "hostapp/cli/SiteLookup.h"

#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"

#include "base/ReportableError.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/core/QuickRanges.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

bool isSameName(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

QString listed(const QStringList& names)
{
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

QStringList agentNames(const SiteDocument& document)
{
    QStringList names;
    for (const auto& agent : document.agents())
        names << agent->name();
    return names;
}

std::shared_ptr<SiteProperty> propertyNamed(const SiteAgent& agent, const QString& name)
{
    for (const auto& property : agent.siteProperties())
        if (property->propertyName() == name || property->name() == name)
            return property;
    for (const auto& property : agent.siteProperties())
        if (isSameName(property->propertyName(), name) || isSameName(property->name(), name))
            return property;
    QStringList keys;
    for (const auto& property : agent.siteProperties())
        keys << property->propertyName();
    throw ReportableError(QStringLiteral("%1 has no property “%2”; it has: %3").arg(agent.name(), name, listed(keys)));
}

}  // namespace

std::shared_ptr<SiteDocument> openSite(const QString& path)
{
    if (isServerAddress(path))
        return SiteDocument::open(deskFileOf(path));
    if (!QFileInfo::exists(path))
        throw ReportableError(QStringLiteral("there is no site %1; plotix import makes one").arg(path));
    return SiteDocument::open(path);
}

void requireSiteName(const QString& path)
{
    if (!QFileInfo::exists(path) && !path.endsWith(QLatin1String(".plotix"), Qt::CaseInsensitive))
        throw ReportableError(
            QStringLiteral("there is no site %1, and the name of a new one must end in .plotix").arg(path));
}

std::shared_ptr<SiteAgent> agentOf(const SiteDocument& document, const QString& name)
{
    const auto& agents = document.agents();
    if (name.isEmpty() && agents.size() == 1)
        return agents.front();
    if (name.isEmpty())
        throw ReportableError(agents.empty()
                                  ? QStringLiteral("%1 has no agents yet; plotix import makes one").arg(document.path())
                                  : QStringLiteral("%1 has several agents; choose one with --agent: %2")
                                        .arg(document.path(), listed(agentNames(document))));
    for (const auto& agent : agents)
        if (agent->name() == name)
            return agent;
    for (const auto& agent : agents)
        if (isSameName(agent->name(), name))
            return agent;
    throw ReportableError(
        QStringLiteral("%1 has no agent “%2”; it has: %3").arg(document.path(), name, listed(agentNames(document))));
}

std::vector<std::shared_ptr<SiteProperty>> propertiesOf(const SiteAgent& agent, const QStringList& names)
{
    if (names.isEmpty())
        return agent.siteProperties();
    std::vector<std::shared_ptr<SiteProperty>> properties;
    for (const QString& name : names) {
        auto property = propertyNamed(agent, name);
        if (std::find(properties.begin(), properties.end(), property) == properties.end())
            properties.push_back(std::move(property));
    }
    return properties;
}

TimeSpan timeSpanOf(const RecordChoice& choice, const std::optional<RecordExtent>& extent, const QTimeZone& zone)
{
    TimeSpan span{choice.from, choice.to};
    if (zone.isValid() && span.from)
        span.from = timeFromArgument(choice.fromWord, zone);
    if (zone.isValid() && span.to)
        span.to = endFromArgument(choice.toWord, zone);
    if (choice.range.isEmpty())
        return span;
    QuickRanges::Setting setting;
    setting.zone = zone;
    setting.allTime = [&extent]() -> std::optional<std::pair<Date, Date>> {
        if (!extent)
            return {};
        return std::pair(Date{extent->first}, Date{extent->last});
    };
    OptionalDate from, to;
    QuickRanges(setting).dateRange(*quickRangeNamed(choice.range), from, to);
    if (from)
        span.from = from->seconds;
    if (to)
        span.to = to->seconds;
    return span;
}

}  // namespace plotix
