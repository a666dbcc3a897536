#include "base/ReportableError.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/ImportWords.h"
#include "hostapp/cli/JsonText.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/exchange/ExactText.h"
#include "hostapp/exchange/formats/FileExchange.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Importing: the file's records first, in one transaction, then the agent's first trend view.
namespace plotix {

namespace {

void addFirstTrend(const ImportSummary& summary, CommandServices& services)
{
    const std::shared_ptr<SiteDocument> document = openSite(summary.site);
    TrendRequest trend{document, agentOf(*document, summary.agent), {}, {}, {}, summary.agent};
    for (const auto& property : trend.agent->siteProperties())
        trend.properties.push_back(property);
    trend.from = Date{*summary.first};
    trend.to = Date{*summary.last};
    services.storeTrend(trend);
}

std::string jsonList(const QStringList& texts)
{
    std::string list;
    for (const QString& text : texts)
        list += (list.empty() ? "" : ", ") + jsonText(text);
    return "[" + list + "]";
}

std::string jsonMoment(const std::optional<double>& seconds)
{
    if (!seconds)
        return "null";
    return hasCalendarText(*seconds) ? '"' + exactTime(*seconds) + '"' : jsonNumber(*seconds);
}

QStringList printedTexts(const std::vector<ImportFinding>& findings)
{
    QStringList texts;
    for (const ImportFinding& finding : findings)
        texts << printedText(finding);
    return texts;
}

void writeJson(std::ostream& out, const ImportSummary& summary)
{
    out << "{\n  \"file\": " << jsonText(summary.file) << ",\n  \"site\": " << jsonText(summary.site)
        << ",\n  \"agent\": " << jsonText(summary.agent) << ",\n  \"timeColumn\": " << jsonText(summary.timeColumn)
        << ",\n  \"rows\": " << summary.rows << ",\n  \"records\": " << summary.records
        << ",\n  \"otherRows\": " << summary.otherRows << ",\n  \"badRows\": " << summary.badRows
        << ",\n  \"unorderedTimes\": " << summary.unorderedTimes << ",\n  \"repeatedTimes\": " << summary.repeatedTimes
        << ",\n  \"first\": " << jsonMoment(summary.first) << ",\n  \"last\": " << jsonMoment(summary.last)
        << ",\n  \"columns\": [";
    const char* separator = "\n";
    for (const ImportSummary::Column& column : summary.columns) {
        out << separator << "    {\"header\": " << jsonText(column.header) << ", \"name\": " << jsonText(column.name)
            << ", \"propertyName\": " << jsonText(column.propertyName) << ", \"unit\": " << jsonText(column.unit)
            << ", \"valid\": " << column.valid << '}';
        separator = ",\n";
    }
    out << "\n  ],\n  \"leftOut\": " << jsonList(summary.leftOut)
        << ",\n  \"notes\": " << jsonList(printedTexts(summary.notes)) << "\n}\n";
}

ImportSummary import(const ImportCommand& command, CommandContext context)
{
    const QString name = QFileInfo(command.file).fileName();
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Importing %1").arg(name));
    try {
        return importFile(command.file, command.site, command.options, [&](qint64 done, qint64 total) {
            return progress(total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0.0);
        });
    } catch (const ImportFailure& failure) {
        throw ReportableError(QStringLiteral("%1: %2").arg(name, printedText(failure.finding())));
    } catch (const ImportCancelled&) {
        throw ReportableError(QStringLiteral("%1: cancelled; nothing was stored").arg(name));
    }
}

}  // namespace

int runCommand(const ImportCommand& command, CommandContext context)
{
    const Interruption interruption;
    const ImportSummary summary = import(command, context);
    // First what has been done: should the trend view fail, the records are stored all the same.
    if (command.json)
        writeJson(context.streams.output, summary);
    else
        context.streams.output << printedText(summary).toStdString();
    if (summary.firstImport)
        addFirstTrend(summary, context.services);
    return kCommandDone;
}

}  // namespace plotix
