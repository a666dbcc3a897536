#pragma once

#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/FigureRecipe.h"
#include "hostapp/site/TrendSpans.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

/// What a trend shows now, for figures, links and cases. Free functions; main thread only.
namespace plotix {

ShownView viewOf(const KTVPlugInPtr& trend, const SiteDocument& site);

/// Between the marks A and B of a trend, in order; nothing while one is not set.
std::optional<MomentSpan> markedSpan(const KTVPlugIn* trend);

}  // namespace plotix
