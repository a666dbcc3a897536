#include "base/ReportableError.h"
#include "hostapp/cli/Commands.h"
#include "hostapp/cli/SiteLookup.h"

/// Rendering: the program draws, the file is written whole or not at all.
namespace plotix {

namespace {

/// Everything but what is never plotted, unless named.
KTVPropertyList propertiesToDraw(const SiteAgent& agent, const QStringList& names)
{
    KTVPropertyList properties;
    for (const auto& property : propertiesOf(agent, names))
        if (!names.isEmpty() || (property->visible() && property->type() != kPropertyTypeNeverPlotted))
            properties.push_back(property);
    if (properties.empty())
        throw ReportableError(QStringLiteral("%1 has no property to draw").arg(agent.name()));
    return properties;
}

/// The default range is all time; a bound left open beside a given one is the end of the records too.
TimeSpan spanToDraw(const RecordChoice& choice, const std::optional<RecordExtent>& extent, const QString& agent)
{
    if (!extent)
        throw ReportableError(QStringLiteral("%1 has no records to draw").arg(agent));
    TimeSpan span = timeSpanOf(choice, extent);
    if (!span.from)
        span.from = extent->first;
    if (!span.to)
        span.to = extent->last;
    if (*span.to < *span.from)
        throw ReportableError(QStringLiteral("%1 has no records in that span of time").arg(agent));
    return span;
}

}  // namespace

int runCommand(const RenderCommand& command, CommandContext context)
{
    RenderRequest request;
    TrendRequest& trend = request.trend;
    trend.document = openSite(command.site);
    trend.agent = agentOf(*trend.document, command.choice.agent);
    trend.properties = propertiesToDraw(*trend.agent, command.choice.properties);
    const auto extent = trend.document->records()->extent(trend.agent->id());
    const TimeSpan span = spanToDraw(command.choice, extent, trend.agent->name());
    trend.from = Date{*span.from};
    trend.to = Date{*span.to};
    trend.title = command.title;
    request.size = command.size;
    request.bare = command.bare;
    request.format = command.output.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive) ? RenderRequest::Format::Pdf
                                                                                         : RenderRequest::Format::Png;
    writeWholeFile(command.output, context.services.render(request));
    return kCommandDone;
}

}  // namespace plotix
