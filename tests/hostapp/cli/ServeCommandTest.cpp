#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

using ServeCommandTest = CommandLineTest;

TEST_F(ServeCommandTest, ServeListensOnThisMachineUnlessTold)
{
    importWeather();
    ASSERT_EQ(run({"serve", site()}), 0) << m_error.toStdString();
    const ServeRequest& request = m_services.served.at(0);
    EXPECT_EQ(request.documents.at(0)->path(), site());
    EXPECT_EQ(request.address, "127.0.0.1");
    EXPECT_EQ(request.port, 8123);
    EXPECT_TRUE(request.tokenFile.isEmpty());
    EXPECT_EQ(m_output, "http://127.0.0.1:8123/\n");
}

TEST_F(ServeCommandTest, ServeTakesSeveralSitesAddressPortAndToken)
{
    importWeather();
    ASSERT_EQ(run({"serve", site(), site(), "--bind", "0.0.0.0", "--port", "0", "--token-file", "token.txt"}), 0)
        << m_error.toStdString();
    const ServeRequest& request = m_services.served.at(0);
    EXPECT_EQ(request.documents.size(), 2u);
    EXPECT_EQ(request.address, "0.0.0.0");
    EXPECT_EQ(request.port, 0);
    EXPECT_EQ(request.tokenFile, "token.txt");
}

TEST_F(ServeCommandTest, ServeNeedsASiteAndAPort)
{
    expectFailure({"serve"}, 2, "SITE");
    expectFailure({"serve", site(), "--port", "65536"}, 2, "--port");
    expectFailure({"serve", path("nowhere.plotix")}, 1, "there is no site");
    EXPECT_TRUE(m_services.served.empty());
}

}  // namespace

}  // namespace plotix
