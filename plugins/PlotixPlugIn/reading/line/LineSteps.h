#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/values/TrendLines.h"

#include <QtCore/QString>

#include <optional>
#include <vector>

/// Where the value line goes next. Free functions; main thread only.
namespace plotix {

enum class Step { Record, Pixel, Extreme, Maximum, Minimum, Gap, Limit, SameValue };
enum class Towards { Earlier, Later };

struct StepFrom {
    double time = 0;
    QString chosen;               ///< the line to follow; empty, or not shown: all, and the nearest place counts
    std::optional<double> value;  ///< for SameValue: what to come back to
};

/// Nothing: there is no such place. An extreme stands out by a twentieth of its lane's height on either side. A step to
/// the same value needs a line to follow.
std::optional<double> timeOfStep(const std::vector<TrendLine>& lines, const StepFrom& from, Step step, Towards towards,
                                 const plotkit::GraphGeometry& geometry);

}  // namespace plotix
