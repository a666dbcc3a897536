#include "plugins/PlotixPlugIn/host/KTVAgent.h"

KTVAgent::~KTVAgent() = default;

KTVPropertyPtr KTVPropertyCollection::objectForKey(const QString& propertyName) const
{
    for (const KTVPropertyPtr& property : m_properties)
        if (property && property->propertyName() == propertyName)
            return property;
    return nullptr;
}
