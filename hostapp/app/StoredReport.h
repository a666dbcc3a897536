#pragma once

#include "hostapp/cli/CommandServices.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// The printed report of a view that is stored in a site, made without a window. Free function; main thread only.
namespace plotix {

/// Makes the view as it was left, waits for its records and answers the report as a PDF file's bytes. The site stays as
/// it is stored. Throws ReportableError when there is no such view, or none that can be printed.
QByteArray pdfOfStoredReport(const ReportRequest& request, KTVPlugInModule* module);

}  // namespace plotix
