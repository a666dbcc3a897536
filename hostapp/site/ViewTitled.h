#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <vector>

/// Finds a view by its title, for words typed by people. A free function; main thread only.
namespace plotix {

/// Whatever the case, unless the case tells two apart; an empty title means the only view there is. Throws
/// ReportableError that lists the titles and names `option`, by which one is chosen.
KTVPlugInPtr viewTitled(const std::vector<KTVPlugInPtr>& views, const QString& title, const QString& option);

}  // namespace plotix
