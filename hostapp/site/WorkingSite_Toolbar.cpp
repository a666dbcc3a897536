// The plug-ins of the toolbar: one for each agent, made when it is missing, archived and released with the others.

#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/WorkingSite.h"

#include <algorithm>

namespace plotix {

void WorkingSite::makeMissingToolbarPlugIns()
{
    const QString className = QString::fromLatin1(kToolbarClass);
    if (!m_module->classNames().contains(className))
        return;
    bool anyMade = false;
    for (const auto& agent : m_document->agents()) {
        if (hasToolbarPlugInOf(agent))
            continue;
        const KTVPlugInPtr made = m_module->instantiate(className, {agent, this, {}, {}, {}});
        if (!made)
            continue;
        m_toolbarPlugIns.push_back(made);
        store(*made);
        made->didLoad();
        anyMade = true;
    }
    if (anyMade)
        emit toolbarPlugInsChanged();
}

bool WorkingSite::hasToolbarPlugInOf(const KTVAgentPtr& agent) const
{
    return std::any_of(m_toolbarPlugIns.begin(), m_toolbarPlugIns.end(),
                       [&agent](const KTVPlugInPtr& plugIn) { return plugIn->agent() == agent; });
}

}  // namespace plotix
