#pragma once

#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <QtGui/QColor>

#include <optional>
#include <vector>

/// How limits are said and coloured, the same wherever a trend tells of them. Free functions; main thread only.
namespace plotix {

QColor limitColor(KTVLimit::Severity severity, bool onDark);

/// "alarm high 60 °C".
QString limitText(const KTVLimit& limit, const ValueTexts& texts, const QString& unitSymbol);

/// The limit that says most of a value: of those it is beyond the most severe one, among these the farthest one.
std::optional<KTVLimit> limitPassed(const std::vector<KTVLimit>& limits, double value);

/// The first upper, or lower, limit that a rising, or falling, value comes to.
std::optional<KTVLimit> innermostLimit(const std::vector<KTVLimit>& limits, KTVLimit::Side side);

}  // namespace plotix
