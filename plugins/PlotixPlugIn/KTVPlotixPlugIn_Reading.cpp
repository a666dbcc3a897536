// Options that make a trend easier to read.
//
// Rules of this room:
//  1. Without an option chosen everything looks, and is archived, as the contract has it.
//  2. The host chooses, by name; what was chosen is archived with the trend.
//  3. Only a graph that a view shows is changed: off screen the theme's own axes stay.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/LineMenu.h"
#include "plugins/PlotixPlugIn/RangeNotice.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/reading/LineGaps.h"
#include "plugins/PlotixPlugIn/reading/ReadableAxes.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"

#include <algorithm>

void KTVPlotixPlugIn::setReading(const QVariantMap& options)
{
    m_reader->choose(options);
    const plotix::ReadingOptions chosen = plotix::mergedReadingOptions(m_reading, options);
    if (chosen == m_reading)
        return;
    const bool hadReadableLabels = m_reading.hasReadableLabels();
    const bool hadPropertyColors = m_reading.hasPropertyColors();
    m_reading = chosen;
    if (hadReadableLabels && !m_reading.hasReadableLabels())
        styleAxesPlainly();
    if (!hadPropertyColors && m_reading.hasPropertyColors())
        takePropertyColors();
    applyReading();
}

void KTVPlotixPlugIn::takePropertyColors()
{
    for (const KTVPropertyPtr& property : m_properties.value_or(KTVPropertyList())) {
        recolorPlot(*property);
        recolorRows(property->propertyName(), property->color());
    }
}

void KTVPlotixPlugIn::applyLineCommands()
{
    const bool wanted = m_reading.hasLineCommands();
    if (!m_infoTable || !m_hostView || m_infoTable->choosesLines() == wanted)
        return;
    m_infoTable->setChoosesLines(wanted);
    if (wanted)
        m_lineMenu = new LineMenu(m_hostView, m_dragDropView ? m_dragDropView->parentWidget() : nullptr, m_infoTable,
                                  m_reader->menuActions());
    else
        delete m_lineMenu;
}

// The label format is that of the next fit, as after the first rebuild.
void KTVPlotixPlugIn::styleAxesPlainly()
{
    if (!m_graph)
        return;
    m_graph->setLabelRoom(CPTLabelRoom::Fixed);
    m_graph->axisSet()->yAxis()->setLabelFormatter(CPTXYAxis(CPTCoordinate::Y).labelFormatter());
    setupXAxis();
    adjustXAxis();
    setupYAxis();
    adjustYAxis();
}

// Rows keep the colours of their properties; what is drawn may have been chosen for this trend.
QColor KTVPlotixPlugIn::shownColor(const InfoTableRow& row) const
{
    const CPTScatterPlotPtr plot = lookedPlot(row.propertyName);
    return plot ? plot->dataLineStyle().color : row.color;
}

CPTScatterPlotPtr KTVPlotixPlugIn::lookedPlot(const QString& propertyName) const
{
    const bool isChosen = m_reader && !m_reader->part(QStringLiteral("looks"))->chosen().isEmpty();
    return m_graph && isChosen ? m_graph->plotWithIdentifier(propertyName) : nullptr;
}

void KTVPlotixPlugIn::connectLooks()
{
    if (!m_infoTable)
        return;
    m_infoTable->infoTableModel()->setPlotOf([this](const QString& name) { return lookedPlot(name); });
    connect(m_infoTable, &PropertyDetailsTableView::lineMenuMade, this, [this](QMenu& menu, const QStringList& names) {
        m_reader->tell(&plotix::ReadingPart::addLineItems, menu, names);
    });
    connect(m_infoTable, &PropertyDetailsTableView::rowMenuMade, this, [this](QMenu& menu, const QStringList& names) {
        m_reader->tell(&plotix::ReadingPart::addRowItems, menu, names);
    });
    connect(m_reader.get(), &plotix::TrendReader::chosenChanged, m_infoTable->infoTableModel(),
            &InfoTableModel::plotsChanged);
}

QVariantMap KTVPlotixPlugIn::reading() const
{
    QVariantMap chosen = plotix::dictionaryFromReadingOptions(m_reading);
    chosen.insert(m_reader->chosen());
    return chosen;
}

QList<QAction*> KTVPlotixPlugIn::readingActions() const
{
    return m_reader->menuActions();
}

QObject* KTVPlotixPlugIn::trendReader() const
{
    return m_reader.get();
}

QStringList KTVPlotixPlugIn::figureColumns() const
{
    const plotix::TableFigures* figures = m_reader->tableFigures();
    return figures ? figures->offered() : QStringList();
}

void KTVPlotixPlugIn::applyReading()
{
    applyLineCommands();
    if (m_infoTable)
        m_infoTable->infoTableModel()->setReadableNumbers(m_reading.hasReadableLabels());
    updateRangeNotice();
    if (m_graph)
        plotix::breakLinesAtGaps(*m_graph, m_reading);
    if (!m_graph || !hostedAxisSet() || !m_reading.hasReadableLabels())
        return;
    KTVBundle* texts = KTVBundle::mainBundle();
    plotix::makeAxesReadable(*m_graph, {texts->localizedString(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Time"))),
                                        texts->localizedString(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "Value"))),
                                        m_access->clock()});
    m_reader->tell(&plotix::ReadingPart::restyled);
}

std::vector<plotix::LineReach> KTVPlotixPlugIn::linesShown() const
{
    std::vector<plotix::LineReach> lines;
    for (const plotix::ReadLine& line : m_access->lines()) {
        const CPTScatterPlotPtr plot = m_graph->plotWithIdentifier(line.key);
        const auto extent = plot->series() ? plot->series()->extent() : std::nullopt;
        if (!line.isShown || !extent || &m_graph->plotSpaceOf(*plot) != &m_graph->plotSpace())
            continue;
        lines.push_back({line.name, static_cast<double>(extent->minY), static_cast<double>(extent->maxY)});
    }
    return lines;
}

plotix::OutsideLines KTVPlotixPlugIn::linesOutside() const
{
    return m_reading.hasUnlimitedValues() ? plotix::OutsideLines()
                                          : plotix::outsideLines(linesShown(), m_graph->defaultPlotSpace()->yRange());
}

void KTVPlotixPlugIn::updateRangeNotice()
{
    if (!m_graph || !m_hostView)
        return;
    const plotix::OutsideLines told = m_reading.doesTellOutside() ? linesOutside() : plotix::OutsideLines();
    if (!m_rangeNotice && told.kind == plotix::OutsideLines::Kind::None)
        return;
    if (!m_rangeNotice) {
        m_rangeNotice = new RangeNotice(m_hostView);
        connect(m_rangeNotice, &RangeNotice::scalingRequested, this, [this] { showValuesScaled(m_rangeNotice); });
    }
    m_rangeNotice->tell(told);
}

// The time range stays: a trend that is followed goes on being followed.
void KTVPlotixPlugIn::showValuesScaled(QObject* /*sender*/)
{
    setReading({{QStringLiteral("unlimitedValues"), true}});
    if (!m_graph)
        return;
    const std::vector<plotix::LineReach> lines = linesShown();
    if (lines.empty())
        return;
    double lowest = lines.front().lowest;
    double highest = lines.front().highest;
    for (const plotix::LineReach& line : lines) {
        lowest = std::min(lowest, line.lowest);
        highest = std::max(highest, line.highest);
    }
    m_graph->defaultPlotSpace()->setYRange({lowest, highest - lowest});
}

bool KTVPlotixPlugIn::lacksRecords() const
{
    const auto lacks = [](const CPTPointSeriesPtr& series) {
        const auto hasFailed = [](const std::shared_ptr<const plotix::PagedMemory>& memory) {
            return memory && memory->pagesUnread() > 0;
        };
        return series && (hasFailed(series->x().memory()) || hasFailed(series->y().memory()));
    };
    const std::vector<CPTScatterPlotPtr> plots = m_graph ? m_graph->allPlots() : std::vector<CPTScatterPlotPtr>();
    return m_lacksAnswer || std::any_of(plots.begin(), plots.end(), [&](const auto& plot) {
               return lacks(plot->series()) || lacks(plot->valueSeries());
           });
}
