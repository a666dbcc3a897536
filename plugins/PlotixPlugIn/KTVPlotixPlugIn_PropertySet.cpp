// Adding and removing properties.
//
// Rules of this room:
//  1. Adding goes by keys and fetches; removing goes by display names and fetches nothing, rebuilds nothing, and leaves
//     `plotData` and `binders` alone: a later unit change brings the removed plot back.
//  2. Adding observes "unit" and "color", removing stops only "unit".

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

namespace {

constexpr quint64 kEveryDragOperation = ~quint64{0};

template <class Predicate>
KTVPropertyPtr firstProperty(const std::optional<KTVPropertyList>& properties, Predicate matches)
{
    if (!properties)
        return nullptr;
    const auto found = std::find_if(properties->begin(), properties->end(), matches);
    return found == properties->end() ? nullptr : *found;
}

}  // namespace

void KTVPlotixPlugIn::addProperties(const QStringList& propertyNames)
{
    bool added = false;
    for (const QString& name : propertyNames) {
        const bool isPlotted = firstProperty(m_properties, [&](const KTVPropertyPtr& plotted) {
                                   return plotted->propertyName() == name;
                               }) != nullptr;
        const KTVPropertyPtr property = isPlotted ? nullptr : agent()->properties().objectForKey(name);
        if (!property)  // plotted already, or a key that this agent does not have
            continue;
        added = true;
        if (!m_properties)
            m_properties.emplace();
        m_properties->push_back(property);
        observeProperty(*property);
    }
    if (added)
        refresh(nullptr);
}

bool KTVPlotixPlugIn::removePropertiesAndRefresh(const QStringList& names)
{
    for (const QString& name : names) {
        const KTVPropertyPtr property =
            firstProperty(m_properties, [&](const KTVPropertyPtr& plotted) { return plotted->name() == name; });
        if (!property)
            continue;
        // "color" stays observed. Its notice finds no plot and no row, but re-adds the rows in displayed order.
        property->removeObserver(this, QStringLiteral("unit"));
        std::erase(*m_properties, property);
        removePlotOfProperty(property->propertyName());
        removeRowNamed(property->name());
    }
    return true;
}

void KTVPlotixPlugIn::removePlotOfProperty(const QString& propertyName)
{
    const CPTXYGraphPtr hostedGraph = m_hostView ? m_hostView->hostedGraph() : nullptr;
    if (!hostedGraph)
        return;
    if (const CPTScatterPlotPtr plot = hostedGraph->plotWithIdentifier(propertyName))
        hostedGraph->removePlot(plot);
}

void KTVPlotixPlugIn::removeRowNamed(const QString& tableName)
{
    if (!m_infoTableArrayController)
        return;
    const auto found = std::find_if(m_infoTableArray->begin(), m_infoTableArray->end(),
                                    [&](const InfoTableRowPtr& row) { return row->tableName == tableName; });
    if (found != m_infoTableArray->end())
        m_infoTableArrayController->removeObject(InfoTableRowPtr(*found));
}

void KTVPlotixPlugIn::markDeletedRows(const std::vector<std::size_t>& indexes)
{
    m_deletionArray.clear();
    if (!m_infoTableArrayController)
        return;
    const InfoTableArray& rows = m_infoTableArrayController->arrangedObjects();
    std::vector<std::size_t> ascending = indexes;
    std::sort(ascending.begin(), ascending.end());
    for (const std::size_t index : ascending)
        if (index < rows.size())
            m_deletionArray.append(rows[index]->tableName);
}

bool KTVPlotixPlugIn::removeDeletedRows()
{
    return removePropertiesAndRefresh(m_deletionArray);
}

QString KTVPlotixPlugIn::dragType() const
{
    return agent()->uniqueIdentifier();
}

quint64 KTVPlotixPlugIn::draggingEntered(QObject* /*sender*/)
{
    return kEveryDragOperation;
}
