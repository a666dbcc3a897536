#include "hostapp/document/SiteDocument.h"
#include "records/store/RecordStore.h"
#include "tests/hostapp/cli/CommandLineFixture.h"
#include "tests/records/tables/PostgresForTests.h"

#include <QtCore/QSettings>

namespace plotix {

namespace {

/// `attach` and `detach` with tables of a database of this program's own.
class AttachOnServerTest : public CommandLineTest {
protected:
    AttachOnServerTest()
    {
        qputenv("PGUSER", "plant");
        PostgresForTests::running().tell("DROP TABLE IF EXISTS boiler");
        PostgresForTests::running().tell("CREATE TABLE boiler (at timestamptz, flow real, \"back °\" numeric)");
        PostgresForTests::running().tell("COPY boiler FROM STDIN", "2024-05-06 10:00:00+02\t61.5\t40\n"
                                                                   "2024-05-06 09:00:00Z\t\\N\t41\n"
                                                                   "2024-05-06 10:00:00Z\t62\t42.25\n");
    }
    ~AttachOnServerTest() override { qunsetenv("PGUSER"); }

    void attach(const QStringList& more = {})
    {
        ASSERT_EQ(run(QStringList{"attach", site(), address, "--table", "boiler"} + more), 0) << m_error.toStdString();
    }
    QByteArray exported(const QString& file)
    {
        EXPECT_EQ(run({"export", file, "--output", path("exported.csv")}), 0) << m_error.toStdString();
        return contents(path("exported.csv"));
    }

    const QString address = PostgresForTests::running().address();
};

TEST_F(AttachOnServerTest, ItsRowsAreRecordsOfTheSite)
{
    attach({"--unit", "flow=degC"});
    EXPECT_TRUE(m_output.startsWith("boiler shows the table boiler in /")) << m_output.toStdString();
    EXPECT_EQ(exported(site()), "time,flow (°C),back ° ()\n2024-05-06T08:00:00Z,61.5,40\n2024-05-06T09:00:00Z,,41\n"
                                "2024-05-06T10:00:00Z,62,42.25\n");
}

TEST_F(AttachOnServerTest, ADeskThatNeverNamedThePlaceDoesNotAskIt)
{
    attach();
    QSettings().remove(QStringLiteral("Tables/places"));
    expectFailure({"export", site(), "--output", path("exported.csv")}, 1, "which this desk has never asked");
    ASSERT_EQ(run({"attach", site(), address, "--list"}), 0) << m_error.toStdString();
    EXPECT_TRUE(exported(site()).contains("62,42.25"));
}

TEST_F(AttachOnServerTest, WhatThereIsIsListed)
{
    ASSERT_EQ(run({"attach", site(), address, "--table", "boiler", "--list"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("at  timestamp with time zone, time\n")) << m_output.toStdString();
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(AttachOnServerTest, WhatIsNotThereIsSaidWithWhatIs)
{
    expectFailure({"attach", site(), address, "--table", "boiler", "--values", "flow,rain"}, 1,
                  "there are flow, back °");
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(AttachOnServerTest, NobodyStoresIntoIt)
{
    attach();
    write("more.csv", "time,flow\n2024-05-07T00:00:00Z,1\n");
    expectFailure({"import", path("more.csv"), "--site", site(), "--agent", "boiler"}, 1, "“boiler” is read only");
    expectFailure({"edit", site(), "--agent", "boiler", "--property", "flow", "--remove", "--from", "2024-05-06"}, 1,
                  "“boiler” is read only");
}

TEST_F(AttachOnServerTest, PropertiesAreComputedFromIt)
{
    attach();
    ASSERT_EQ(run({"edit", site(), "--agent", "boiler", "--compute", "Twice = flow * 2"}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"info", site()}), 0);
    EXPECT_TRUE(m_output.contains("Twice, twice: 2 valid, 123 to 124")) << m_output.toStdString();
}

TEST_F(AttachOnServerTest, WhoAsksIsNotKept)
{
    attach();
    const QByteArray file = contents(site());
    EXPECT_TRUE(file.contains("postgresql:///"));
    EXPECT_FALSE(file.contains("user=plant"));
}

TEST_F(AttachOnServerTest, ADetachedTableIsBackWhenThatIsUndone)
{
    attach();
    const QByteArray before = exported(site());
    ASSERT_EQ(run({"detach", site(), "boiler"}), 0) << m_error.toStdString();
    expectFailure({"export", site(), "--output", path("none.csv")}, 1, "");
    ASSERT_EQ(run({"edit", site(), "--undo"}), 0) << m_error.toStdString();
    EXPECT_EQ(exported(site()), before);
}

TEST_F(AttachOnServerTest, ACopyShowsTheSameTable)
{
    attach();
    ASSERT_EQ(run({"copy", site(), path("copy.plotix")}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("1 agent shows a table of another database")) << m_output.toStdString();
    EXPECT_EQ(exported(path("copy.plotix")), exported(site()));
}

TEST_F(AttachOnServerTest, AnOpenSiteSeesWhatIsAttached)
{
    const auto document = SiteDocument::create(site());
    attach();
    document->catchUp();
    const auto agent = document->agentNamed("boiler");
    ASSERT_TRUE(agent);
    EXPECT_EQ(document->records()->statistics(agent->id(), agent->siteProperties()[1]->description().id).maximum,
              42.25);
    EXPECT_EQ(document->recordExtent()->second.seconds, 1714989600);
}

TEST_F(AttachOnServerTest, WithoutItsTableTheRestIsThere)
{
    importText("time,Air\n2024-05-06T08:00:00Z,7\n");
    attach();
    PostgresForTests::running().tell("DROP TABLE boiler");
    ASSERT_EQ(run({"info", site()}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("Air, air: 1 valid")) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("cannot be read: ")) << m_output.toStdString();
}

}  // namespace

}  // namespace plotix
