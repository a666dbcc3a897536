#include "hostapp/document/SiteSchema.h"

#include "hostapp/document/KeptTables.h"
#include "storage/Database.h"

#include <QtCore/QFileInfo>

namespace plotix {

namespace {

constexpr int kApplicationId = 0x506C7478;  // "Pltx"
constexpr int kVersion = 9;
constexpr int kPageSize = 16384;

constexpr SchemaPart::Table kTables[] = {{"site", 1},    {"agent", 1},       {"property", 1}, {"plugin", 1},
                                         {"setting", 1}, {"alias", 3},       {"step", 3},     {"kept", 3},
                                         {"formula", 4}, {"value_limit", 5}, {"note", 5},     {"note_property", 5}};

#define PLOTIX_TABLES_OF_VERSION_3                                                                                     \
    "CREATE TABLE alias(agent INTEGER NOT NULL, name TEXT NOT NULL, target INTEGER NOT NULL, "                         \
    "PRIMARY KEY(agent, name));"                                                                                       \
    "CREATE TABLE step(id INTEGER PRIMARY KEY AUTOINCREMENT, kind INTEGER NOT NULL, subject TEXT NOT NULL, "           \
    "time REAL NOT NULL, data BLOB NOT NULL);"                                                                         \
    "CREATE TABLE kept(id INTEGER PRIMARY KEY AUTOINCREMENT, step INTEGER NOT NULL, agent INTEGER NOT NULL, "          \
    "data BLOB NOT NULL);"                                                                                             \
    "CREATE INDEX kept_by_step ON kept(step);"

#define PLOTIX_TABLES_OF_VERSION_4                                                                                     \
    "CREATE TABLE formula(property INTEGER PRIMARY KEY, text TEXT NOT NULL, unit TEXT NOT NULL, "                      \
    "joins INTEGER NOT NULL, longest_gap REAL NOT NULL);"

#define PLOTIX_TABLES_OF_VERSION_5                                                                                     \
    "CREATE TABLE value_limit(id INTEGER PRIMARY KEY AUTOINCREMENT, property INTEGER NOT NULL, name TEXT NOT NULL, "   \
    "value REAL NOT NULL, unit TEXT NOT NULL, side INTEGER NOT NULL, severity INTEGER NOT NULL);"                      \
    "CREATE TABLE note(id INTEGER PRIMARY KEY AUTOINCREMENT, begin REAL NOT NULL, end REAL NOT NULL, "                 \
    "author TEXT NOT NULL, text TEXT NOT NULL, created REAL NOT NULL, modified REAL NOT NULL);"                        \
    "CREATE TABLE note_property(note INTEGER NOT NULL, property INTEGER NOT NULL, PRIMARY KEY(note, property));"

constexpr const char* kCreate = R"sql(
CREATE TABLE site(id INTEGER PRIMARY KEY CHECK(id = 1), name TEXT NOT NULL, location TEXT NOT NULL);
CREATE TABLE agent(id INTEGER PRIMARY KEY AUTOINCREMENT, identifier TEXT NOT NULL UNIQUE, name TEXT NOT NULL UNIQUE);
CREATE TABLE property(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, name TEXT NOT NULL,
    key TEXT NOT NULL, unit TEXT NOT NULL, archived_unit TEXT NOT NULL, color INTEGER NOT NULL,
    type INTEGER NOT NULL, visible INTEGER NOT NULL, UNIQUE(agent, key));
CREATE TABLE plugin(id INTEGER PRIMARY KEY AUTOINCREMENT, class_name TEXT NOT NULL, state BLOB NOT NULL);
CREATE TABLE setting(key TEXT PRIMARY KEY, value BLOB NOT NULL);
)sql" PLOTIX_TABLES_OF_VERSION_3 PLOTIX_TABLES_OF_VERSION_4 PLOTIX_TABLES_OF_VERSION_5;

constexpr SchemaPart::Step kSteps[] = {
    {3, PLOTIX_TABLES_OF_VERSION_3}, {4, PLOTIX_TABLES_OF_VERSION_4}, {5, PLOTIX_TABLES_OF_VERSION_5}};

}  // namespace

const DatabaseSchema& siteSchema()
{
    static const DatabaseSchema schema{kApplicationId, kVersion, kPageSize, {{kTables, kCreate, kSteps}, keptTables()}};
    return schema;
}

void createSiteFile(const QString& path, const QString& siteName)
{
    QString name = siteName.isEmpty() ? QFileInfo(path).completeBaseName() : siteName;
    name.replace(QLatin1Char('\''), QStringLiteral("''")).remove(QChar::Null);
    Database::create(path, siteSchema(), "INSERT INTO site VALUES(1, '" + name.toUtf8() + "', '')");
}

}  // namespace plotix
