// What the user changes in a trend, as a value that can be put back: which properties, which of them are hidden, and
// the range on screen.
//
// Rules of this room:
//  1. Putting back uses the operations that the user's own hands use; nothing else is changed.
//  2. Properties that come back are fetched, and the fit that follows shows all of them: their range is not put back.
//  3. What the agent does not have any more is passed over.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"

#include <algorithm>

namespace {

const QString kProperties = QStringLiteral("properties");  // keys, in order
const QString kHidden = QStringLiteral("hidden");          // keys
const QString kReading = QStringLiteral("reading");        // choices of the parts of the reading, by their keys
const QString kRanges = QStringLiteral("ranges");          // of the parts of the reading, by their keys
const QString kTimes = QStringLiteral("times");            // location and length, seconds
const QString kDates = QStringLiteral("dates");            // of the date panel, seconds
const QString kValues = QStringLiteral("values");          // location and length

QVariantList listFrom(const CPTPlotRange& range)
{
    return {range.location, range.length};
}

std::optional<CPTPlotRange> rangeFrom(const QVariant& list)
{
    const QVariantList parts = list.toList();
    if (parts.size() != 2)
        return std::nullopt;
    return CPTPlotRange{parts[0].toDouble(), parts[1].toDouble()};
}

}  // namespace

QVariantMap KTVPlotixPlugIn::changeable() const
{
    QStringList keys, hidden;
    for (const KTVPropertyPtr& property : m_properties.value_or(KTVPropertyList()))
        keys << property->propertyName();
    for (const InfoTableRowPtr& row : *m_infoTableArray)
        if (!row->show)
            hidden << row->propertyName;
    hidden.sort();
    QVariantMap state{{kProperties, keys}, {kHidden, hidden}, {kDates, shownRange()}};
    if (const QVariantMap chosen = m_reader->chosen(); !chosen.isEmpty())
        state.insert(kReading, chosen);
    if (m_graph) {
        state.insert(kTimes, listFrom(m_graph->defaultPlotSpace()->xRange()));
        state.insert(kValues, listFrom(m_graph->defaultPlotSpace()->yRange()));
        if (const QVariantMap ranges = m_reader->ranges(); !ranges.isEmpty())
            state.insert(kRanges, ranges);
    }
    return state;
}

void KTVPlotixPlugIn::changeTo(const QVariantMap& state)
{
    const bool fetches = changeProperties(state.value(kProperties).toStringList());
    changeHidden(state.value(kHidden).toStringList());
    m_reader->chooseOnly(state.value(kReading).toMap());
    if (fetches)
        return;
    const auto times = rangeFrom(state.value(kTimes));
    const auto values = rangeFrom(state.value(kValues));
    if (m_graph && times)
        m_graph->defaultPlotSpace()->setXRange(*times);
    if (m_graph && values)
        m_graph->defaultPlotSpace()->setYRange(*values);
    m_reader->setRanges(state.value(kRanges).toMap());
    const QVariantList dates = state.value(kDates).toList();
    if (dates.size() == 2 && dates != shownRange())
        m_dataCluster->updateDates(plotix::Date{dates[0].toDouble()}, plotix::Date{dates[1].toDouble()});
}

bool KTVPlotixPlugIn::changeProperties(const QStringList& keys)
{
    QStringList surplus, present;
    for (const KTVPropertyPtr& property : m_properties.value_or(KTVPropertyList())) {
        if (!keys.contains(property->propertyName()))
            surplus << property->name();
        present << property->propertyName();
    }
    removePropertiesAndRefresh(surplus);
    const bool fetches =
        std::any_of(keys.begin(), keys.end(), [&](const QString& key) { return !present.contains(key); });
    addProperties(keys);  // those there are already stay as they are
    if (m_properties)
        std::stable_sort(m_properties->begin(), m_properties->end(),
                         [&keys](const KTVPropertyPtr& left, const KTVPropertyPtr& right) {
                             return keys.indexOf(left->propertyName()) < keys.indexOf(right->propertyName());
                         });
    return fetches;
}

void KTVPlotixPlugIn::changeHidden(const QStringList& hidden)
{
    if (!m_infoTable || !m_infoTableArrayController)
        return;
    const InfoTableArray rows = m_infoTableArrayController->arrangedObjects();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const bool show = !hidden.contains(rows[row]->propertyName);
        if (show == rows[row]->show)
            continue;
        m_infoTable->infoTableModel()->setShow(static_cast<int>(row), show);
        setPlotForPropertyName(rows[row]->propertyName, !show);
    }
}
