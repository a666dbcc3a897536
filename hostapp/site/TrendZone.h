#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QTimeZone>

/// By whose clocks a trend says its times. A free function; main thread only.
namespace plotix {

/// The zone that was chosen for the trend, or its site's; invalid: the user's, as for null and for what is no trend.
QTimeZone zoneOfTrend(const KTVPlugIn* trend);

}  // namespace plotix
