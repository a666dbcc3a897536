#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"

KTVSiteWindowController::~KTVSiteWindowController() = default;
