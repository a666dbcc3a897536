#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <QtCore/QTimeZone>

#include <optional>
#include <utility>

/// What a new trend begins with: its dates and its title. Values and free functions; any thread.
namespace plotix {

/// The span a new trend shows at first: the last seven days when the last record is that young, otherwise the seven
/// days that end with the day of the last record, so that the first look is never empty. No record: the last seven
/// days.
std::pair<Date, Date> rangeForNewTrend(std::optional<double> lastRecord, Date now, const QTimeZone& zone);

/// "Air Temperature", "Air Temperature and Pressure", "Air Temperature, Pressure and 3 more"; none: "New Trend".
QString titleForProperties(const KTVPropertyList& properties);

}  // namespace plotix
