#include "tests/hostapp/cli/CommandLineFixture.h"

#include <QtCore/QDir>

#include <csignal>

namespace plotix {

namespace {

/// What compact and verify print and return; that they work is tested with the archive.
using CompactCommandTest = CommandLineTest;

TEST_F(CompactCommandTest, SaysWhatItDid)
{
    importWeather();
    ASSERT_EQ(run({"compact", site()}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("3 records kept, 0 dropped.\nChunks: ")) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("before, 1 now.\nSize: ")) << m_output.toStdString();
    EXPECT_EQ(m_output.count(QLatin1Char('\n')), 3);
}

TEST_F(CompactCommandTest, DropsOnlyWhatIsBeforeTheDateGiven)
{
    importWeather();
    ASSERT_EQ(run({"compact", site(), "--before", "2015-01-01T00:01:00Z"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("2 records kept, 1 dropped from before 2015-01-01T00:01:00Z.\n"))
        << m_output.toStdString();
}

TEST_F(CompactCommandTest, KeepsASpanThatEndsWithTheLastRecord)
{
    importWeather();
    ASSERT_EQ(run({"compact", site(), "--keep", "1h"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("1 record kept, 2 dropped from before 2015-01-01T23:00:00Z.\n"))
        << m_output.toStdString();
}

TEST_F(CompactCommandTest, ASpanToKeepNeedsAUnit)
{
    importWeather();
    expectFailure({"compact", site(), "--keep", "90"}, 2, QStringLiteral("needs a unit, such as 90d for days"));
}

TEST_F(CompactCommandTest, NotEveryRecordIsDropped)
{
    importWeather();
    expectFailure({"compact", site(), "--before", "2030-01-01"}, 1, QStringLiteral("would drop every record"));
    ASSERT_EQ(run({"verify", site()}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("No damage found. 3 records")) << m_output.toStdString();
}

TEST_F(CompactCommandTest, AnInterruptLeavesTheRecordsThere)
{
    importWeather();
    m_services.progress = [](double) {
        std::raise(SIGINT);
        return true;
    };
    expectFailure({"compact", site()}, 1, QStringLiteral("cancelled"));
    m_services.progress = {};
    ASSERT_EQ(run({"verify", site()}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("No damage found. 3 records, 5 values and ")) << m_output.toStdString();
}

TEST_F(CompactCommandTest, VerifyingAsksTheMemoryBudget)
{
    importWeather();
    ASSERT_EQ(run({"compact", site()}), 0) << m_error.toStdString();
    qputenv("PLOTIX_MEMORY_BUDGET", "100");
    expectFailure({"verify", site()}, 1, QStringLiteral("more than the memory budget"));
    qputenv("PLOTIX_MEMORY_BUDGET", "plenty");
    EXPECT_EQ(run({"verify", site()}), 0);
    qunsetenv("PLOTIX_MEMORY_BUDGET");
    EXPECT_TRUE(m_error.startsWith(QStringLiteral("plotix: PLOTIX_MEMORY_BUDGET is “plenty”")))
        << m_error.toStdString();
}

TEST_F(CompactCommandTest, SitesThatAreNotThereAreSaidToBe)
{
    for (const char* command : {"compact", "verify"})
        expectFailure({command, path("none.plotix")}, 1, QStringLiteral("there is no site"));
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(CompactCommandTest, FilesThatAreNoSitesAreRefusedAndKept)
{
    const QString foreign = write("foreign.plotix", "this is no site");
    for (const char* command : {"compact", "verify"})
        expectFailure({command, foreign}, 1, QStringLiteral("is not a Plotix site"));
    EXPECT_EQ(contents(foreign), "this is no site");
}

}  // namespace

}  // namespace plotix
