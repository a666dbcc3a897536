#pragma once

#include "hostapp/document/SiteDocument.h"

#include <optional>

/// Waiting for the records that views have asked for. Free functions; main thread only.
namespace plotix {

/// Runs the event loop until every fetch of the agent has been answered and what it brought is in place. Answers what
/// people are told where one of them failed.
std::optional<QString> waitForRecords(const SiteAgent& agent);

/// The same; throws ReportableError where one of them failed.
void requireRecords(const SiteAgent& agent);

}  // namespace plotix
