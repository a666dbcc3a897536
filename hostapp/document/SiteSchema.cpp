#include "hostapp/document/SiteSchema.h"

#include "hostapp/document/RecordKeeping.h"
#include "storage/Database.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

constexpr int kApplicationId = 0x506C7478;  // "Pltx"
constexpr int kVersion = 2;
constexpr int kPageSize = 16384;

constexpr SchemaPart::Table kTables[] = {{"site", 1}, {"agent", 1}, {"property", 1}, {"plugin", 1}, {"setting", 1}};

constexpr const char* kCreate = R"sql(
CREATE TABLE site(id INTEGER PRIMARY KEY CHECK(id = 1), name TEXT NOT NULL, location TEXT NOT NULL);
CREATE TABLE agent(id INTEGER PRIMARY KEY AUTOINCREMENT, identifier TEXT NOT NULL UNIQUE, name TEXT NOT NULL UNIQUE);
CREATE TABLE property(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, name TEXT NOT NULL,
    key TEXT NOT NULL, unit TEXT NOT NULL, archived_unit TEXT NOT NULL, color INTEGER NOT NULL,
    type INTEGER NOT NULL, visible INTEGER NOT NULL, UNIQUE(agent, key));
CREATE TABLE plugin(id INTEGER PRIMARY KEY AUTOINCREMENT, class_name TEXT NOT NULL, state BLOB NOT NULL);
CREATE TABLE setting(key TEXT PRIMARY KEY, value BLOB NOT NULL);
)sql";

}  // namespace

const DatabaseSchema& siteSchema()
{
    static const DatabaseSchema schema{
        kApplicationId, kVersion, kPageSize, {{kTables, kCreate, {}}, recordKeeping().tables}};
    return schema;
}

void createSiteFile(const QString& path, const QString& siteName)
{
    QString name = siteName.isEmpty() ? QFileInfo(path).completeBaseName() : siteName;
    name.replace(QLatin1Char('\''), QStringLiteral("''")).remove(QChar::Null);
    Database::create(path, siteSchema(), "INSERT INTO site VALUES(1, '" + name.toUtf8() + "', '')");
}

}  // namespace plotix
