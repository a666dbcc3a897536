#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstdint>
#include <functional>
#include <vector>

/// The demonstration site: a site document with one simulated weather station that is always up to date.
///
/// Free functions; any one thread, but `decorate` is called on the calling thread, which must be the main thread if it
/// opens a SiteDocument. They throw ReportableError.
namespace plotix {

/// A trend view to show the station with. The composition root makes it through the plug-in module.
struct SuggestedTrend {
    QString title;
    QStringList propertyNames;  ///< keys of the agent's properties, in order
    KTVQuickRange range;
};

/// In the order of the source list.
const std::vector<SuggestedTrend>& suggestedTrends();

/// The same on every machine, so that people can talk about the same weather. Stored in every site: never change.
inline constexpr std::uint64_t kDemonstrationSeed = 20'240'229;

/// The agent's name in the site. Stored: never change.
inline constexpr const char* kStationAgentName = "Weather Station";

struct DemonstrationOptions {
    QString folder;            ///< of the site document; empty: the user's data folder
    Date now = currentDate();  ///< the last record stands at the whole minute at or before it
    std::uint64_t seed = kDemonstrationSeed;
    double history = 731 * 86'400.0;  ///< seconds of records that a new site begins with
};

/// Answers false to stop; the site then stays as it was.
using StationProgress = std::function<bool(double fraction)>;

struct DemonstrationSite {
    QString path;
    bool created = false;     ///< made just now
    std::size_t records = 0;  ///< added just now
};

/// Where the site lies: PLOTIX_DATA_HOME if set, else the user's data folder, unless `options.folder` is given.
QString demonstrationSitePath(const DemonstrationOptions& options = {});

/// Makes the site when there is none, else adds the records since its last one. A new site appears whole or not at all:
/// it is built under a temporary name, handed to `decorate` (which may add trend views to the document at that path and
/// must close it again), and renamed.
DemonstrationSite openDemonstrationSite(const DemonstrationOptions& options, const StationProgress& progress = {},
                                        const std::function<void(const QString& path)>& decorate = {});

/// Brings the station in the site document at `path` up to `now`; answers the number of records added, 0 when no minute
/// has passed. With the seed it was built with, the station continues seamlessly: its records are those that building
/// it now would give. A site without the station gets one that begins at `now`.
std::size_t fillInStation(const QString& path, Date now, std::uint64_t seed = kDemonstrationSeed,
                          const StationProgress& progress = {});

}  // namespace plotix
