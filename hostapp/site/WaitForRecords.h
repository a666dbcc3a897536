#pragma once

#include "hostapp/document/SiteDocument.h"

#include <optional>

/// Waiting for the records that views have asked for. Free functions; main thread only.
namespace plotix {

/// Runs the event loop until every fetch of the agent has been answered and the views have its records. Answers the
/// message for people when a fetch failed.
std::optional<QString> waitForRecords(const SiteAgent& agent);

/// The same; throws ReportableError when a fetch failed.
void requireRecords(const SiteAgent& agent);

/// After something was drawn or printed: throws ReportableError where records of it could not be unpacked.
void requireUnpacked(const SiteAgent& agent);

}  // namespace plotix
