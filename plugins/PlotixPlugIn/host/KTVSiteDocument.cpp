#include "plugins/PlotixPlugIn/host/KTVSiteDocument.h"

KTVSiteDocument::~KTVSiteDocument() = default;
