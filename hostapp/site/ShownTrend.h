#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/FigureRecipe.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

/// What a trend shows now, for figures and links. A free function; main thread only.
namespace plotix {

ShownView viewOf(const KTVPlugInPtr& trend, const SiteDocument& site);

}  // namespace plotix
