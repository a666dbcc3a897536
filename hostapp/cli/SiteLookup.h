#pragma once

#include "hostapp/cli/RecordChoice.h"
#include "hostapp/document/SiteDocument.h"
#include "records/store/RecordStore.h"

/// Finds what a command's arguments name in a site: the document, an agent, properties, a span of time.
///
/// Main thread only. Each throws ReportableError for an unknown name and lists the known ones.
namespace plotix {

std::shared_ptr<SiteDocument> openSite(const QString& path);

/// For commands that make the site when there is none: a new one's name ends in .plotix.
void requireSiteName(const QString& path);

/// By name, whatever its case; without a name the only agent there is.
std::shared_ptr<SiteAgent> agentOf(const SiteDocument& document, const QString& name);

/// By name or key, whatever the case, in the order asked; without names all of the agent's.
std::vector<std::shared_ptr<SiteProperty>> propertiesOf(const SiteAgent& agent, const QStringList& names);

/// The bounds of a choice: what --from and --to say, else the quick range, else nothing (open).
struct TimeSpan {
    std::optional<double> from, to;
};
/// By the clocks of a zone; an invalid one is the user's.
TimeSpan timeSpanOf(const RecordChoice& choice, const std::optional<RecordExtent>& extent, const QTimeZone& zone = {});

}  // namespace plotix
