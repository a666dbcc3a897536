#include "hostapp/demo/DemonstrationSite.h"
#include "hostapp/core/DataFolder.h"

#include "base/ReportableError.h"
#include "hostapp/demo/WeatherStation.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr std::int64_t kMinutesPerBlock = 30 * 1440;

std::int64_t minuteOf(double seconds)
{
    return static_cast<std::int64_t>(std::floor(seconds / 60));
}

RecordBlock simulate(std::uint64_t seed, std::int64_t first, std::int64_t end, const std::vector<RowId>& properties)
{
    const auto count = static_cast<std::size_t>(end - first);
    std::vector<double> times(count);
    std::vector<std::vector<double>> values(kStationQuantities, std::vector<double>(count));
    std::vector<std::vector<std::uint64_t>> valid(kStationQuantities, std::vector<std::uint64_t>((count + 63) / 64));
    for (std::size_t row = 0; row < count; ++row) {
        const std::int64_t minute = first + static_cast<std::int64_t>(row);
        const StationRecord record = stationRecord(seed, minute);
        times[row] = static_cast<double>(minute) * 60;
        for (std::size_t index = 0; index < kStationQuantities; ++index) {
            values[index][row] = record.values[index];
            valid[index][row / 64] |= std::uint64_t{record.valid[index]} << (row % 64);
        }
    }
    RecordBlock block;
    block.times = SharedArray<double>::fromVector(std::move(times));
    for (std::size_t index = 0; index < kStationQuantities; ++index)
        block.columns.push_back({properties[index], SharedArray<double>::fromVector(std::move(values[index])),
                                 ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(valid[index])))});
    return block;
}

/// Stores the minutes [first, end) in one transaction; answers how many there were.
std::size_t storeMinutes(SiteTransaction& transaction, RowId agent, std::uint64_t seed, std::int64_t first,
                         std::int64_t end, const StationProgress& progress)
{
    if (first >= end)
        return 0;
    std::vector<RowId> properties;
    for (const StationChannel& channel : kStationChannels)
        properties.push_back(transaction
                                 .findOrCreateProperty(agent,
                                                       QString::fromUtf8(channel.name.data(), std::ssize(channel.name)),
                                                       QString::fromUtf8(channel.unit.data(), std::ssize(channel.unit)))
                                 .id);
    for (std::int64_t minute = first; minute < end; minute += kMinutesPerBlock) {
        const std::int64_t blockEnd = std::min(end, minute + kMinutesPerBlock);
        transaction.records().store(agent, simulate(seed, minute, blockEnd, properties));
        const double fraction = static_cast<double>(blockEnd - first) / static_cast<double>(end - first);
        if (progress && !progress(fraction))
            throw ReportableError(QStringLiteral("the demonstration site was not brought up to date: cancelled"));
    }
    transaction.commit();
    return static_cast<std::size_t>(end - first);
}

void removeSite(const QString& path)
{
    for (const char* ending : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(ending));
}

/// Removes the half-built file unless it was finished.
class UnfinishedSite {
public:
    explicit UnfinishedSite(QString path) : m_path(std::move(path)) { removeSite(m_path); }
    ~UnfinishedSite()
    {
        if (!m_path.isEmpty())
            removeSite(m_path);
    }
    UnfinishedSite(const UnfinishedSite&) = delete;
    UnfinishedSite& operator=(const UnfinishedSite&) = delete;

    const QString& path() const { return m_path; }

    /// False when the name is taken: somebody else was faster.
    bool finishAs(const QString& path)
    {
        if (!QFile::rename(m_path, path))
            return false;
        m_path.clear();
        return true;
    }

private:
    QString m_path;
};

std::size_t buildSite(const QString& path, const DemonstrationOptions& options, const StationProgress& progress)
{
    SiteTransaction transaction(path, QStringLiteral("Demonstration Site"));
    const RowId agent = transaction.findOrCreateAgent(QLatin1String(kStationAgentName));
    const std::int64_t end = minuteOf(options.now.seconds) + 1;
    const std::int64_t first = end - std::max<std::int64_t>(minuteOf(options.history), 1);
    return storeMinutes(transaction, agent, options.seed, first, end, progress);
}

}  // namespace

const std::vector<SuggestedTrend>& suggestedTrends()
{
    static const std::vector<SuggestedTrend> trends = {
        {QStringLiteral("Air and Dew Point"),
         {QStringLiteral("airTemperature"), QStringLiteral("dewPoint")},
         KTVQuickRange::Last7Days},
        {QStringLiteral("Wind and Gusts"),
         {QStringLiteral("windGust"), QStringLiteral("windSpeed")},
         KTVQuickRange::Last24Hours},
        {QStringLiteral("Pressure"), {QStringLiteral("pressure")}, KTVQuickRange::Last30Days},
    };
    return trends;
}

QString demonstrationSitePath(const DemonstrationOptions& options)
{
    return QDir(options.folder.isEmpty() ? dataFolder() : options.folder)
        .absoluteFilePath(QStringLiteral("Demonstration.plotix"));
}

DemonstrationSite openDemonstrationSite(const DemonstrationOptions& options, const StationProgress& progress,
                                        const std::function<void(const QString& path)>& decorate)
{
    DemonstrationSite site{demonstrationSitePath(options), false, 0};
    if (!QFileInfo::exists(site.path)) {
        const QString folder = QFileInfo(site.path).path();
        if (!QDir().mkpath(folder))
            throw ReportableError(
                QStringLiteral("the folder %1 cannot be made; set PLOTIX_DATA_HOME to one that can").arg(folder));
        UnfinishedSite unfinished(
            QStringLiteral("%1/building-%2.plotix").arg(folder).arg(QCoreApplication::applicationPid()));
        site.records = buildSite(unfinished.path(), options, progress);
        if (decorate)
            decorate(unfinished.path());
        site.created = unfinished.finishAs(site.path);
        if (site.created)
            return site;
        if (!QFileInfo::exists(site.path))
            throw ReportableError(QStringLiteral("%1 cannot be written").arg(site.path));
    }
    site.records = fillInStation(site.path, options.now, options.seed, progress);
    return site;
}

std::size_t fillInStation(const QString& path, Date now, std::uint64_t seed, const StationProgress& progress)
{
    if (!QFileInfo::exists(path))
        throw ReportableError(QStringLiteral("%1 is not there").arg(path));
    SiteTransaction transaction(path);
    const RowId agent = transaction.findOrCreateAgent(QLatin1String(kStationAgentName));
    const std::optional<RecordExtent> before = transaction.storedRecords()->extent(agent);
    const std::int64_t end = minuteOf(now.seconds) + 1;
    const std::int64_t first = before ? minuteOf(before->last) + 1 : end - 1;
    return storeMinutes(transaction, agent, seed, first, end, progress);
}

}  // namespace plotix
