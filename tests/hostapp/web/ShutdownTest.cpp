#include "tests/hostapp/web/ServedSites.h"

namespace plotix {
namespace {

using namespace std::chrono_literals;

class WebShutdownTest : public ServedSites {
protected:
    /// Clients whose requests have reached the plug-in, or wait behind one that has, while the main queue stands still.
    void startClients(int count)
    {
        for (int number = 0; number < count; ++number)
            m_clients.emplace_back([number, itsPort = port()] {  // some begin when the server has gone
                ask(itsPort, "GET", "/sites/plant/" + QByteArray::number(number) + "/one.png");
            });
        while (m_site->questionCount == 0)
            std::this_thread::sleep_for(1ms);
    }

    void TearDown() override
    {
        for (std::thread& client : m_clients)
            client.join();
    }

    std::vector<std::thread> m_clients;
};

TEST_F(WebShutdownTest, TheServerEndsWhileRequestsWaitForTheMainQueue)
{
    serve();
    startClients(8);
    m_server.reset();
    EXPECT_GE(m_site->renderingCount, 1);
}

TEST_F(WebShutdownTest, TheServerEndsAlsoInsideATaskOfTheMainQueue)
{
    serve();
    startClients(8);
    bool ended = false;
    MainQueue::main().async([&] {
        m_server.reset();
        ended = true;
    });
    MainQueue::main().runUntil([&ended] { return ended; });
    EXPECT_GE(m_site->renderingCount, 1);
}

TEST_F(WebShutdownTest, ASiteIsLeftInPeaceOnceItIsWithdrawn)
{
    serve();
    startClients(8);
    m_sites.withdraw(m_identifier);
    EXPECT_EQ(m_site.use_count(), 1);  // no request uses it any more, and no task on the main queue holds it
    const int asked = m_site->questionCount;
    EXPECT_EQ(get("/sites/plant/one.png").status, 404);
    EXPECT_EQ(m_site->questionCount, asked);
}

TEST_F(WebShutdownTest, TheServerEndsWithConnectionsThatSayNothing)
{
    serve();
    const RawClient silent(port());
    m_server.reset();
    EXPECT_TRUE(silent.isConnected());
}

TEST_F(WebShutdownTest, ThePortIsFreeAgainAtOnce)
{
    serve();
    const std::uint16_t before = port();
    EXPECT_EQ(get("/").status, 200);
    m_server.reset();
    m_server = std::make_unique<HttpServer>(m_sites, HttpAddress{QStringLiteral("127.0.0.1"), before}, QByteArray());
    EXPECT_EQ(get("/").status, 200);
}

TEST(OpenSitesTest, IdentifiersAreOneSegmentAndUnique)
{
    OpenSites sites;
    const auto site = std::make_shared<StubSite>();
    EXPECT_EQ(sites.add(QStringLiteral("nyc"), site), QStringLiteral("nyc"));
    EXPECT_EQ(sites.add(QStringLiteral("nyc"), site), QStringLiteral("nyc-2"));
    EXPECT_EQ(sites.add(QStringLiteral("My Plant/№ 1"), site), QStringLiteral("My-Plant-1"));
    EXPECT_EQ(sites.add(QStringLiteral("../.."), site), QStringLiteral("site"));
    EXPECT_EQ(sites.list().size(), 4u);
}

TEST(OpenSitesTest, WithdrawingAnUnknownSiteDoesNothing)
{
    OpenSites sites;
    sites.withdraw(QStringLiteral("nothing"));
    EXPECT_TRUE(sites.isEmpty());
}

}  // namespace
}  // namespace plotix
