#include "tests/hostapp/cli/SiteOnServerFixture.h"

namespace plotix {

namespace {

/// The same site on two shards.
class SiteOnShardsServerTest : public SiteOnServerTest {
protected:
    SiteOnShardsServerTest() : SiteOnServerTest(ServerForTests::running().newSiteOnShards()) {}

    QByteArray exportedBoth(const QString& file)
    {
        QByteArray both;
        for (const char* agent : {"EWR", "Another"}) {
            EXPECT_EQ(run({"export", file, "--agent", agent, "--output", path("exported.csv")}), 0)
                << m_error.toStdString();
            both += contents(path("exported.csv"));
        }
        return both;
    }
    /// Two agents.
    void importTwo()
    {
        importWeather();
        ASSERT_EQ(run({"import", path("data.csv"), "--site", site(), "--agent", "Another"}), 0)
            << m_error.toStdString();
    }
};

TEST_F(SiteOnShardsServerTest, ASiteComesBackAsItWas)
{
    importTwo();
    create();
    copyThere();
    ASSERT_EQ(run({"copy", address, path("back.plotix")}), 0) << m_error.toStdString();
    EXPECT_EQ(exportedBoth(path("back.plotix")), exportedBoth(site()));
}

TEST_F(SiteOnShardsServerTest, ItIsDescribedShardByShard)
{
    importTwo();
    create();
    copyThere();
    ASSERT_EQ(run({"store", "info", address}), 0) << m_error.toStdString();
    EXPECT_EQ(m_output.count("\nAgents           1\n"), 2) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("\nShard 2          127.0.0.1:")) << m_output.toStdString();
}

TEST_F(SiteOnShardsServerTest, OneThatIsLostIsToldAndTheOtherDescribed)
{
    create();
    const QString lost = address.section(QLatin1Char('+'), 0, 0) + QStringLiteral("+127.0.0.1:1/") +
                         address.section(QLatin1Char('/'), 3);
    ASSERT_EQ(run({"store", "info", lost}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("“127.0.0.1:1/plotix/site")) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("\nAgents           0\n")) << m_output.toStdString();
}

TEST_F(SiteOnShardsServerTest, ThePrintedStatementsMakeIt)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "which statement goes to which host is nothing for a test";
    importTwo();
    ASSERT_EQ(run({"store", "create", address, "--print"}), 0) << m_error.toStdString();
    for (int again = 0; again < 2; ++again)
        for (const QString& line : QString(m_output).split(QLatin1Char('\n')))
            if (!line.startsWith(QLatin1String("--")) && !line.isEmpty())
                tell(line);
    copyThere();
    EXPECT_EQ(exportedBoth(address), exportedBoth(site()));
}

TEST_F(SiteOnShardsServerTest, AddingOneIsSaid)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "its hosts have other shards";
    create();
    const QString three = QString(address).replace(
        QLatin1Char('+'), QStringLiteral("+127.0.0.1:%1+").arg(ServerForTests::running().port()));
    ASSERT_EQ(run({"store", "create", three}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("There are 3 shards instead of 2 now: ")) << m_output.toStdString();
    expectFailure({"store", "drop", address, "--yes-remove", address.section('/', -1)}, 1, "has 3 shards");
}

}  // namespace

}  // namespace plotix
