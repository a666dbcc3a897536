// Following unit and colour changes, and the tool tip.
//
// Rules of this room:
//  1. Reactions dispatch on the observation's tag, not on the key.
//  2. Nothing here fetches. A unit change converts what is loaded and rebuilds from the same record dictionary, with
//     everything a rebuild does; a colour change restyles one plot and its row.
//  3. The plot takes the property's colour of now, the row takes the change's new value. The next rebuild gives the
//     plot the colour of the fetched snapshot again.
//  4. `observersAdded` never becomes false again; it becomes true for an empty list, but not for an absent one.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"
#include "plugins/PlotixPlugIn/logic/ColorText.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

namespace {

const QString kUnitAttribute = QStringLiteral("unit");
const QString kColorKey = QStringLiteral("color");

/// The unit of the first element that is a property; absent when there is none.
std::optional<QString> firstUnit(const KTVRecordColumn& column)
{
    std::size_t index = 0;
    for (const auto& [exceptionIndex, snapshot] : column.exceptions()) {
        if (exceptionIndex != index || index >= column.size())
            break;
        if (snapshot)
            return snapshot->unit();
        ++index;
    }
    return index < column.size() ? std::optional(column.unit()) : std::nullopt;
}

}  // namespace

void KTVPlotixPlugIn::observeProperty(KTVProperty& property)
{
    property.addObserver(this, kUnitAttribute, kUnit);
    property.addObserver(this, kColorKey, kPropertyColor);
}

void KTVPlotixPlugIn::addObservers(const KTVAgentPtr& /*agent*/)
{
    if (!m_properties)
        return;
    m_observersAdded = true;
    for (const KTVPropertyPtr& property : *m_properties)
        observeProperty(*property);
}

void KTVPlotixPlugIn::removeObservers(const KTVAgentPtr& /*agent*/)
{
    if (!m_properties || !m_observersAdded)
        return;
    for (const KTVPropertyPtr& property : *m_properties) {
        property->removeObserver(this, kUnitAttribute);
        property->removeObserver(this, kColorKey);
    }
}

void KTVPlotixPlugIn::observeValueForKeyPath(const QString& /*keyPath*/, KTVProperty* object,
                                             const KTVPropertyChange& change, ObservationTag context)
{
    if (context == kUnit) {
        if (change.newValue.toString() != change.oldValue.toString())
            setUnit(change.newValue.toString(), object->propertyName());
    } else if (context == kPropertyColor) {
        recolorPlot(*object);
        recolorRows(object->propertyName(), change.newValue.value<QColor>());
    } else {
        setValue(change.newValue);
    }
}

void KTVPlotixPlugIn::setUnit(const QString& unit, const QString& propertyName)
{
    const auto column = m_plotData ? m_plotData->columnForKey(propertyName) : nullptr;
    const std::optional<QString> present = column ? firstUnit(*column) : std::nullopt;
    if (!present || *present == unit)
        return;
    column->setUnit(unit);
    updatePlotData(m_plotData);
    updateInfoTable();
}

void KTVPlotixPlugIn::recolorPlot(const KTVProperty& property)
{
    const CPTScatterPlotPtr plot = m_graph ? m_graph->plotWithIdentifier(property.propertyName()) : nullptr;
    if (!plot)
        return;
    CPTLineStyle lineStyle = plot->dataLineStyle();
    lineStyle.color = property.color();
    plot->setDataLineStyle(lineStyle);
    m_reader->tell(&plotix::ReadingPart::linesChanged);
}

void KTVPlotixPlugIn::recolorRows(const QString& propertyName, const QColor& color)
{
    if (!m_infoTableArrayController)
        return;
    // All rows are added again in displayed order, changed or not: the sorted order thereby becomes the order of
    // `infoTableArray`, and so that of the report.
    InfoTableArray rows = m_infoTableArrayController->arrangedObjects();
    for (InfoTableRowPtr& row : rows) {
        const bool isProperty = m_reading.hasPropertyColors() && row->propertyName == propertyName;
        if (!isProperty && camelCaseString(row->tableName) != propertyName)
            continue;
        row = std::make_shared<InfoTableRow>(*row);
        row->color = color;
    }
    const std::vector<std::size_t> selection = m_infoTableArrayController->selectionIndexes();
    m_infoTableArrayController->removeAllObjects();
    m_infoTableArrayController->addObjects(rows);
    m_infoTableArrayController->setSelectionIndexes(selection);
}

void KTVPlotixPlugIn::setValue(const QVariant& /*value*/) {}

void KTVPlotixPlugIn::updateToolTip()
{
    QString text = QStringLiteral("Color index:");
    if (m_infoTableArrayController)
        for (const InfoTableRowPtr& row : m_infoTableArrayController->arrangedObjects())
            text += QStringLiteral("\r%1 is %2").arg(row->tableName, plotix::colorText(row->color));
    if (m_hostView)
        m_hostView->setToolTip(plainToolTip(text));
}
