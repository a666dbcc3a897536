#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

KTVPlugInModule::~KTVPlugInModule() = default;
