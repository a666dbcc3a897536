#pragma once

#include "hostapp/document/SiteDocument.h"

/// Keeps the demonstration's trends at the end of its records, which moves on between two starts of the program.
///
/// Free function; main thread. Throws ReportableError.
namespace plotix {

/// Moves the dates of every archived trend that ended at `lastBefore` (seconds since 1970-01-01 UTC, the last record
/// when the site was left) or later, so that it ends at the last record there is now, as long as before. A trend that
/// was left in the past stays there, as does one that ends later than the records do. Answers how many moved.
int letTrendsFollow(SiteDocument& document, double lastBefore);

}  // namespace plotix
