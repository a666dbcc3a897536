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
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/site/ViewLink.h"
#include "hostapp/site/WaitForRecords.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <ostream>

/// Opening: the site asked for, or the demonstration site, which is made on first use and is then always up to date.
/// Without a display the demonstration is drawn into two files instead, so that a newcomer sees something either way.
namespace plotix {

namespace {

struct OpenCommand {
    QStringList files;          ///< a site, or files of measurements; empty: the demonstration site
    QString siteOfView;         ///< where a figure or a link has its site, if it is not found
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
    // Reading goes on in the background; a connection that is still open when the file gets its final name would look
    // for the log under the former one.
    for (const auto& agent : document->agents())
        waitForRecords(*agent);
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

bool isSiteName(const QString& file)
{
    return file.endsWith(QLatin1String(".plotix"), Qt::CaseInsensitive);
}

bool isSite(const QString& file)
{
    return isSiteName(file) || kindOfFile(file) == FileKind::Database;
}

/// A window on the files of measurements, for which the user is asked where they go.
int offerImport(const OpenCommand& command, CommandContext context)
{
    if (!command.screenshot.isEmpty() || !context.services.hasDisplay())
        throw ReportableError(
            QStringLiteral("%1 is not a site; plotix import reads measurements into one").arg(command.files.first()));
    OpenRequest request;
    for (const QString& file : command.files)
        request.imports << QFileInfo(file).absoluteFilePath();
    return context.services.open(request);
}

int openSiteOrDemonstration(const OpenCommand& command, CommandContext context)
{
    const QString site = command.files.value(0);
    const bool needsDisplay = command.screenshot.isEmpty() && !context.services.hasDisplay();
    if (needsDisplay && !site.isEmpty())
        throw ReportableError(
            QStringLiteral("there is no display to open a window on; use plotix render, or --screenshot"));
    if (!command.screenshot.isEmpty())
        requireWritable(FileKind::Png, command.screenshot);
    OpenRequest request{site, {}, {}, command.screenshot, command.size.value_or(kUsualWindowSize)};
    if (site.isEmpty() || isDemonstration(site))
        request.site = openDemonstration(context);
    return needsDisplay ? drawDemonstration(request.site, context) : context.services.open(request);
}

/// What a figure or a link shows; nothing for any other file.
std::optional<ShownView> viewIn(const QString& text)
{
    if (const auto view = viewInLink(text))
        return view;
    QFile file(text);
    constexpr qint64 kMostBytes = 1 << 29;  // no figure is as large
    const FileKind kind = QFileInfo(text).isFile() ? kindOfFile(text) : FileKind::Other;
    const bool isFigure = kind == FileKind::Png || kind == FileKind::Pdf || kind == FileKind::Svg;
    if (!isFigure || file.size() > kMostBytes || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto view = viewInFigure(file.readAll());
    if (!view)
        throw ReportableError(
            QStringLiteral("%1 does not tell what it shows, so it cannot be opened as a view").arg(text));
    return view;
}

int openView(const ShownView& view, const OpenCommand& command, CommandContext context)
{
    const bool needsDisplay = command.screenshot.isEmpty();
    if (needsDisplay && !context.services.hasDisplay())
        throw ReportableError(
            QStringLiteral("there is no display to open a window on; use plotix render, or --screenshot"));
    OpenRequest request{command.siteOfView, {}, view, command.screenshot, command.size.value_or(kUsualWindowSize)};
    const QString here = QFileInfo(command.files.first()).absolutePath();
    if (request.site.isEmpty())
        request.site = siteOfView(view, {here, QStringLiteral(".")}).value_or(QString());
    if (request.site.isEmpty() && !needsDisplay)
        throw ReportableError(
            QStringLiteral("it shows %1 of the site %2, which is not here; say where it is with --site")
                .arg(view.trend, view.siteFile));
    if (!request.site.isEmpty() && !QFileInfo::exists(request.site))
        throw ReportableError(QStringLiteral("there is no site %1").arg(request.site));
    if (!command.screenshot.isEmpty())
        requireWritable(FileKind::Png, command.screenshot);
    return context.services.open(request);
}

int runCommand(OpenCommand command, CommandContext context)
{
    if (command.files.size() == 1 && isServerAddress(command.files.first()))
        command.files = {deskFileOf(command.files.first())};
    if (command.files.size() == 1)
        if (const auto view = viewIn(command.files.first()))
            return openView(*view, command, context);
    for (const QString& file : command.files)
        if (!QFileInfo::exists(file))
            throw ReportableError((isSiteName(file) ? QStringLiteral("there is no site %1; plotix import makes one")
                                                    : QStringLiteral("there is no file %1"))
                                      .arg(file));
    const auto sites = std::count_if(command.files.begin(), command.files.end(), isSite);
    if (sites > 0 && command.files.size() > 1)
        throw ReportableError(QStringLiteral("one site at a time; plotix import reads measurements into one"));
    return sites > 0 || command.files.isEmpty() ? openSiteOrDemonstration(command, context)
                                                : offerImport(command, context);
}

}  // namespace

Command addOpen(CLI::App& program)
{
    const auto options = std::make_shared<OpenCommand>();
    CLI::App* open =
        program.add_subcommand("open", "Open a site in the site window; without SITE the demonstration site");
    addTexts(open, "SITE", options->files,
             "A site document, NAME.plotix, or clickhouse://HOST/DATABASE/SITE; a figure or a link made by Plotix, to "
             "show what it shows; or files of "
             "measurements to import");
    addText(open, "--site", options->siteOfView, "The site of a figure or a link, where it is not beside it")
        ->type_name("NAME.plotix");
    addText(open, "--screenshot", options->screenshot, "Save a picture of the window when the trend is drawn, and exit")
        ->type_name("FILE.png")
        ->check(checkPng);
    addSize(open, "--size", options->size, "The window's size in points, for --screenshot");
    open->footer(
        "Examples:\n  plotix open nyc.plotix\n  plotix open nyc.plotix --screenshot window.png --size 1280x800\n"
        "  plotix open figure.pdf --site nyc.plotix");
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
