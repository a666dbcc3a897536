#pragma once

#include "tests/records/RecordsFixture.h"
#include "tests/records/sqlite/SqliteFile.h"

/// Records in a file, with access to the file's tables.
class ArchiveFixture : public RecordsFixture {
protected:
    ArchiveFixture()
    {
        agent = addAgent("One");
        air = addProperty(agent, "air");
        wind = addProperty(agent, "wind");
    }

    std::shared_ptr<plotix::RecordStore> opened() override { return database.opened(); }

    QString file() const { return database.name(); }
    plotix::RowId addAgent(const QString& name) { return database.addAgent(name); }
    plotix::RowId addProperty(plotix::RowId owner, const QString& key) { return database.addProperty(owner, key); }
    void run(const char* sql) { database.run(sql); }
    qint64 ask(const char* sql) { return database.ask(sql); }

    SqliteFile database;
    QTemporaryDir& folder = database.folder;
};
