#include "tests/hostapp/web/ServedSites.h"

#include <QtCore/QElapsedTimer>

#include <random>

namespace plotix {
namespace {

using namespace std::chrono_literals;

class HostileClientsTest : public ServedSites {
protected:
    void expectStillServing() { EXPECT_EQ(get("/sites/plant/one.png").status, 200); }

    /// Of so many clients of one address, who first all come and then all ask, those who get their answer.
    int answeredOf(int count, std::chrono::milliseconds between)
    {
        int good = 0;
        meanwhile([&] {
            std::vector<std::unique_ptr<RawClient>> clients;
            for (int number = 0; number < count; ++number)
                clients.push_back(std::make_unique<RawClient>(port()));
            std::this_thread::sleep_for(between);
            for (const auto& client : clients)
                client->send("GET / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
            for (const auto& client : clients)
                good += answerFrom(client->readAll()).status == 200 ? 1 : 0;
        });
        return good;
    }
};

TEST_F(HostileClientsTest, HugeHeadersAreRefused)
{
    serve();
    const Answer answer = get("/", "X-Large: " + QByteArray(100'000, 'a') + "\r\n");
    EXPECT_EQ(answer.status, 431);
    expectStillServing();
}

TEST_F(HostileClientsTest, LargeHeadersAreRefusedWithOurHeaders)
{
    serve();
    const Answer answer = get("/", "X-Large: " + QByteArray(30'000, 'a') + "\r\n");
    EXPECT_EQ(answer.status, 431);
    EXPECT_EQ(answer.header("X-Content-Type-Options"), "nosniff");
}

TEST_F(HostileClientsTest, AnEndlessAddressIsRefusedWithOurHeaders)
{
    serve();
    for (const int length : {9'000, 30'000}) {
        const Answer answer = get('/' + QByteArray(length, 'a'));
        EXPECT_EQ(answer.status, 414) << length;
        EXPECT_EQ(answer.header("X-Content-Type-Options"), "nosniff") << length;
    }
    EXPECT_EQ(get('/' + QByteArray(100'000, 'a')).status, 414);
    expectStillServing();
}

TEST_F(HostileClientsTest, ThousandsOfParametersAreRefusedAtOnce)
{
    serve();
    for (const int count : {300, 3'000, 20'000}) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(get("/?" + QByteArray("a&").repeated(count)).status, 414) << count;
        EXPECT_LT(timer.elapsed(), 5'000);
    }
    EXPECT_EQ(get("/?" + QByteArray("a=1&").repeated(100)).status, 200);
}

TEST_F(HostileClientsTest, ManyClientsOfOneAddressDoNotEndEachOther)
{
    serve();
    EXPECT_EQ(answeredOf(300, 300ms), 300);
}

TEST_F(HostileClientsTest, ThoseWhoJustCameAreNotEndedToMakeRoom)
{
    serve({.connections = 100, .silentForRoom = 20s, .untilRequest = 60s});
    EXPECT_EQ(answeredOf(140, 300ms), 140);
}

TEST_F(HostileClientsTest, NothingIsMadeForClientsThatHaveLeft)
{
    serve({.workers = 1});
    // The main queue does not run meanwhile: the first rendering waits for it, and the others behind the first.
    {
        std::vector<std::unique_ptr<RawClient>> clients;
        for (int number = 0; number < 30; ++number) {
            clients.push_back(std::make_unique<RawClient>(port()));
            clients.back()->send("GET /sites/plant/" + QByteArray::number(number) +
                                 "/one.png HTTP/1.1\r\nHost: localhost\r\n\r\n");
        }
        std::this_thread::sleep_for(500ms);  // until all of them wait
    }
    std::this_thread::sleep_for(200ms);  // until they are known to have left
    expectStillServing();
    EXPECT_LE(m_site->renderingCount, 3);
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
    serve({.connections = 24, .silentForRoom = 200ms});
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
