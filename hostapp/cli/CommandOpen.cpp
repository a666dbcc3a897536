#include "base/ReportableError.h"
#include "base/StopRequest.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/CommandProgressBar.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/RecordChoice.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/core/QuickRanges.h"
#include "hostapp/demo/DemonstrationSite.h"
#include "hostapp/demo/DemonstrationTrends.h"

#include <QtCore/QFileInfo>

#include <ostream>

/// Opening: the site asked for, or the demonstration site, which is made on first use and is then always up to date.
/// Without a display the demonstration is drawn into two files instead, so that a newcomer sees something either way.
namespace plotix {

namespace {

struct OpenCommand {
    QString site;               ///< empty: the demonstration site
    QString screenshot;         ///< empty: a window on the screen
    std::optional<QSize> size;  ///< of the window in the picture
};

const QString kDemonstrationPng = QStringLiteral("plotix-demonstration.png");
const QString kDemonstrationPdf = QStringLiteral("plotix-demonstration.pdf");

TrendRequest suggestedTrend(const std::shared_ptr<SiteDocument>& document, const SuggestedTrend& suggestion)
{
    const std::shared_ptr<SiteAgent> agent = agentOf(*document, QLatin1String(kStationAgentName));
    TrendRequest trend{document, agent, {}, {}, {}, suggestion.title};
    for (const auto& property : propertiesOf(*agent, suggestion.propertyNames))
        trend.properties.push_back(property);
    RecordChoice choice;
    choice.range = quickRangeName(suggestion.range);
    const TimeSpan span = timeSpanOf(choice, document->records()->extent(agent->id()));
    if (span.from)
        trend.from = Date{*span.from};
    if (span.to)
        trend.to = Date{*span.to};
    return trend;
}

void addSuggestedTrends(const QString& path, CommandServices& services)
{
    const std::shared_ptr<SiteDocument> document = SiteDocument::open(path);
    document->setSite(document->siteName(), QStringLiteral("48° N, 10° E (simulated)"));
    for (const SuggestedTrend& suggestion : suggestedTrends())
        services.storeTrend(suggestedTrend(document, suggestion));
}

/// The demonstration's last record before this start; nothing when there is no demonstration yet.
std::optional<double> lastRecordOfDemonstration()
{
    const QString path = demonstrationSitePath();
    const auto extent = QFileInfo::exists(path) ? SiteDocument::open(path)->recordExtent() : std::nullopt;
    return extent ? std::optional(extent->second.seconds) : std::nullopt;
}

QString openDemonstration(CommandContext context)
{
    const StopRequest interruption(StopRequest::From::Keyboard);
    const CommandProgress progress =
        makeCommandProgress(context.services, context.streams, QStringLiteral("Preparing the demonstration site"));
    const std::optional<double> lastBefore = lastRecordOfDemonstration();
    const DemonstrationSite site =
        openDemonstrationSite({}, progress, [&](const QString& path) { addSuggestedTrends(path, context.services); });
    if (lastBefore && !site.created)
        letTrendsFollow(*SiteDocument::open(site.path), *lastBefore);
    return site.path;
}

/// It is brought up to date also when asked for by its path.
bool isDemonstration(const QString& site)
{
    const QFileInfo demonstration(demonstrationSitePath());
    return demonstration.exists() && QFileInfo(site).canonicalFilePath() == demonstration.canonicalFilePath();
}

int drawDemonstration(const QString& site, CommandContext context)
{
    const std::shared_ptr<SiteDocument> document = openSite(site);
    RenderRequest request;
    requireWritable(FileKind::Png, kDemonstrationPng);
    requireWritable(FileKind::Pdf, kDemonstrationPdf);
    request.trend = suggestedTrend(document, suggestedTrends().front());
    writeOutput(FileKind::Png, kDemonstrationPng, context.services.render(request));
    request.format = RenderRequest::Format::Pdf;
    writeOutput(FileKind::Pdf, kDemonstrationPdf, context.services.render(request));
    for (const QString& file : {kDemonstrationPng, kDemonstrationPdf})
        context.streams.output << "There is no display; the demonstration trend is in "
                               << QFileInfo(file).absoluteFilePath().toStdString() << '\n';
    return kCommandDone;
}

int runCommand(const OpenCommand& command, CommandContext context)
{
    const bool needsDisplay = command.screenshot.isEmpty() && !context.services.hasDisplay();
    if (needsDisplay && !command.site.isEmpty())
        throw ReportableError(
            QStringLiteral("there is no display to open a window on; use plotix render, or --screenshot"));
    if (!command.screenshot.isEmpty())
        requireWritable(FileKind::Png, command.screenshot);
    OpenRequest request{command.site, command.screenshot, command.size.value_or(kUsualWindowSize)};
    if (command.site.isEmpty() || isDemonstration(command.site))
        request.site = openDemonstration(context);
    else if (!QFileInfo::exists(command.site))
        throw ReportableError(QStringLiteral("there is no site %1; plotix import makes one").arg(command.site));
    return needsDisplay ? drawDemonstration(request.site, context) : context.services.open(request);
}

}  // namespace

Command addOpen(CLI::App& program)
{
    const auto options = std::make_shared<OpenCommand>();
    CLI::App* open =
        program.add_subcommand("open", "Open a site in the site window; without SITE the demonstration site");
    addText(open, "SITE", options->site, "A site document, NAME.plotix");
    addText(open, "--screenshot", options->screenshot, "Save a picture of the window when the trend is drawn, and exit")
        ->type_name("FILE.png")
        ->check(checkPng);
    addSize(open, "--size", options->size, "The window's size in points, for --screenshot");
    open->footer(
        "Examples:\n  plotix open nyc.plotix\n  plotix open nyc.plotix --screenshot window.png --size 1280x800");
    Command command{open, Command::Makes::Picture};
    command.run = [options](CommandContext context) { return runCommand(*options, context); };
    command.wantsWindow = [options] { return options->screenshot.isEmpty(); };
    command.contradiction = [options]() -> std::optional<QString> {
        if (options->size && options->screenshot.isEmpty())
            return QStringLiteral("--size goes with --screenshot");
        return {};
    };
    return command;
}

}  // namespace plotix
