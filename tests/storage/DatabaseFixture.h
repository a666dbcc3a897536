#pragma once

#include "storage/Database.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

/// A database of made-up tables, a shop and its stock, in a folder that goes away with the fixture.
class DatabaseFixture : public testing::Test {
protected:
    using Access = plotix::Database::Access;

    DatabaseFixture() { plotix::Database::create(file(), schema(), "INSERT INTO shop VALUES(1, 'Corner')"); }

    static plotix::DatabaseSchema schema(int version = 3)
    {
        static constexpr plotix::SchemaPart::Table kShop[] = {{"shop", 1}};
        static constexpr plotix::SchemaPart::Table kStock[] = {{"ware", 1}, {"price", 2}};
        static constexpr plotix::SchemaPart::Step kSteps[] = {
            {2, "CREATE TABLE price(ware INTEGER PRIMARY KEY, cents INTEGER NOT NULL);"},
            {3, "INSERT INTO price SELECT id, 100 FROM ware WHERE id NOT IN (SELECT ware FROM price);"}};
        return {0x53686F70,
                version,
                16384,
                {{kShop, "CREATE TABLE shop(id INTEGER PRIMARY KEY, name TEXT NOT NULL);", {}},
                 {kStock,
                  "CREATE TABLE ware(id INTEGER PRIMARY KEY, name TEXT NOT NULL);"
                  "CREATE TABLE price(ware INTEGER PRIMARY KEY, cents INTEGER NOT NULL);",
                  kSteps}}};
    }

    QString file() const { return folder.filePath("shop.db"); }
    plotix::Database opened(Access access = Access::ReadWrite) const { return {file(), schema(), access}; }
    void run(const char* sql) const { opened().execute(sql); }
    qint64 ask(const char* sql) const
    {
        plotix::Database database = opened(Access::ReadOnly);
        plotix::Statement statement(database, sql);
        return statement.step() ? statement.integer(0) : -1;
    }
    void addWares(int count) const
    {
        plotix::Database database = opened();
        database.beginWriting();
        for (int i = 0; i < count; ++i)
            plotix::Statement(database, "INSERT INTO ware(name) VALUES(?)").bind(1, QString::number(i)).run();
        database.commit();
    }
    qint64 wares() const { return ask("SELECT count(*) FROM ware"); }

    QTemporaryDir folder;
};
