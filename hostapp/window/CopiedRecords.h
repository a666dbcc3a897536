#pragma once

#include "hostapp/document/SiteDocument.h"

#include <optional>
#include <utility>

/// Records of a span as a table of text, to be pasted into a letter or a spreadsheet. A free function; main thread
/// only.
namespace plotix {

constexpr qint64 kMostCopiedRecords = 200'000;  ///< more are for a file

/// Rows of times in local time, or that of another zone, and values, with tabs between them, every digit kept; `from`
/// and `to`: seconds since 1970-01-01 UTC. Empty: there are none. Throws ReportableError, also where there are too
/// many.
QString copiedRecords(SiteDocument& document, const SiteAgent& agent, const QStringList& keys,
                      const std::pair<double, double>& span, const QTimeZone& zone = {});

}  // namespace plotix
