#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

KTVHelpManager::~KTVHelpManager() = default;

KTVHelpManager* KTVHelpManager::sharedHelpManager()
{
    return KTVHostServices::installed().helpManager;
}
