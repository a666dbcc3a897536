#pragma once

#include "records/sqlite/RecordSchema.h"
#include "records/sqlite/SqliteRecordStore.h"
#include "storage/Database.h"

#include <QtCore/QTemporaryDir>

#include <memory>

/// A file with the tables of records, and as much of a document's as a store of records looks at, in a folder that goes
/// away with it.
class SqliteFile {
public:
    SqliteFile() { plotix::Database::create(name(), schema()); }

    QString name() const { return folder.filePath("site.plotix"); }

    static const plotix::DatabaseSchema& schema()
    {
        static constexpr plotix::SchemaPart::Table kTables[] = {{"agent", 1}, {"property", 1}};
        static const plotix::DatabaseSchema schema{
            0x506C7478,
            9,
            16384,
            {{kTables,
              "CREATE TABLE agent(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL);"
              "CREATE TABLE property(id INTEGER PRIMARY KEY AUTOINCREMENT, agent INTEGER NOT NULL, key TEXT NOT NULL);",
              {}},
             plotix::schema::kRecordTables}};
        return schema;
    }

    plotix::Database open(plotix::Database::Access access = plotix::Database::Access::ReadWrite) const
    {
        return plotix::Database(name(), schema(), access);
    }
    std::shared_ptr<plotix::RecordStore> opened() const
    {
        return std::make_shared<plotix::SqliteRecordStore>(name(), schema());
    }

    plotix::RowId addAgent(const QString& named)
    {
        plotix::Database database = open();
        plotix::Statement(database, "INSERT INTO agent(name) VALUES(?)").bind(1, named).run();
        return database.lastInsertedRow();
    }
    plotix::RowId addProperty(plotix::RowId owner, const QString& key)
    {
        plotix::Database database = open();
        plotix::Statement(database, "INSERT INTO property(agent, key) VALUES(?, ?)").bind(1, owner).bind(2, key).run();
        return database.lastInsertedRow();
    }
    void run(const char* sql) { open().execute(sql); }
    qint64 ask(const char* sql)
    {
        plotix::Database database = open(plotix::Database::Access::ReadOnly);
        plotix::Statement statement(database, sql);
        return statement.step() ? statement.integer(0) : -1;
    }

    QTemporaryDir folder;
};
