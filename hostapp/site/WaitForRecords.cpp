#include "hostapp/site/WaitForRecords.h"

#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"

#include <QtCore/QEventLoop>

namespace plotix {

std::optional<QString> waitForRecords(const SiteAgent& agent)
{
    const ArchiveManager* archive = agent.siteArchiveManager();
    std::optional<QString> failure;
    QEventLoop loop;
    QObject::connect(archive, &ArchiveManager::fetchFailed, &loop, [&](const QString& message) { failure = message; });
    QObject::connect(archive, &ArchiveManager::fetchAnswered, &loop, [&] {
        if (archive->pendingFetches() == 0)
            loop.quit();
    });
    if (archive->pendingFetches() > 0)
        loop.exec();
    return failure;
}

void requireRecords(const SiteAgent& agent)
{
    if (const std::optional<QString> failure = waitForRecords(agent))
        throw ReportableError(*failure);
}

void requireUnpacked(const SiteAgent& agent)
{
    if (const std::optional<QString> failure = agent.siteArchiveManager()->unpackingFailure())
        throw ReportableError(*failure);
}

}  // namespace plotix
