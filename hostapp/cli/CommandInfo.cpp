#include "hostapp/cli/Commands.h"
#include "hostapp/cli/ExactText.h"
#include "hostapp/cli/SiteLookup.h"

#include <ostream>

/// What a site holds. Numbers are in the units the records are archived in, so that nothing is rounded on the way.
namespace plotix {

namespace {

std::string moment(const std::optional<double>& seconds)
{
    if (!seconds)
        return {};
    return hasCalendarText(*seconds) ? exactTime(*seconds) : exactNumber(*seconds) + " s";
}

std::string jsonMoment(const std::optional<double>& seconds)
{
    return seconds ? jsonText(QString::fromStdString(moment(seconds))) : "null";
}

/// What both forms print of an agent, with the text between and around left to them.
struct AgentInfo {
    struct Property {
        std::shared_ptr<SiteProperty> property;
        ColumnStatistics statistics;
    };
    QString name;
    std::size_t records = 0;
    std::optional<double> first, last;  // times
    std::vector<Property> properties;
};

std::vector<AgentInfo> readAgents(const SiteDocument& document)
{
    RecordStore& store = *document.records();
    std::vector<AgentInfo> agents;
    for (const auto& agent : document.agents()) {
        AgentInfo& info = agents.emplace_back();
        info.name = agent->name();
        info.records = store.overview(agent->id(), {}).records();
        if (const std::optional<RecordExtent> extent = store.extent(agent->id())) {
            info.first = extent->first;
            info.last = extent->last;
        }
        for (const auto& property : agent->siteProperties())
            info.properties.push_back({property, store.statistics(agent->id(), property->description().id)});
    }
    return agents;
}

/// A property without a single value has no extremes.
std::string jsonStatistic(const ColumnStatistics& statistics, double value)
{
    return statistics.valid == 0 ? "null" : jsonNumber(value);
}

void writeJson(std::ostream& out, const SiteDocument& document, const std::vector<AgentInfo>& agents)
{
    out << "{\n  \"site\": " << jsonText(document.siteName()) << ",\n  \"agents\": [";
    const char* agentSeparator = "\n";
    for (const AgentInfo& agent : agents) {
        out << agentSeparator << "    {\n      \"name\": " << jsonText(agent.name)
            << ",\n      \"records\": " << agent.records << ",\n      \"first\": " << jsonMoment(agent.first)
            << ",\n      \"last\": " << jsonMoment(agent.last) << ",\n      \"properties\": [";
        const char* separator = "\n";
        for (const auto& [property, statistics] : agent.properties) {
            out << separator << "        {\"name\": " << jsonText(property->name())
                << ", \"propertyName\": " << jsonText(property->propertyName())
                << ", \"unit\": " << jsonText(property->description().archivedUnit)
                << ", \"valid\": " << statistics.valid
                << ", \"minimum\": " << jsonStatistic(statistics, statistics.minimum)
                << ", \"maximum\": " << jsonStatistic(statistics, statistics.maximum)
                << ", \"average\": " << jsonStatistic(statistics, statistics.average) << '}';
            separator = ",\n";
        }
        out << "\n      ]\n    }";
        agentSeparator = ",\n";
    }
    out << "\n  ]\n}\n";
}

void writeText(std::ostream& out, const SiteDocument& document, const std::vector<AgentInfo>& agents)
{
    out << document.siteName().toStdString();
    if (!document.siteLocation().isEmpty())
        out << ", " << document.siteLocation().toStdString();
    out << '\n';
    for (const AgentInfo& agent : agents) {
        out << '\n' << agent.name.toStdString() << ": " << agent.records << " records";
        if (agent.records > 0)
            out << " from " << moment(agent.first) << " to " << moment(agent.last);
        out << '\n';
        for (const auto& [property, statistics] : agent.properties) {
            const std::string unit = property->description().archivedUnit.toStdString();
            out << "  " << property->name().toStdString() << (unit.empty() ? "" : " (" + unit + ")") << ", "
                << property->propertyName().toStdString() << ": " << statistics.valid << " valid";
            if (statistics.valid > 0)
                out << ", " << exactNumber(statistics.minimum) << " to " << exactNumber(statistics.maximum)
                    << ", average " << exactNumber(statistics.average);
            out << '\n';
        }
    }
}

}  // namespace

int runCommand(const InfoCommand& command, CommandContext context)
{
    const std::shared_ptr<SiteDocument> document = openSite(command.site);
    const std::vector<AgentInfo> agents = readAgents(*document);
    if (command.json)
        writeJson(context.streams.output, *document, agents);
    else
        writeText(context.streams.output, *document, agents);
    return kCommandDone;
}

}  // namespace plotix
