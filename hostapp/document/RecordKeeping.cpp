#include "hostapp/document/RecordKeeping.h"

#include "base/ReportableError.h"
#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/document/SiteCatalogue.h"
#include "hostapp/document/SiteSchema.h"
#include "records/sqlite/SqliteRecordStore.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

std::shared_ptr<RecordStore> storeOf(const QString& site)
{
    if (const std::optional<QString> address = addressOfDeskFile(site))
        return recordsOf(*storeServer(*address), SiteCatalogue::ofFile(site));
    return std::make_shared<SqliteRecordStore>(site, siteSchema());
}

std::unique_ptr<RecordTransaction> joined(Database& site)
{
    if (isDeskFile(site.file()))
        throw ReportableError(
            QStringLiteral("This site stands on a server: it can be looked at and copied from here, but not changed."));
    return SqliteRecordStore::join(site);
}

}  // namespace

const RecordKeeping& recordKeeping()
{
    static const RecordKeeping keeping{&storeOf, &joined};
    return keeping;
}

std::shared_ptr<RecordStore> recordsOfSite(const QString& path)
{
    return recordKeeping().open(QFileInfo(path).absoluteFilePath());
}

}  // namespace plotix
