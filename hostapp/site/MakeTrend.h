#pragma once

#include "hostapp/site/TrendRequest.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// Makes trend views from requests. Free functions; main thread only.
namespace plotix {

/// A trend for the request, its view not loaded; null when the module declines. Without a site window controller it
/// belongs to no site window.
KTVPlugInPtr makeTrend(KTVPlugInModule& module, const TrendRequest& trend,
                       KTVSiteWindowController* siteWindowController = nullptr);

/// The same; throws ReportableError when the module declines.
KTVPlugInPtr requireTrend(KTVPlugInModule& module, const TrendRequest& trend);

/// Archives a new trend view in the request's document, after the existing ones. Throws ReportableError.
void storeTrend(KTVPlugInModule& module, const TrendRequest& trend);

}  // namespace plotix
