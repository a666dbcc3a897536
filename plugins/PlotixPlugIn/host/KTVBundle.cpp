#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

KTVBundle::~KTVBundle() = default;

KTVBundle* KTVBundle::mainBundle()
{
    return KTVHostServices::installed().mainBundle;
}
