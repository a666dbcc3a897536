#include "base/ReportableError.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/EditLimits.h"
#include "hostapp/cli/JsonWriter.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/cli/TerminalText.h"
#include "hostapp/document/ComputedRecords.h"
#include "hostapp/document/MemoryBudget.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <algorithm>
#include <limits>
#include <ostream>

/// Prints what a site holds. Values are in the archived units, so that conversion rounds nothing.
namespace plotix {

namespace {

struct InfoCommand {
    QString site;
    bool json = false;
};

std::string moment(const std::optional<double>& seconds)
{
    if (!seconds)
        return {};
    return hasCalendarText(*seconds) ? exactTime(*seconds) : exactNumber(*seconds) + " s";
}

/// What both output forms, text and JSON, print of an agent.
struct AgentInfo {
    struct Property {
        std::shared_ptr<SiteProperty> property;
        ColumnStatistics statistics;
        QString problem;  ///< why it cannot be computed
    };
    QString name;
    QString table;    ///< of somebody else's, that has its records; empty: they are the site's own
    QString problem;  ///< why that cannot be read
    std::size_t records = 0;
    std::optional<double> first, last;  // times
    std::vector<Property> properties;
};

ColumnStatistics statisticsOf(const RecordOverview::Column& column)
{
    ColumnStatistics statistics;
    double sum = 0;
    for (const RecordOverview::Summary& run : column.summaries) {
        if (run.valid == 0)
            continue;
        const bool isFirst = statistics.valid == 0;
        statistics.minimum = isFirst ? run.minimum : std::min(statistics.minimum, run.minimum);
        statistics.maximum = isFirst ? run.maximum : std::max(statistics.maximum, run.maximum);
        statistics.valid += run.valid;
        sum += run.sum;
    }
    if (statistics.valid > 0)
        statistics.average = sum / static_cast<double>(statistics.valid);
    return statistics;
}

void compute(const SiteDocument& document, RowId agent, AgentInfo::Property& info)
{
    const RowId id = info.property->description().id;
    if (const FormulaPlan plan = planProperty(*document.formulaDirectory(), id); plan.problem)
        info.problem = sentenceOf(*plan.problem);
    else if (const auto refusal = refusalToReadColumns(*document.records(), {agent, {id}, {}, {}}, memoryBudget()))
        info.problem = *refusal;
    else
        info.statistics = document.records()->statistics(agent, id);
}

std::vector<AgentInfo> readAgents(const SiteDocument& document)
{
    RecordStore& store = *document.records();
    std::vector<AgentInfo> agents;
    for (const auto& agent : document.agents()) {
        AgentInfo& info = agents.emplace_back();
        info.name = agent->name();
        info.table = document.attachedTable(*agent);
        std::vector<RowId> ids;
        for (const auto& property : agent->siteProperties())
            ids.push_back(property->description().id);
        // All properties at once: thousands of them, one by one, would each go through every record.
        RecordOverview overview;
        try {
            overview = store.overview(agent->id(), ids);
            info.records = overview.records();
            if (const std::optional<RecordExtent> extent = store.extent(agent->id())) {
                info.first = extent->first;
                info.last = extent->last;
            }
        } catch (const ReportableError& error) {  // the other agents are there all the same
            if (info.table.isEmpty())
                throw;
            info.problem = error.message();
            overview.columns.resize(ids.size());
        }
        for (std::size_t index = 0; index < ids.size(); ++index)
            info.properties.push_back({agent->siteProperties()[index], statisticsOf(overview.columns[index]), {}});
        for (AgentInfo::Property& each : info.properties)
            if (each.property->isComputed())
                compute(document, agent->id(), each);
    }
    return agents;
}

void writeTimeText(JsonWriter& json, const char* key, const std::optional<double>& seconds)
{
    if (seconds)
        json.text(key, QString::fromStdString(moment(seconds)));
    else
        json.absent(key);
}

void writeLimits(JsonWriter& json, const SiteDocument& document, qint64 property)
{
    json.beginArray("limits");
    for (const SiteLimit& limit : document.limits()) {
        if (limit.property != property)
            continue;
        json.beginObject();
        json.text("name", limit.name);
        json.text("side", limit.side == KTVLimit::Side::Above ? QStringLiteral("above") : QStringLiteral("below"));
        json.number("value", limit.value);
        json.text("unit", limit.unit);
        json.text("severity", QString::fromLatin1(severityWord(limit.severity)));
        json.endObject();
    }
    json.endArray();
}

void writeProperty(JsonWriter& json, const SiteDocument& document, const AgentInfo::Property& info)
{
    const SiteProperty& property = *info.property;
    const ColumnStatistics& statistics = info.statistics;
    json.beginObject();
    json.text("name", property.name());
    json.text("propertyName", property.propertyName());
    json.text("unit", property.description().archivedUnit);
    if (property.isComputed())
        json.text("formula", property.description().formula->text);
    if (!info.problem.isEmpty())
        json.text("problem", info.problem);
    json.count("valid", statistics.valid);
    // A property without a single value has no extremes.
    const double none = std::numeric_limits<double>::quiet_NaN();
    json.number("minimum", statistics.valid > 0 ? statistics.minimum : none);
    json.number("maximum", statistics.valid > 0 ? statistics.maximum : none);
    json.number("average", statistics.valid > 0 ? statistics.average : none);
    writeLimits(json, document, property.description().id);
    json.endObject();
}

void writeJson(std::ostream& out, const SiteDocument& document, const std::vector<AgentInfo>& agents)
{
    JsonWriter json(out);
    json.beginObject();
    json.text("site", document.siteName());
    json.beginArray("agents");
    for (const AgentInfo& agent : agents) {
        json.beginObject();
        json.text("name", agent.name);
        if (!agent.table.isEmpty())
            json.text("table", agent.table);
        if (!agent.problem.isEmpty())
            json.text("problem", agent.problem);
        json.count("records", agent.records);
        writeTimeText(json, "first", agent.first);
        writeTimeText(json, "last", agent.last);
        json.beginArray("properties");
        for (const AgentInfo::Property& property : agent.properties)
            writeProperty(json, document, property);
        json.endArray();
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void writeText(std::ostream& out, const SiteDocument& document, const std::vector<AgentInfo>& agents)
{
    out << document.siteName().toStdString();
    if (!document.siteLocation().isEmpty())
        out << ", " << document.siteLocation().toStdString();
    out << '\n';
    for (const AgentInfo& agent : agents) {
        out << '\n' << agent.name.toStdString() << ": " << countText(agent.records, "record", "records");
        if (agent.records > 0)
            out << " from " << moment(agent.first) << " to " << moment(agent.last);
        out << '\n';
        if (!agent.table.isEmpty())
            out << "  the table " << agent.table.toStdString() << '\n';
        if (!agent.problem.isEmpty())
            out << "  cannot be read: " << agent.problem.toStdString() << '\n';
        for (const auto& [property, statistics, problem] : agent.properties) {
            const std::string unit = property->description().archivedUnit.toStdString();
            out << "  " << property->name().toStdString() << (unit.empty() ? "" : " (" + unit + ")") << ", "
                << property->propertyName().toStdString() << ": " << statistics.valid << " valid";
            if (statistics.valid > 0)
                out << ", " << exactNumber(statistics.minimum) << " to " << exactNumber(statistics.maximum)
                    << ", average " << exactNumber(statistics.average);
            out << '\n';
            if (property->isComputed())
                out << "    = " << property->description().formula->text.toStdString() << '\n';
            if (!problem.isEmpty())
                out << "    cannot be computed: " << problem.toStdString() << '\n';
            for (const SiteLimit& limit : document.limits())
                if (limit.property == property->description().id)
                    out << "    limit “" << limit.name.toStdString() << "”: " << severityWord(limit.severity) << ' '
                        << limitText(limit).toStdString() << '\n';
        }
    }
}

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

}  // namespace

Command addInfo(CLI::App& program)
{
    const auto command = std::make_shared<InfoCommand>();
    CLI::App* info = program.add_subcommand("info", "Say what a site holds: agents, properties, counts and extremes");
    addSite(info, command->site);
    info->add_flag("--json", command->json, "Print it as JSON, numbers in full precision");
    info->footer("Example:\n  plotix info nyc.plotix --json");
    return {info, Command::Makes::Text, [command](CommandContext context) { return runCommand(*command, context); }};
}

}  // namespace plotix
