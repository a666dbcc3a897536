#include "records/clickhouse/ServerAddress.h"

#include "base/ReportableError.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace plotix {

namespace {

QString refusal(const char* text)
{
    try {
        ServerAddress::parsed(QString::fromUtf8(text));
    } catch (const ReportableError& error) {
        return error.message();
    }
    return {};
}

TEST(ServerAddressTest, HasHostsInTheirOrderWithTheUsualPort)
{
    const ServerAddress address = ServerAddress::parsed("clickhouse://db1,db2:9123/plotix/plant");
    EXPECT_EQ(address.hosts, (std::vector<ServerAddress::Host>{{"db1", 8123}, {"db2", 9123}}));
    EXPECT_EQ(address.database, "plotix");
    EXPECT_EQ(address.site, "plant");
    EXPECT_FALSE(address.isSecure);
}

TEST(ServerAddressTest, IsWrittenAsItIsRead)
{
    for (const char* text :
         {"clickhouse://keeper@db1:8443,db2:8443/plotix/plant?secure=1", "clickhouse://[::1]:8123/a/b"})
        EXPECT_EQ(ServerAddress::parsed(text).text(), text);
}

TEST(ServerAddressTest, WhatIsNoneIsRefusedWithItsReason)
{
    EXPECT_TRUE(refusal("clickhouse:///plotix/plant").contains("it names no host"));
    EXPECT_TRUE(refusal("clickhouse://db/plotix").contains("it names no site"));
    EXPECT_TRUE(refusal("clickhouse://db/plo tix/x").contains("as a database has other characters"));
    EXPECT_TRUE(refusal("clickhouse://db:99999/a/b").contains("99999 is no port"));
    EXPECT_TRUE(refusal("clickhouse://db/a/b/c").contains("something stands behind the site"));
    EXPECT_TRUE(refusal("clickhouse://db/a/`b").contains("as a site has other characters"));
}

TEST(ServerAddressTest, APasswordIsNoPartOfIt)
{
    EXPECT_TRUE(refusal("clickhouse://me:secret@db/a/b").contains("does not belong into an address"));
    for (const char* text : {"clickhouse://me:secret@db/a/b", "clickhouse://me:secret@db/a/b?x=1",
                             "clickhouse://me:se/cret@db/a/b", "clickhouse://me:se?cret@db/a/b"})
        EXPECT_FALSE(refusal(text).contains("cret")) << text;
}

/// Where the password comes from.
class ServerCredentialsTest : public testing::Test {
protected:
    void keep(const QByteArray& text, QFileDevice::Permissions permissions)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.setPermissions(permissions);
        qputenv("PLOTIX_CLICKHOUSE_PASSWORD_FILE", name.toUtf8());
    }
    ~ServerCredentialsTest() override { qunsetenv("PLOTIX_CLICKHOUSE_PASSWORD_FILE"); }

    QTemporaryDir folder;
    const QString name = folder.filePath("password");
    const ServerAddress address = ServerAddress::parsed("clickhouse://me@db/a/b");
};

TEST_F(ServerCredentialsTest, ItIsTheFirstLineOfAFileOfOnesOwn)
{
    keep("secret\nmore\n", QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    EXPECT_EQ(ServerCredentials::of(address).password, "secret");
    EXPECT_EQ(ServerCredentials::of(address).user, "me");
}

TEST_F(ServerCredentialsTest, AFileThatOthersMayReadIsRefused)
{
    keep("secret\n", QFileDevice::ReadOwner | QFileDevice::ReadGroup);
    EXPECT_THROW(ServerCredentials::of(address), ReportableError);
}

}  // namespace

}  // namespace plotix
