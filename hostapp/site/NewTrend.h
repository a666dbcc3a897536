#pragma once

#include "hostapp/site/TrendRequest.h"
#include "hostapp/site/WorthShowing.h"

#include <QtCore/QTimeZone>
#include <QtCore/QVariantMap>

#include <optional>
#include <utility>

/// What a new trend begins with: its properties, its dates and its title, whoever makes it. Values and free functions;
/// any thread, except where properties of an agent are read: the main thread.
namespace plotix {

/// Why the trend is made. The first records of an agent get a trend by themselves.
enum class TrendOccasion {
    Chosen,    ///< the user chose what it shows
    Imported,  ///< an agent's first records have been imported
    Selected,  ///< the same, and the user named the columns to import: all of them are shown
    Recorded,  ///< an agent's first records begin now, and no window shows them
    Watched    ///< the same, in a window
};

using TrendSpan = std::optional<std::pair<Date, Date>>;  ///< first and last record; nothing: there are none

struct TrendPlan {
    KTVPropertyList properties;
    Date from, to;
    QString title;
    bool isFollowed = false;   ///< it is followed from the beginning
    QVariantMap reading = {};  ///< choices of its reading, beyond those that every new trend has
};

/// The rule, for an agent of this name and (some of) its properties:
///   Chosen: the properties given, the last seven days that hold records, named after the properties.
///   Imported: those of all properties that are worth looking at together (`WorthShowing.h`), over all records, named
///     after the agent; without `extents` all that are drawn.
///   Recorded, Watched: what belongs on one axis, shares of the whole and the load beside them; where there is none of
///     these, what is drawn at all; named after the agent. Recorded: the hour that begins now. Watched: the last ten
///     minutes, followed.
TrendPlan planTrend(TrendOccasion occasion, const QString& agentName, const KTVPropertyList& properties,
                    const TrendSpan& records, Date now, const QTimeZone& zone,
                    const std::vector<ValueExtent>& extents = {});

/// The same of all the agent's properties, now, in the user's zone. Main thread only.
TrendPlan planFirstTrend(TrendOccasion occasion, const SiteAgent& agent, const TrendSpan& records = {},
                         const std::vector<ValueExtent>& extents = {});

/// The same for properties the user chose, of an agent with this last record. Main thread only.
TrendPlan planChosenTrend(const KTVPropertyList& properties, std::optional<double> lastRecord);

/// The same, made beside a trend that shows `shown` and has chosen `reading`: it shows the same times, if its agent has
/// records then, and says them by the same clock. Any thread.
TrendPlan planBeside(TrendPlan plan, const TrendSpan& shown, const QVariantMap& reading, const TrendSpan& records);

/// The request to the module for such a trend.
TrendRequest requestOf(std::shared_ptr<SiteDocument> document, std::shared_ptr<SiteAgent> agent, const TrendPlan& plan);

/// Whether the property is drawn without being asked for by name: it is visible to the user and of a type that is
/// plotted.
bool isDrawn(const KTVProperty& property);

/// The last seven days when the last record is that young, otherwise the seven days that end with the day of the last
/// record, so that a new trend is never empty. Without records: the last seven days.
std::pair<Date, Date> rangeForNewTrend(std::optional<double> lastRecord, Date now, const QTimeZone& zone);

/// "Air Temperature", "Air Temperature and Pressure", "Air Temperature, Pressure and 3 more"; none: "New Trend".
QString titleForProperties(const KTVPropertyList& properties);

}  // namespace plotix
