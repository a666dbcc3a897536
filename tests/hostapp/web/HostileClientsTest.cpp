#include "tests/hostapp/web/ServedSites.h"

#include <QtCore/QElapsedTimer>

#include <random>

namespace plotix {
namespace {

using namespace std::chrono_literals;

class HostileClientsTest : public ServedSites {
protected:
    void expectStillServing() { EXPECT_EQ(get("/sites/plant/one.png").status, 200); }
};

TEST_F(HostileClientsTest, HugeHeadersAreRefused)
{
    serve();
    const Answer answer = get("/", "X-Large: " + QByteArray(100'000, 'a') + "\r\n");
    EXPECT_EQ(answer.status, 431);
    expectStillServing();
}

TEST_F(HostileClientsTest, AnEndlessAddressIsRefused)
{
    serve();
    EXPECT_EQ(get('/' + QByteArray(100'000, 'a')).status, 414);
    expectStillServing();
}

TEST_F(HostileClientsTest, GarbageCostsItsOwnConnection)
{
    serve();
    meanwhile([&] {
        std::mt19937 random(7);
        for (int round = 0; round < 50; ++round) {
            RawClient client(port());
            QByteArray garbage(2000, '\0');
            for (char& byte : garbage)
                byte = static_cast<char>(random());
            client.send(garbage + "\r\n\r\n\r\n");
        }
    });
    expectStillServing();
}

TEST_F(HostileClientsTest, ABodyIsNotRead)
{
    serve();
    EXPECT_EQ(get("/", "Content-Length: 99999999999\r\n").status, 400);
    EXPECT_EQ(get("/", "Transfer-Encoding: chunked\r\n").status, 400);
    EXPECT_EQ(request("POST", "/", "Content-Length: 99999999999\r\n").status, 405);
}

TEST_F(HostileClientsTest, ASilentClientIsCutOff)
{
    serve({.untilRequest = 300ms});
    meanwhile([&] {
        RawClient client(port());
        EXPECT_TRUE(client.readAll().isEmpty());
        EXPECT_TRUE(client.isClosedByServer());
    });
}

TEST_F(HostileClientsTest, AClientThatDripsItsHeadersIsCutOffToo)
{
    serve({.untilRequest = 400ms});
    meanwhile([&] {
        RawClient client(port());
        QElapsedTimer timer;
        timer.start();
        client.send("GET / HTTP/1.1\r\nHost: localhost\r\n");
        while (timer.elapsed() < 15'000 && client.send("X: y\r\n") && client.readAll(50).isEmpty())
            if (client.isClosedByServer())
                break;
        EXPECT_LT(timer.elapsed(), 10'000);
    });
    expectStillServing();
}

TEST_F(HostileClientsTest, AClientThatDoesNotTakeItsAnswerIsCutOff)
{
    m_site->picture = QByteArray(20'000'000, 'x');
    serve({.untilTaken = 400ms});
    meanwhile([&] {
        RawClient client(port());
        client.send("GET /sites/plant/one.png HTTP/1.1\r\nHost: localhost\r\n\r\n");
        std::this_thread::sleep_for(1500ms);  // the client's laziness is what is tested
        EXPECT_LT(client.readAll().size(), m_site->picture.size());
    });
}

TEST_F(HostileClientsTest, StalledClientsDoNotKeepOthersOut)
{
    serve({.connections = 24, .connectionsPerAddress = 16});
    meanwhile([&] {
        std::vector<std::unique_ptr<RawClient>> stalled;
        for (int number = 0; number < 100; ++number) {
            stalled.push_back(std::make_unique<RawClient>(port()));
            stalled.back()->send("GET /sites/plant/one.png HTTP/1.1\r\nHo");
        }
        for (int number = 0; number < 5; ++number)
            EXPECT_EQ(ask(port(), "GET", "/sites/plant/one.png").status, 200);
    });
}

TEST_F(HostileClientsTest, ManyClientsAtOnceAreAllServed)
{
    serve();
    std::atomic<int> good = 0;
    meanwhile([&] {
        std::vector<std::thread> clients;
        for (int number = 0; number < 64; ++number)
            clients.emplace_back([&] {
                for (int round = 0; round < 10; ++round)
                    good += ask(port(), "GET", "/sites/plant/one.png").body == m_site->picture;
            });
        for (std::thread& client : clients)
            client.join();
    });
    EXPECT_EQ(good, 640);
}

TEST_F(HostileClientsTest, RequestsForTheSameThatWaitTogetherShareOneRendering)
{
    serve({.workers = 1});
    std::atomic<int> good = 0;
    // The main queue is held until every request waits: one is being answered, nine wait behind it.
    std::vector<std::thread> clients;
    for (int number = 0; number < 10; ++number)
        clients.emplace_back([&] { good += ask(port(), "GET", "/sites/plant/one.png").status == 200; });
    meanwhile([&] {
        for (std::thread& client : clients)
            client.join();
    });
    EXPECT_EQ(good, 10);
    EXPECT_LE(m_site->renderingCount, 10);
    EXPECT_GE(m_site->renderingCount, 1);
}

TEST_F(HostileClientsTest, AConnectionMayAskAgain)
{
    serve();
    meanwhile([&] {
        RawClient client(port());
        for (int round = 0; round < 3; ++round)
            client.send("HEAD /sites/plant/one.png HTTP/1.1\r\nHost: localhost\r\n\r\n");
        client.send("HEAD / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        const QByteArray answers = client.readAll();
        EXPECT_EQ(answers.count("HTTP/1.1 200"), 4) << answers.toStdString();
    });
}

TEST_F(HostileClientsTest, AClientThatLeavesWhileItsAnswerIsMadeHarmsNobody)
{
    serve();
    for (int round = 0; round < 20; ++round) {
        RawClient client(port());
        client.send("GET /sites/plant/one.png HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }
    expectStillServing();
}

TEST_F(HostileClientsTest, ARenderingThatFailsIsAnAnswerToo)
{
    class Failing : public StubSite {
        std::optional<WebRendering> rendering(const QUrl&) override { throw std::bad_alloc(); }
    };
    serve();
    m_sites.add(QStringLiteral("failing"), std::make_shared<Failing>());
    EXPECT_EQ(get("/sites/failing/one.png").status, 500);
    expectStillServing();
}

}  // namespace
}  // namespace plotix
