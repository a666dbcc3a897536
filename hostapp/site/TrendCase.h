#pragma once

#include "hostapp/document/CaseFile.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/TrendSpans.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

/// What goes into a case of a trend: whatever it takes to show it elsewhere as it is shown here. Free functions; main
/// thread only. `CaseFile.h` writes it.
namespace plotix {

/// A trend as it is now, over a span that need not be the one it shows: its properties, those that computed ones are
/// worked out from, of whatever agent, their limits, the notes about them in the span, and the spans of records that
/// all this takes, with those that the trend compares with.
CasePlan planOfCase(const KTVPlugIn& trend, const SiteDocument& document, const MomentSpan& span);

/// A trend as it is stored in a site.
struct CaseRequest {
    std::shared_ptr<SiteDocument> document;
    QString trend;                   ///< its title; empty: the only one
    std::optional<double> from, to;  ///< seconds since 1970-01-01 UTC; absent: as the trend has it
};

/// Makes the trend without its view. Throws ReportableError when there is no such trend, or the span is reversed.
CasePlan planOfStoredCase(const CaseRequest& request, KTVPlugInModule* module);

}  // namespace plotix
