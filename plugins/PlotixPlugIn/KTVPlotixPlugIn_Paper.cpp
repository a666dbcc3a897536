// What a host needs to print the trend in a form of its own.
//
// Rules of this room:
//  1. The span told is that of the graph as it is drawn, not of the date panel: the panel may have moved on.
//  2. Hidden lines are left out of rows and graph alike, and both have the same colours.
//  3. Nothing of the view is changed.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/FiguredRow.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/PaperGraph.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

namespace {

/// Texts of the columns that the figures add, in their order.
QStringList figureTexts(const InfoTableRow& row, const plotix::TableFigures* figures)
{
    QStringList texts;
    if (figures)
        for (const plotix::TableFigures::Column& column : figures->columns())
            texts << figures->cell(row.propertyName, column.identifier).text;
    if (const auto quality = figures ? figures->quality(row.propertyName) : std::nullopt)
        texts << *quality;
    return texts;
}

QVariantMap contentsOf(const InfoTableRow& kept, const QColor& color, const plotix::TableFigures* figures)
{
    const InfoTableRow row = figuredRow(kept, figures);
    return {{QStringLiteral("color"), plotix::colorOnPaper(color)},
            {QStringLiteral("name"), row.tableName},
            {QStringLiteral("unit"), row.unit},
            {QStringLiteral("minimum"), row.minimum},
            {QStringLiteral("maximum"), row.maximum},
            {QStringLiteral("average"), row.average},
            {QStringLiteral("points"), row.points},
            {QStringLiteral("figures"), figureTexts(row, figures)}};
}

/// Titles that somebody asked for stay; those that are always there say nothing that the page does not.
plotix::PaperTitles titlesOnPaper(const plotix::TrendReader& reader)
{
    const bool areChosen = reader.part(QStringLiteral("legend"))->chosen().contains(QStringLiteral("axisTitles"));
    return areChosen ? plotix::PaperTitles::Kept : plotix::PaperTitles::LeftOut;
}

QStringList figureTitles(const plotix::TableFigures* figures)
{
    QStringList titles;
    if (figures)
        for (const plotix::TableFigures::Column& column : figures->columns())
            titles << column.title;
    if (figures && figures->quality({}))
        titles << plotix::localizedText(QT_TRANSLATE_NOOP("Plotix", "Quality"));
    return titles;
}

}  // namespace

QVariantMap KTVPlotixPlugIn::reportContents() const
{
    if (!m_graph || m_graph->allPlots().empty())
        return {};
    plotix::TableFigures* figures = m_reader->tableFigures();
    if (figures)
        figures->finish();
    QVariantList rows;
    for (const InfoTableRowPtr& row : *m_infoTableArray)
        if (row->show)
            rows << contentsOf(*row, shownColor(*row), figures);
    const CPTPlotRange& drawn = m_graph->plotSpace().xRange();
    QVariantMap contents{
        {QStringLiteral("rows"), rows}, {QStringLiteral("from"), drawn.location}, {QStringLiteral("to"), drawn.end()}};
    const CPTClock clock = m_access->clock();
    if (clock.zone.isValid())
        contents.insert(QStringLiteral("zone"), QString::fromUtf8(clock.zone.id()));
    if (clock.hours == CPTHourForm::TwentyFour)
        contents.insert(QStringLiteral("twentyFourHours"), true);
    contents.insert(QStringLiteral("unitsInGraph"), m_graph->axes().yAxis().isHidden());
    contents.insert(QStringLiteral("figureTitles"), figureTitles(figures));
    contents.insert(QStringLiteral("about"), figures ? figures->about() : QString());
    if (const plotix::OutsideLines told = linesOutside(); told.kind == plotix::OutsideLines::Kind::Outside)
        contents.insert(QStringLiteral("outside"), told.names);
    if (const QVariantList notes = footnotes(); !notes.isEmpty())
        contents.insert(QStringLiteral("notes"), notes);
    if (m_plotData && m_plotData->time() && !m_plotData->time()->isEmpty()) {
        contents.insert(QStringLiteral("firstRecord"), m_plotData->time()->front());
        contents.insert(QStringLiteral("lastRecord"), m_plotData->time()->back());
    }
    if (const KTVAgentPtr site = siteWindowController() ? siteWindowController()->agent() : nullptr) {
        contents.insert(QStringLiteral("siteName"), site->siteName().value_or(QString()));
        contents.insert(QStringLiteral("siteLocation"), site->siteLocation().value_or(QString()));
    }
    return contents;
}

QVariantList KTVPlotixPlugIn::footnotes() const
{
    return m_reader->part(QStringLiteral("notes"))->property("footnotes").toList();
}

void KTVPlotixPlugIn::drawGraphOnPaper(QPainter* painter, const QRectF& rect)
{
    if (m_graph && painter)
        plotix::paintOnPaper(*painter, *m_graph, rect, titlesOnPaper(*m_reader));
}
