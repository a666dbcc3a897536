#include "base/ReportableError.h"
#include "records/store/TableServer.h"
#include "records/tables/AnyTableServer.h"

#include <gtest/gtest.h>

namespace {

using plotix::AttachedTable;

TEST(AttachedTable, ReadsBackWhatWasKept)
{
    const AttachedTable table{
        QStringLiteral("postgresql://db/plant"), QStringLiteral("a.\"b\""), QStringLiteral("zeit"),
        AttachedTable::TimeUnit::Milliseconds,   QStringLiteral("tag"),     QStringLiteral("wert"),
        {{3, QStringLiteral("Kessel °C")}}};
    EXPECT_EQ(AttachedTable::of(table.bytes()), table);
}

TEST(AttachedTable, ALaterVersionIsRefused)
{
    EXPECT_THROW(AttachedTable::of(R"({"version":2})"), plotix::ReportableError);
}

TEST(AttachedTable, WhatIsNoDescriptionIsRefused)
{
    for (const char* bytes :
         {"", "[]", R"({"version":1})",
          R"({"version":1,"address":"a","table":"b","time":"c","timeUnit":"h","columns":{}})",
          R"({"version":1,"address":"a","table":"b","time":"c","timeUnit":"s","columns":{"-1":"x"}})"})
        EXPECT_THROW(AttachedTable::of(bytes), plotix::ReportableError) << bytes;
}

TEST(AttachedTable, AnAddressIsKeptWithoutItsUser)
{
    for (const auto& [address, kept] :
         {std::pair("postgresql://reader@db:1/plant?sslmode=require", "postgresql://db:1/plant?sslmode=require"),
          std::pair("postgresql:///plant?host=/tmp&user=reader", "postgresql:///plant?host=/tmp"),
          std::pair("postgresql:///plant?user=reader&host=/tmp", "postgresql:///plant?host=/tmp"),
          std::pair("clickhouse://reader@db/plant?secure=1", "clickhouse://db:8443/plant?secure=1")})
        EXPECT_EQ(plotix::tableServerAt(QString::fromLatin1(address))->address(), QLatin1String(kept));
}

TEST(AttachedTable, APasswordIsRefusedAndNotRepeated)
{
    for (const char* address : {"postgresql://reader:geheim@db/plant", "postgresql://db/plant?password=geheim",
                                "postgresql://reader:geheim@db:x/plant?y=z", "clickhouse://reader:geheim@db/plant"})
        try {
            plotix::tableServerAt(QString::fromLatin1(address));
            FAIL() << address;
        } catch (const plotix::ReportableError& error) {
            EXPECT_TRUE(error.message().contains(QLatin1String("assword"))) << error.what();
            EXPECT_FALSE(error.message().contains(QLatin1String("geheim"))) << error.what();
        }
}

TEST(AttachedTable, WhatIsNoAddressIsRefused)
{
    for (const char* address : {"mysql://db/plant", "clickhouse://db", "postgresql://db", "clickhouse://db/a/b"})
        EXPECT_THROW(plotix::tableServerAt(QString::fromLatin1(address)), plotix::ReportableError) << address;
}

}  // namespace
