// The statistics table.
//
// Rules of this room:
//  1. Rows follow `properties`, values follow `plotData`: a property without a key there gets a row of zeros.
//  2. A row is found by its display name. The first one found supplies "show" and "color" to the new row; every
//     displayed row of that name is replaced, and so moves behind the rows that match no property.
//  3. Values are counted whatever their kind: snapshots that are never plotted count here.
//  4. Only the average is rounded, in double precision, before everything is narrowed.
//  5. A row's successor is selected as it was, though replacing takes it out of the list for a moment.
//  6. New rows never touch the visibility of plots; replaced ones set it again, under the old row's key.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "base/PagedReading.h"
#include "base/SinglePrecision.h"
#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/TrendAccess.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/logic/Statistics.h"
#include "plugins/PlotixPlugIn/reading/ReadSpans.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"
#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

constexpr int kAverageRounding = 10;
const QString kNoUnit = QStringLiteral("-");

/// One column's statistics and the unit symbol of its first valid value.
struct ColumnSummary {
    plotix::StatisticsAccumulator values;
    std::optional<QString> unitSymbol;
};

/// Adds the elements [first, last), none of which is an exception.
void addPlainValues(ColumnSummary& summary, const KTVRecordColumn& column, std::size_t first, std::size_t last)
{
    plotix::inStretches(column, first, last, [&](std::size_t next, std::size_t end) {
        std::array<double, 1024> block;
        while (next < end) {
            const std::span<double> values(block.data(), std::min(block.size(), end - next));
            column.copyUnitValues(next, values);
            summary.values.addBlock(values, column.validity(), next);
            next += values.size();
        }
    });
    if (!summary.unitSymbol && !summary.values.isEmpty())
        summary.unitSymbol = column.unitSymbol();
}

void addException(ColumnSummary& summary, const KTVPropertyPtr& snapshot)
{
    if (!snapshot || !snapshot->isValid())
        return;
    summary.values.add(snapshot->unitValue());
    if (!summary.unitSymbol)
        summary.unitSymbol = snapshot->unitSymbol();
}

/// Adds a whole paged column without reading it, if that is as good as reading it.
bool addKnownValues(ColumnSummary& summary, const KTVRecordColumn& column)
{
    const KTVRecordColumn::Known& known = column.known();
    const KTVUnitModel::Map& map = column.map();
    if (column.isResident() || !column.exceptions().empty() || !known.runs || !known.sum || !map.isLinear)
        return false;
    if (!summary.values.addKnown({*known.runs, known.count, *known.sum, map.scale, map.offset}))
        return false;
    if (!summary.values.isEmpty())
        summary.unitSymbol = column.unitSymbol();
    return true;
}

ColumnSummary summaryOfColumn(const KTVRecordColumn& column)
{
    ColumnSummary summary;
    if (addKnownValues(summary, column))
        return summary;
    std::size_t next = 0;
    for (const auto& [index, snapshot] : column.exceptions()) {
        if (index >= column.size())
            break;
        addPlainValues(summary, column, next, index);
        addException(summary, snapshot);
        next = index + 1;
    }
    addPlainValues(summary, column, next, column.size());
    return summary;
}

InfoTableRow rowForProperty(const KTVProperty& property, const KTVRecordColumn* column)
{
    const ColumnSummary summary = column ? summaryOfColumn(*column) : ColumnSummary();
    const plotix::Statistics statistics = summary.values.statistics();
    // Without values the average stays the plain 0 it is.
    const double average =
        statistics.points < 1 ? statistics.average : KTVConverter::roundValue(statistics.average, kAverageRounding);
    return {.show = true,
            .color = property.color(),
            .tableName = property.name(),
            .propertyName = property.propertyName(),
            .unit = summary.unitSymbol.value_or(kNoUnit),
            .minimum = plotix::singlePrecision(statistics.minimum),
            .maximum = plotix::singlePrecision(statistics.maximum),
            .average = plotix::singlePrecision(average),
            .points = statistics.points};
}

InfoTableRowPtr firstRowNamed(const InfoTableArray& rows, const QString& name)
{
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const InfoTableRowPtr& row) { return row->tableName == name; });
    return found == rows.end() ? nullptr : *found;
}

/// Rows by display name and which of that name they are, counted in displayed order.
using RowNames = std::set<std::pair<QString, int>>;

RowNames selectedNames(const InfoTableArrayController& controller)
{
    std::map<QString, int> seen;
    std::vector<std::pair<QString, int>> names;
    for (const InfoTableRowPtr& row : controller.arrangedObjects())
        names.emplace_back(row->tableName, seen[row->tableName]++);
    RowNames selected;
    for (const std::size_t index : controller.selectionIndexes())
        selected.insert(names[index]);
    return selected;
}

void selectNames(InfoTableArrayController& controller, const RowNames& selected)
{
    std::map<QString, int> seen;
    std::vector<std::size_t> indexes;
    const InfoTableArray& rows = controller.arrangedObjects();
    for (std::size_t index = 0; index < rows.size(); ++index)
        if (selected.contains({rows[index]->tableName, seen[rows[index]->tableName]++}))
            indexes.push_back(index);
    controller.setSelectionIndexes(indexes);
}

}  // namespace

void KTVPlotixPlugIn::connectInfoTable()
{
    m_infoTable->setArrayController(m_infoTableArrayController.get());
    m_infoTable->setTableDelegate(this);
    m_infoTable->setFigures(m_reader->tableFigures());
    if (const plotix::TableFigures* figures = m_reader->tableFigures())
        connect(figures, &plotix::TableFigures::cellMeant, this, [this] {
            if (!m_propertyDetailsShowing && m_propertyDetailsDisclosureButton)
                m_propertyDetailsDisclosureButton->click();  // an answer in a closed panel is none
        });
    m_infoTable->setCopiedHeading([this] { return copiedHeading(); });
    connect(m_infoTable, &PropertyDetailsTableView::showClicked, this, &KTVPlotixPlugIn::showClicked);
    connect(m_infoTable, &PropertyDetailsTableView::lineChosen, this, [this](int row, bool shown) {
        setPlotForPropertyName(m_infoTable->infoTableModel()->rowAt(row)->propertyName, !shown);
    });
}

void KTVPlotixPlugIn::updateInfoTable()
{
    const KTVPropertyList properties = m_properties.value_or(KTVPropertyList());
    const RowNames selected = m_infoTableArrayController ? selectedNames(*m_infoTableArrayController) : RowNames();
    {
        const InfoTableModel::Pause pause(m_infoTable ? m_infoTable->infoTableModel() : nullptr);
        for (const KTVPropertyPtr& property : properties) {
            if (!m_showMapping)
                m_showMapping.emplace();
            m_showMapping->try_emplace(property->name(), 1);  // kept, but visibility comes from the rows alone
            if (m_infoTableArrayController)
                mergeInfoTableRow(*property);
        }
    }
    if (m_infoTableArrayController)
        selectNames(*m_infoTableArrayController, selected);
}

void KTVPlotixPlugIn::mergeInfoTableRow(const KTVProperty& property)
{
    const auto column = m_plotData ? m_plotData->columnForKey(property.propertyName()) : nullptr;
    InfoTableRow newRow = rowForProperty(property, column.get());
    const InfoTableRowPtr existing = firstRowNamed(*m_infoTableArray, newRow.tableName);
    if (!existing) {
        m_infoTableArrayController->addObject(std::make_shared<InfoTableRow>(newRow));
        return;
    }
    newRow.show = existing->show;
    if (!m_reading.hasPropertyColors())
        newRow.color = existing->color;
    // A snapshot: replacing changes the arranged objects. Each old row gets its own new row, so that removing one of
    // two rows of the same name leaves the other.
    const InfoTableArray displayed = m_infoTableArrayController->arrangedObjects();
    for (const InfoTableRowPtr& oldRow : displayed) {
        if (oldRow->tableName != newRow.tableName)
            continue;
        m_infoTableArrayController->removeObject(oldRow);
        m_infoTableArrayController->addObject(std::make_shared<InfoTableRow>(newRow));
        setPlotForPropertyName(oldRow->propertyName, !newRow.show);
    }
}

void KTVPlotixPlugIn::setPlotForPropertyName(const QString& propertyName, bool hidden)
{
    const CPTXYGraphPtr hostedGraph = m_hostView ? m_hostView->hostedGraph() : nullptr;
    if (!hostedGraph)
        return;
    const CPTScatterPlotPtr plot = hostedGraph->plotWithIdentifier(propertyName);
    if (!plot || plot->isHidden() == hidden)
        return;
    plot->setHidden(hidden);
    m_reader->tell(&plotix::ReadingPart::linesChanged);
    updateRangeNotice();
}

void KTVPlotixPlugIn::showClicked(QObject* sender)
{
    const auto* checkBox = qobject_cast<QAbstractButton*>(sender);
    if (!checkBox || !m_infoTable || !m_infoTableArrayController)
        return;
    const auto& rows = m_infoTableArrayController->arrangedObjects();
    const int row = m_infoTable->rowForView(checkBox);
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size())
        return;
    setPlotForPropertyName(rows[static_cast<std::size_t>(row)]->propertyName, !checkBox->isChecked());
}

/// What the table is of, and what its figures are about, for who reads it elsewhere; where the host chose that the
/// table has a heading.
QStringList KTVPlotixPlugIn::copiedHeading() const
{
    const QVariantMap statistics = m_reader->part(QStringLiteral("statistics"))->chosen();
    if (!statistics.value(QStringLiteral("offered")).toBool())
        return {};
    QStringList heading;
    const KTVAgentPtr site = siteWindowController() ? siteWindowController()->agent() : nullptr;
    for (const QString& line : {title(), site ? site->siteName().value_or(QString()) : QString()})
        if (!line.isEmpty())
            heading << line;
    const QString about = m_reader->tableFigures()->about();
    const auto span = figuredSpan(statistics.value(QStringLiteral("over")).toString());
    if (!span)
        return heading;
    const CPTClock clock = m_access->clock();
    const QString times = QStringLiteral("%1 – %2").arg(plotix::momentDescription(clock, plotix::Date{span->first}),
                                                        plotix::momentDescription(clock, plotix::Date{span->second}));
    return heading << (about.isEmpty() ? times : QStringLiteral("%1 (%2)").arg(times, about));
}

std::optional<std::pair<double, double>> KTVPlotixPlugIn::figuredSpan(const QString& over) const
{
    if (over == QLatin1String("marked")) {
        const QVariantMap marks = m_reader->part(QStringLiteral("marks"))->chosen();
        const double a = marks.value(QStringLiteral("a")).toDouble(), b = marks.value(QStringLiteral("b")).toDouble();
        return std::minmax({a, b});
    }
    if (over == QLatin1String("visible") && m_graph) {
        const CPTPlotRange& drawn = m_graph->plotSpace().xRange();
        return std::pair(drawn.minLimit(), drawn.maxLimit());
    }
    const std::optional<plotix::TimeSpan>& read = m_readSpans->readSpan();
    return read ? std::optional(std::pair(read->from, read->to)) : std::nullopt;
}

void KTVPlotixPlugIn::copyTable(QObject* /*sender*/)
{
    if (m_infoTable)
        m_infoTable->copyRows();
}
