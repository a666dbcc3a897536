#include "base/ReportableError.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/Options.h"
#include "hostapp/cli/ReadingChoice.h"
#include "hostapp/cli/RecordChoice.h"
#include "hostapp/cli/SiteLookup.h"
#include "hostapp/core/OutputFile.h"
#include "hostapp/site/FigureSettings.h"
#include "hostapp/site/NewTrend.h"

/// Rendering: the program draws, the file is written whole or not at all.
namespace plotix {

namespace {

constexpr double kPointsPerInch = 72;
constexpr int kLeastDots = 36, kMostDots = 2400;

struct RenderCommand {
    QString site, output;
    RecordChoice choice;
    ReadingChoice reading;
    QString size;
    int dotsPerInch = 0;
    QString title, gaps, preset;
    bool bare = false, noRecipe = false;
};

/// "break", "join", or the longest time that is still joined.
QVariantMap readingOf(const QString& gaps)
{
    if (gaps.isEmpty())
        return {};
    QVariantMap reading{{QStringLiteral("brokenLines"), gaps != QLatin1String("join")}};
    if (const std::optional<double> longest = durationFromArgument(gaps))
        reading.insert(QStringLiteral("longestJoin"), *longest);
    return reading;
}

FileKind kindOf(const RenderCommand& command)
{
    for (const FileKind kind : {FileKind::Pdf, FileKind::Svg})
        if (hasEndingOf(kind, command.output))
            return kind;
    return FileKind::Png;
}

RenderRequest::Format formatOf(FileKind kind)
{
    if (kind == FileKind::Svg)
        return RenderRequest::Format::Svg;
    return kind == FileKind::Pdf ? RenderRequest::Format::Pdf : RenderRequest::Format::Png;
}

/// What is said beside a preset counts instead of what the preset says.
void makeFigure(const RenderCommand& command, const QTimeZone& clock, RenderRequest& request)
{
    const auto preset = figurePresetNamed(command.preset);
    request.reading = readingOf(command.gaps);
    const QVariantMap said = readingFrom(command.reading, clock);
    request.reading.insert(said);
    if (preset) {
        request.size = pointsOf(*preset);
        request.density = preset->dotsPerInch / kPointsPerInch;
        const QVariantMap parts = readingOf(*preset, {});
        for (auto part = parts.begin(); part != parts.end(); ++part) {
            QVariantMap both = part.value().toMap();
            both.insert(said.value(part.key()).toMap());
            if (part.key() == QLatin1String("looks"))
                both.insert(QStringLiteral("marks"), QStringLiteral("apart"));
            request.reading.insert(part.key(), both);
        }
    }
    if (const auto size = figureSizeFromArgument(command.size))
        request.size = *size;
    if (command.dotsPerInch > 0)
        request.density = command.dotsPerInch / kPointsPerInch;
}

std::string checkPreset(const std::string& name)
{
    QStringList names;
    for (const FigurePreset& preset : figurePresets())
        names << preset.name;
    return names.contains(QString::fromStdString(name))
               ? std::string()
               : "must be one of " + names.join(QStringLiteral(", ")).toStdString() + ", not " + name;
}

/// The properties named; without names all but those that are never plotted.
KTVPropertyList propertiesToDraw(const SiteAgent& agent, const QStringList& names)
{
    KTVPropertyList properties;
    for (const auto& property : propertiesOf(agent, names))
        if (!names.isEmpty() || isDrawn(*property))
            properties.push_back(property);
    if (properties.empty())
        throw ReportableError(QStringLiteral("%1 has no property to draw").arg(agent.name()));
    return properties;
}

/// The default range is all time; a bound left open beside a given one is the end of the records too.
TimeSpan spanToDraw(const RecordChoice& choice, const std::optional<RecordExtent>& extent, const QString& agent,
                    const QTimeZone& clock)
{
    if (!extent)
        throw ReportableError(QStringLiteral("%1 has no records to draw").arg(agent));
    TimeSpan span = timeSpanOf(choice, extent, clock);
    if (!span.from)
        span.from = extent->first;
    if (!span.to)
        span.to = extent->last;
    if (*span.to < *span.from)
        throw ReportableError(QStringLiteral("%1 has no records in that span of time").arg(agent));
    return span;
}

int runCommand(const RenderCommand& command, CommandContext context)
{
    const FileKind kind = kindOf(command);
    requireWritable(kind, command.output);
    RenderRequest request;
    TrendRequest& trend = request.trend;
    trend.document = openSite(command.site);
    trend.agent = agentOf(*trend.document, command.choice.agent);
    trend.properties = propertiesToDraw(*trend.agent, command.choice.properties);
    const QTimeZone clock = zoneOf(command.reading.clock, *trend.document);
    const auto extent = trend.document->records()->extent(trend.agent->id());
    const TimeSpan span = spanToDraw(command.choice, extent, trend.agent->name(), clock);
    trend.from = Date{*span.from};
    trend.to = Date{*span.to};
    trend.title = command.title;
    request.bare = command.bare;
    request.hasRecipe = !command.noRecipe;
    makeFigure(command, clock, request);
    request.format = formatOf(kind);
    writeOutput(kind, command.output, context.services.render(request));
    return kCommandDone;
}

}  // namespace

Command addRender(CLI::App& program)
{
    const auto options = std::make_shared<RenderCommand>();
    CLI::App* render = program.add_subcommand("render", "Draw a trend into a PNG, PDF or SVG file, without a window");
    addSite(render, options->site);
    addText(render, "--output", options->output, "The file to write")
        ->required()
        ->type_name("FILE.png|FILE.pdf|FILE.svg")
        ->check(checkPicture);
    addRecordChoice(render, options->choice);
    addRange(render, options->choice);
    addText(render, "--size", options->size,
            "Size of the graph in points, or in millimetres; " + argumentFromSize(kUsualGraphSize) + " unless given")
        ->type_name("WxH|WxHmm")
        ->check(checkFigureSize);
    render->add_option("--dpi", options->dotsPerInch, "Pixels an inch of a PNG, written into it; 72 unless given")
        ->type_name("N")
        ->check(CLI::Range(kLeastDots, kMostDots));
    addText(
        render, "--preset", options->preset,
        "Size, density, look, legend and titles as saved by this name in the window, or as suits a purpose; what is "
        "said beside it counts instead")
        ->type_name("paper-column|slide|report|web|NAME")
        ->check(checkPreset);
    addText(render, "--title", options->title, "A title above the graph")->type_name("TEXT");
    addText(render, "--gaps", options->gaps,
            "Where nothing was recorded: break the line, which is the default; join it; or join gaps up to a time")
        ->type_name("break|join|TIME")
        ->check(checkGaps);
    addReadingChoice(render, options->reading);
    render->add_flag(
        "--no-recipe", options->noRecipe,
        "Leave out of the file what it shows: site, trend, span and choices, by which plotix open shows it "
        "again");
    render->add_flag("--bare", options->bare, "The plain graph that programs ask for: no date labels, no styling; PNG");
    render->footer(
        "Examples:\n  plotix render nyc.plotix --agent EWR --properties airTemperature,pressure \\\n"
        "    --size 1200x600 --title \"Newark 2013\" --output newark.png\n"
        "  plotix render nyc.plotix --agent EWR --from 2013-07-01 --to 2013-07-08 --output july.pdf\n"
        "  plotix render nyc.plotix --agent EWR --properties temp,pressure --look paper --size 85x60mm \\\n"
        "    --dpi 300 --font-size 7pt --legend below --axis-titles values --output figure.png\n"
        "  plotix render nyc.plotix --agent EWR --preset paper-column --output figure.svg\n"
        "  plotix render nyc.plotix --agent EWR --from 2013-03-10 --to 2013-03-10 --zone America/New_York \\\n"
        "    --output day.png");
    Command command{render, Command::Makes::Picture};
    command.run = [options](CommandContext context) { return runCommand(*options, context); };
    command.contradiction = [options]() -> std::optional<QString> {
        const bool isPng = kindOf(*options) == FileKind::Png;
        if (options->bare && !isPng)
            return QStringLiteral("--bare draws PNG only; give an --output that ends in .png");
        if (options->bare && !options->gaps.isEmpty())
            return QStringLiteral("--bare always joins gaps; leave out --gaps");
        if (options->bare && options->dotsPerInch > 0)
            return QStringLiteral("--bare draws a pixel a point; leave out --dpi");
        if (!isPng && options->dotsPerInch > 0)
            return QStringLiteral("--dpi is for PNG; PDF and SVG files have no pixels");
        if (options->bare && !options->preset.isEmpty())
            return QStringLiteral("--bare has no looks; leave out --preset");
        if (options->bare && !options->reading.isEmpty())
            return QStringLiteral("--bare draws lines alone; leave out --arrangement, --look, --legend and the like");
        return contradictionIn(options->choice);
    };
    return command;
}

}  // namespace plotix
