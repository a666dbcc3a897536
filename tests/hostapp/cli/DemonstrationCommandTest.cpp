#include "hostapp/demo/DemonstrationSite.h"
#include "tests/hostapp/cli/CommandLineFixture.h"

#include <QtCore/QDir>

namespace plotix {

namespace {

/// The demonstration site of two years is built once for all of these.
class DemonstrationCommandTest : public CommandLineTest {
protected:
    static void SetUpTestSuite() { s_home = std::make_unique<QTemporaryDir>(); }
    static void TearDownTestSuite() { s_home.reset(); }
    void SetUp() override
    {
        qputenv("PLOTIX_DATA_HOME", s_home->path().toUtf8());
        m_before = QDir::currentPath();
        QDir::setCurrent(m_folder.path());
    }
    void TearDown() override
    {
        QDir::setCurrent(m_before);
        qunsetenv("PLOTIX_DATA_HOME");
    }

    static inline std::unique_ptr<QTemporaryDir> s_home;
    QString m_before;
};

TEST_F(DemonstrationCommandTest, IsBuiltOnceWithItsTrendsAndShown)
{
    ASSERT_EQ(run({}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.stored.size(), suggestedTrends().size());
    EXPECT_EQ(m_services.opened.at(0).site, demonstrationSitePath());
    m_services.stored.clear();
    ASSERT_EQ(run({"open"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_services.stored.empty());
    EXPECT_EQ(m_services.opened.size(), 2U);
}

TEST_F(DemonstrationCommandTest, IsDrawnIntoTwoFilesWithoutADisplay)
{
    m_services.display = false;
    ASSERT_EQ(run({}), 0) << m_error.toStdString();
    EXPECT_EQ(m_output.count(QLatin1Char('\n')), 2);
    EXPECT_EQ(contents(path("plotix-demonstration.png")), "a png");
    EXPECT_EQ(contents(path("plotix-demonstration.pdf")), "a pdf");
    EXPECT_TRUE(m_output.contains(QStringLiteral("plotix-demonstration.png")));
    EXPECT_TRUE(m_services.opened.empty());
}

}  // namespace

}  // namespace plotix
