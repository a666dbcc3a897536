#include "plugins/PlotixPlugIn/host/KTVAmendments.h"

KTVAmendedAgent::~KTVAmendedAgent() = default;
