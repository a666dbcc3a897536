#include "hostapp/document/SiteCopying.h"

#include "base/ReportableError.h"
#include "hostapp/document/RecordCopying.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteCatalogue.h"
#include "hostapp/document/SiteSchema.h"
#include "storage/Database.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <system_error>

namespace plotix {

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();
constexpr auto kEnding = ".plotix";
constexpr auto kInWork = ".copying";

struct Place {
    SiteCatalogue catalogue;
    std::shared_ptr<RecordStore> records;
};

Place source(const QString& from)
{
    if (!isServerAddress(from)) {
        if (!QFileInfo::exists(from))
            throw ReportableError(QStringLiteral("there is no site %1").arg(from));
        return {SiteCatalogue::ofFile(from), recordsOfSite(from)};
    }
    const std::shared_ptr<StoreServer> server = siteOnServer(from);
    Place place{SiteCatalogue::ofRows(server->rows()), nullptr};
    place.records = recordsOf(*server, place.catalogue);
    return place;
}

/// Whether the one is the other, or the beginning of it: ids are those of the same agents and properties.
bool isCopyOf(const SiteCatalogue& there, const SiteCatalogue& catalogue)
{
    for (const SiteCatalogue::Agent& agent : there.agents) {
        const auto same =
            std::find_if(catalogue.agents.begin(), catalogue.agents.end(), [&](const SiteCatalogue::Agent& each) {
                return each.id == agent.id && each.identifier == agent.identifier;
            });
        if (same == catalogue.agents.end())
            return false;
        for (const SiteProperty::Description& property : agent.properties)
            if (std::none_of(same->properties.begin(), same->properties.end(),
                             [&](const SiteProperty::Description& each) {
                                 return each.id == property.id && each.propertyName == property.propertyName;
                             }))
                return false;
    }
    return true;
}

std::vector<RowId> recordedOf(const SiteCatalogue::Agent& agent)
{
    std::vector<RowId> properties;
    for (const SiteProperty::Description& property : agent.properties)
        if (!property.formula)
            properties.push_back(property.id);
    return properties;
}

/// Of a property's valid values that are numbers.
struct Total {
    std::size_t valid = 0;
    double least = kEndless, greatest = -kEndless;
    ExactTotal sum;

    bool operator==(const Total& other) const
    {
        return valid == other.valid && least == other.least && greatest == other.greatest && sum == other.sum;
    }
};

struct Totals {
    std::size_t records = 0;
    std::vector<Total> properties;

    bool operator==(const Totals& other) const = default;
};

Totals totalsOf(RecordStore& records, RowId agent, const std::vector<RowId>& properties)
{
    Totals totals{0, std::vector<Total>(properties.size())};
    for (const RecordIndex::Piece& piece :
         records.index(agent, properties, {}, {}, RecordIndex::Detail::Pieces).pieces) {
        totals.records += piece.records;
        for (std::size_t i = 0; i < properties.size(); ++i) {
            const ColumnIndex& index = piece.columns[i].index;
            Total& total = totals.properties[i];
            total.sum.add(index.sum);
            if (index.whole.valid == 0)
                continue;
            total.valid += index.whole.valid;
            total.least = std::min(total.least, index.whole.least.value);
            total.greatest = std::max(total.greatest, index.whole.greatest.value);
        }
    }
    return totals;
}

/// Nothing when it was stopped.
std::optional<std::size_t> copyAgents(const Place& from, RecordStore& to, bool& wentOn, const ArchiveProgress& progress)
{
    const auto& agents = from.catalogue.agents;
    std::size_t copied = 0;
    for (std::size_t place = 0; place < agents.size(); ++place) {
        const SiteCatalogue::Agent& agent = agents[place];
        const std::vector<RowId> properties = recordedOf(agent);
        RecordCopy copy{agent.id, agent.id, {}, {{-kEndless, kEndless}}, {}};
        for (const RowId property : properties)
            copy.properties[property] = property;
        // Parts are stored in the order of time, so that whatever is before the last record is there.
        if (const std::optional<RecordExtent> there = to.extent(agent.id)) {
            copy.from = there->last;
            wentOn = true;
        }
        const auto share = [&](double fraction) {
            return !progress || progress((static_cast<double>(place) + fraction) / static_cast<double>(agents.size()));
        };
        if (!copyRecords(*from.records, to, copy, share))
            return std::nullopt;
        const Totals wanted = totalsOf(*from.records, agent.id, properties);
        if (!(totalsOf(to, agent.id, properties) == wanted))
            throw ReportableError(
                QStringLiteral("the records of “%1” are not the same in the copy: something was stored "
                               "in one of the two meanwhile, or before; copy to another place")
                    .arg(agent.name));
        copied += wanted.records;
    }
    if (progress)
        progress(1);
    return copied;
}

std::size_t propertiesOf(const SiteCatalogue& catalogue)
{
    std::size_t count = 0;
    for (const SiteCatalogue::Agent& agent : catalogue.agents)
        count += agent.properties.size();
    return count;
}

std::size_t attachedIn(const SiteCatalogue& catalogue)
{
    return static_cast<std::size_t>(std::count_if(catalogue.agents.begin(), catalogue.agents.end(),
                                                  [](const auto& agent) { return !agent.attached.isEmpty(); }));
}

/// What is there stays as it is: a desk may have changed it since it was copied. Nobody else writes meanwhile.
void putWhatIsNew(StoreServer& server, RecordStore& records, const SiteCatalogue& catalogue)
{
    const auto turn = records.begin();
    const std::vector<StoreServer::Row> there = server.rows();
    if (!isCopyOf(SiteCatalogue::ofRows(there), catalogue))
        throw ReportableError(QStringLiteral("%1 has another site: copy to a new one").arg(server.title()));
    std::vector<StoreServer::Row> fresh = catalogue.rows();
    std::erase_if(fresh, [&](const StoreServer::Row& row) {
        return std::any_of(there.begin(), there.end(),
                           [&](const StoreServer::Row& each) { return each.kind == row.kind && each.id == row.id; });
    });
    server.put(fresh);
}

std::optional<CopiedSite> copyToServer(const Place& from, const QString& to, const ArchiveProgress& progress)
{
    const std::shared_ptr<StoreServer> server = siteOnServer(to);
    const std::shared_ptr<RecordStore> records = recordsOf(*server, from.catalogue);
    putWhatIsNew(*server, *records, from.catalogue);
    CopiedSite result{from.catalogue.agents.size(), propertiesOf(from.catalogue), 0, attachedIn(from.catalogue), false};
    const auto copied = copyAgents(from, *records, result.wentOn, progress);
    if (!copied)
        return std::nullopt;
    result.records = *copied;
    return result;
}

/// One file without a log beside it.
void mergeLog(const QString& file)
{
    Database database(file, siteSchema(), Database::Access::ReadWrite);
    Statement(database, "PRAGMA wal_checkpoint(TRUNCATE)").run();
}

std::optional<CopiedSite> copyToFile(const Place& from, const QString& to, const ArchiveProgress& progress)
{
    if (!to.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive))
        throw ReportableError(QStringLiteral("%1 must end in .plotix").arg(to));
    if (QFileInfo::exists(to))
        throw ReportableError(QStringLiteral("%1 exists: choose another name, or move it away").arg(to));
    const QString inWork = to + QLatin1String(kInWork);
    if (!QFileInfo::exists(inWork))
        from.catalogue.makeFile(inWork);
    else if (!isCopyOf(SiteCatalogue::ofFile(inWork), from.catalogue))
        throw ReportableError(QStringLiteral("%1 is what was left of copying another site: remove it").arg(inWork));
    else
        from.catalogue.completeFile(inWork);
    CopiedSite result{from.catalogue.agents.size(), propertiesOf(from.catalogue), 0, attachedIn(from.catalogue), false};
    {
        const std::shared_ptr<RecordStore> records = recordsOfSite(inWork);
        const auto copied = copyAgents(from, *records, result.wentOn, progress);
        records->closeIdle();
        if (!copied)
            return std::nullopt;
        result.records = *copied;
    }
    mergeLog(inWork);
    std::error_code error;
    std::filesystem::rename(inWork.toStdString(), to.toStdString(), error);
    if (error)
        throw ReportableError(
            QStringLiteral("%1 cannot be given its name: %2").arg(inWork, QString::fromStdString(error.message())));
    return result;
}

}  // namespace

std::optional<CopiedSite> copySite(const QString& from, const QString& to, const ArchiveProgress& progress)
{
    const Place place = source(from);
    return isServerAddress(to) ? copyToServer(place, to, progress) : copyToFile(place, to, progress);
}

}  // namespace plotix
