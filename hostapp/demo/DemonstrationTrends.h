#pragma once

#include "hostapp/document/SiteDocument.h"

/// Keeps the demonstration's trends at the end of its records, which moves on between two starts of the program.
///
/// Free function; main thread. Throws ReportableError.
namespace plotix {

/// Moves the dates of every archived trend that ended at `lastBefore` (seconds since 1970-01-01 UTC, the last record
/// when the site was left) or later, so that it ends at the present last record and keeps its length. A trend that
/// ended earlier stays where it is, and so does one that ends later than the records. Answers how many moved.
int letTrendsFollow(SiteDocument& document, double lastBefore);

}  // namespace plotix
