#include "hostapp/document/CaseFile.h"

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "hostapp/document/SiteStore.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <filesystem>
#include <system_error>

namespace plotix {

namespace {

using Reason = CaseProblem::Reason;

constexpr auto kCaseSetting = "case";  // stored: never change
constexpr auto kEnding = ".plotix";
constexpr auto kLogEnding = "-wal";

QString momentText(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(seconds * 1000)), Qt::UTC).toString(Qt::ISODate);
}

QString said(const CaseProblem& problem)
{
    switch (problem.reason) {
    case Reason::WrongEnding: return QStringLiteral("%1 must end in .plotix").arg(problem.path);
    case Reason::IsTheSite:
        return QStringLiteral("%1 is the site itself, which a case does not replace: choose another name")
            .arg(problem.path);
    case Reason::IsNoCase:
        return QStringLiteral("%1 exists and is not a case, so it is not written over: choose another name")
            .arg(problem.path);
    case Reason::IsInUse:
        return QStringLiteral("%1 is open, or was not closed properly: close it, or choose another name")
            .arg(problem.path);
    case Reason::NothingRecorded:
        return QStringLiteral("nothing was recorded between %1 and %2, so there is no case to make: choose another "
                              "span")
            .arg(momentText(problem.span.first), momentText(problem.span.second));
    case Reason::NotWritten: break;
    }
    return QStringLiteral("%1 cannot be written: %2").arg(problem.path, problem.detail);
}

bool isSameFile(const QString& one, const QString& other)
{
    std::error_code ignored;
    return std::filesystem::equivalent(one.toStdString(), other.toStdString(), ignored);
}

/// A site that is somebody's own is never written over.
bool isCase(const QString& path)
{
    try {
        Database database(path, siteSchema(), Database::Access::AtRest);
        return !SiteStore(database).setting(QLatin1String(kCaseSetting)).isEmpty();
    } catch (const ReportableError&) {
        return false;
    }
}

bool hasValues(const CasePlan& plan)
{
    for (const CasePlan::Agent& agent : plan.agents)
        for (const SiteProperty::Description& property : agent.properties)
            if (!property.formula &&
                plan.records->statistics(agent.id, property.id, plan.span.first, plan.span.second).valid > 0)
                return true;
    return false;
}

QByteArray originOf(const CasePlan& plan)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("site"), plan.siteName},
                                     {QStringLiteral("trend"), plan.trendTitle},
                                     {QStringLiteral("from"), momentText(plan.span.first)},
                                     {QStringLiteral("to"), momentText(plan.span.second)}})
        .toJson(QJsonDocument::Compact);
}

/// Rows of the site, and what they are in the case.
struct NewRows {
    std::map<qint64, RowId> agents, properties;
};

NewRows storeAgents(SiteStore& tables, const CasePlan& plan)
{
    NewRows rows;
    for (const CasePlan::Agent& agent : plan.agents) {
        const RowId made = tables.addAgentLike({0, agent.identifier, agent.name}).id;
        rows.agents[agent.id] = made;
        for (const SiteProperty::Description& property : agent.properties)
            rows.properties[property.id] = tables.addPropertyLike(made, property).id;
    }
    return rows;
}

void storeAnnotations(Database& database, const CasePlan& plan, const NewRows& rows)
{
    for (SiteLimit limit : plan.limits) {
        limit.id = 0;
        limit.property = rows.properties.at(limit.property);
        storeLimit(database, limit);
    }
    for (SiteNote note : plan.notes) {
        note.id = 0;
        std::erase_if(note.properties, [&rows](qint64 property) { return !rows.properties.contains(property); });
        for (qint64& property : note.properties)
            property = rows.properties.at(property);
        storeNote(database, note);
    }
}

/// Everything but the records.
NewRows storeSite(const QString& file, const CasePlan& plan)
{
    createSiteFile(file, plan.siteName);
    Database database(file, siteSchema(), Database::Access::ReadWrite);
    NewRows rows;
    inTransaction(database, [&] {
        SiteStore tables(database);
        tables.setSite({plan.siteName, plan.siteLocation});
        rows = storeAgents(tables, plan);
        storeAnnotations(database, plan, rows);
        tables.storePlugIn({0, plan.trend.className, plan.trend.state});
        tables.setSetting(QLatin1String(kCaseSetting), originOf(plan));
        if (!plan.siteZone.isEmpty())
            tables.setSetting(QLatin1String(kZoneKey), plan.siteZone);
    });
    return rows;
}

/// Of all agents; nothing when it was stopped.
std::optional<std::size_t> storeRecords(const QString& file, const CasePlan& plan, const NewRows& rows,
                                        const ArchiveProgress& progress)
{
    const std::shared_ptr<RecordStore> records = recordsOfSite(file);
    std::size_t copied = 0, done = 0;
    for (const CasePlan::Agent& agent : plan.agents) {
        RecordCopy copy{agent.id, rows.agents.at(agent.id), {}, agent.spans};
        for (const SiteProperty::Description& property : agent.properties)
            if (!property.formula)
                copy.properties[property.id] = rows.properties.at(property.id);
        const auto share = [&](double fraction) {
            return !progress || progress((static_cast<double>(done) + fraction) / double(plan.agents.size()));
        };
        const auto here = copyRecords(*plan.records, *records, copy, share);
        if (!here)
            return std::nullopt;
        copied += *here;
        ++done;
    }
    records->closeIdle();
    return copied;
}

/// One file without a log beside it, as it can be sent.
void close(const QString& file)
{
    {
        Database database(file, siteSchema(), Database::Access::ReadWrite);
        Statement(database, "PRAGMA wal_checkpoint(TRUNCATE)").run();
    }
    if (QFileInfo(file + QLatin1String(kLogEnding)).size() > 0)
        throw ReportableError(QStringLiteral("its log could not be merged; try again"));
}

void requirePlace(const CasePlan& plan, const QString& path)
{
    if (const auto problem = problemOfCase(plan, path))
        throw CaseFailure(*problem);
}

/// The folder that the file is made in stands beside its place, so that it can be moved there at once.
std::optional<CaseContents> write(const CasePlan& plan, const QString& path, const ArchiveProgress& progress)
{
    const QFileInfo place(path);
    const QTemporaryDir folder(place.absolutePath() + QStringLiteral("/.plotix-case-XXXXXX"));
    if (!folder.isValid())
        throw ReportableError(folder.errorString());
    const QString file = folder.filePath(place.fileName());  // errors name it
    const NewRows rows = storeSite(file, plan);
    const auto records = storeRecords(file, plan, rows, progress);
    if (!records)
        return std::nullopt;
    close(file);
    requirePlace(plan, path);
    std::error_code error;
    std::filesystem::rename(file.toStdString(), place.absoluteFilePath().toStdString(), error);
    if (error)
        throw ReportableError(QString::fromStdString(error.message()));
    return CaseContents{*records, rows.properties.size(), plan.notes.size(), QFileInfo(path).size()};
}

}  // namespace

CaseFailure::CaseFailure(CaseProblem problem) : ReportableError(said(problem)), m_problem(std::move(problem)) {}

std::optional<CaseProblem> problemOfCase(const CasePlan& plan, const QString& path)
{
    const QFileInfo there(path);
    if (!path.endsWith(QLatin1String(kEnding), Qt::CaseInsensitive))
        return CaseProblem{Reason::WrongEnding, path};
    if (isSameFile(path, plan.site))
        return CaseProblem{Reason::IsTheSite, path};
    if (QFileInfo::exists(path + QLatin1String(kLogEnding)))
        return CaseProblem{Reason::IsInUse, path};
    if (there.exists() && (!there.isFile() || (there.size() > 0 && !isCase(path))))
        return CaseProblem{Reason::IsNoCase, path};
    return std::nullopt;
}

std::optional<CaseContents> writeCase(const CasePlan& plan, const QString& path, const ArchiveProgress& progress)
{
    requirePlace(plan, path);
    if (!hasValues(plan))
        throw CaseFailure({Reason::NothingRecorded, path, plan.span});
    try {
        return write(plan, path, progress);
    } catch (const CaseFailure&) {
        throw;
    } catch (const ReportableError& error) {
        throw CaseFailure({Reason::NotWritten, path, plan.span, error.message()});
    }
}

}  // namespace plotix
