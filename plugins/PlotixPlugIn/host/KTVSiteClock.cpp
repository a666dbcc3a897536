#include "plugins/PlotixPlugIn/host/KTVSiteClock.h"

KTVSiteClock::~KTVSiteClock() = default;
KTVZonedAgent::~KTVZonedAgent() = default;
