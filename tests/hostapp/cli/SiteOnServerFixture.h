#pragma once

#include "records/clickhouse/ServerConnection.h"
#include "tests/hostapp/cli/CommandLineFixture.h"
#include "tests/records/clickhouse/ServerForTests.h"

namespace plotix {

/// `store` and `copy` with a server of this program's own.
class SiteOnServerTest : public CommandLineTest {
protected:
    explicit SiteOnServerTest(const ServerAddress& at = ServerForTests::running().newSite()) : address(at.text())
    {
        qputenv("PLOTIX_DATA_HOME", m_folder.path().toUtf8());
    }
    ~SiteOnServerTest() override { qunsetenv("PLOTIX_DATA_HOME"); }

    void create() { ASSERT_EQ(run({"store", "create", address}), 0) << m_error.toStdString(); }
    void copyThere() { ASSERT_EQ(run({"copy", site(), address}), 0) << m_error.toStdString(); }
    QByteArray exported(const QString& file)
    {
        EXPECT_EQ(run({"export", file, "--output", path("exported.csv")}), 0) << m_error.toStdString();
        return contents(path("exported.csv"));
    }
    /// So many records of two properties, a second apart.
    void importMany(int records)
    {
        QByteArray text = "time,Air (°C),Wind (m/s)\n";
        for (int i = 0; i < records; ++i)
            text += QDateTime::fromSecsSinceEpoch(1'400'000'000 + i, Qt::UTC).toString(Qt::ISODate).toUtf8() + ',' +
                    QByteArray::number(i % 97 / 10.0) + ',' + (i % 7 == 0 ? QByteArray() : QByteArray::number(i)) +
                    '\n';
        importText(text);
    }
    void tell(const QString& statement)
    {
        ServerConnection(ServerAddress::parsed(address), {}).tell(statement.toStdString());
    }

    void goToAnotherDesk() { qputenv("PLOTIX_DATA_HOME", m_otherDesk.path().toUtf8()); }

    QTemporaryDir m_otherDesk;
    const QString address;
};

}  // namespace plotix
