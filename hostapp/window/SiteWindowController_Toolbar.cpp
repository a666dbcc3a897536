// The plug-ins of the toolbar: one for each agent, made when it is missing, archived and let go of with the others.

#include "hostapp/site/ToolbarClass.h"
#include "hostapp/window/SiteWindowController.h"

#include <algorithm>

namespace plotix {

void SiteWindowController::adoptToolbarPlugIn(const KTVPlugInPtr& plugIn)
{
    m_toolbarPlugIns.push_back(plugIn);
}

void SiteWindowController::makeMissingToolbarPlugIns()
{
    const QString className = QString::fromLatin1(kToolbarClass);
    if (!m_module->classNames().contains(className))
        return;
    bool anyMade = false;
    for (const auto& agent : m_document->agents()) {
        const bool isThere = std::any_of(m_toolbarPlugIns.begin(), m_toolbarPlugIns.end(),
                                         [&](const KTVPlugInPtr& plugIn) { return plugIn->agent() == agent; });
        const KTVPlugInPtr made =
            isThere ? nullptr : m_module->instantiate(className, KTVPlugInModule::Arguments{agent, this, {}, {}, {}});
        if (!made)
            continue;
        adoptToolbarPlugIn(made);
        store(*made);
        made->didLoad();
        anyMade = true;
    }
    if (anyMade)
        emit toolbarPlugInsChanged();
}

void SiteWindowController::releaseToolbarPlugIns()
{
    for (const KTVPlugInPtr& plugIn : m_toolbarPlugIns)
        plugIn->willUnload();
    m_toolbarPlugIns.clear();
}

}  // namespace plotix
