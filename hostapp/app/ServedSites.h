#pragma once

#include "hostapp/cli/CommandServices.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// Serving sites without a window. Free function; main thread only.
namespace plotix {

/// Trends that the site's window followed end now here too, with the records stored since. Says the addresses once
/// every view has its records, then serves until SIGINT, SIGTERM or SIGHUP. Sites stay as they are stored. Throws
/// ReportableError: an address or port that cannot be had, a token that is missing or cannot be read.
void serveSites(const ServeRequest& request, KTVPlugInModule* module);

}  // namespace plotix
