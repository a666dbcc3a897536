#include "base/ReportableError.h"
#include "tests/hostapp/web/ServedSites.h"

#include <QtCore/QTemporaryFile>

namespace plotix {
namespace {

class TokenTest : public ServedSites {
protected:
    void SetUp() override { serve({}, "open sesame+%"); }

    /// The cookie that an address with the token gives, ready to be sent back.
    QByteArray cookie() { return get("/?token=open%20sesame%2B%25").header("Set-Cookie").split(';').first(); }
};

TEST_F(TokenTest, WithoutItNothingIsShown)
{
    for (const char* target : {"/", "/sites/plant/", "/sites/plant/one.png", "/nothing", "/style.css"}) {
        const Answer answer = get(target);
        EXPECT_EQ(answer.status, 401) << target;
        EXPECT_EQ(answer.header("WWW-Authenticate"), "Bearer realm=\"Plotix\"") << target;
    }
    EXPECT_EQ(m_site->questionCount, 0);
}

TEST_F(TokenTest, TheBearerIsLetIn)
{
    EXPECT_EQ(get("/", "Authorization: Bearer open sesame+%\r\n").status, 200);
    EXPECT_EQ(get("/sites/plant/one.png", "authorization: bearer open sesame+%\r\n").status, 200);
}

TEST_F(TokenTest, AWrongTokenIsRefusedHoweverItComes)
{
    EXPECT_EQ(get("/", "Authorization: Bearer open sesame\r\n").status, 401);
    EXPECT_EQ(get("/", "Authorization: Basic open sesame+%\r\n").status, 401);
    EXPECT_EQ(get("/?token=open").status, 401);
    EXPECT_EQ(get("/?token=").status, 401);
    EXPECT_EQ(get("/", "Cookie: plotix-" + QByteArray::number(port()) + "=open sesame+%\r\n").status, 401);
}

TEST_F(TokenTest, AnAddressWithTheTokenIsExchangedForACookie)
{
    const Answer answer = get("/sites/plant/?token=open%20sesame%2B%25");
    EXPECT_EQ(answer.status, 303);
    EXPECT_EQ(answer.header("Location"), "/sites/plant/");
    const QByteArray set = answer.header("Set-Cookie");
    EXPECT_TRUE(set.contains("HttpOnly"));
    EXPECT_TRUE(set.contains("SameSite=Lax"));
    EXPECT_FALSE(set.contains("sesame"));
}

TEST_F(TokenTest, TheCookieLetsInAmongOthers)
{
    const QByteArray own = cookie();
    EXPECT_EQ(get("/", "Cookie: other=1; " + own + "; more=2\r\n").status, 200);
    EXPECT_EQ(get("/", "Cookie: x" + own + "\r\n").status, 401);
    EXPECT_EQ(get("/", "Cookie: " + own + "x\r\n").status, 401);
}

TEST_F(TokenTest, TheExchangeLeadsToNoOtherServer)
{
    EXPECT_EQ(get("//evil.example/?token=open%20sesame%2B%25").header("Location"), "/evil.example/");
}

TEST_F(TokenTest, GuessingIsEndedEvenForTheRightToken)
{
    for (int number = 0; number < 6; ++number)
        EXPECT_EQ(get("/?token=guess" + QByteArray::number(number)).status, 401);
    const Answer answer = get("/?token=open%20sesame%2B%25");
    EXPECT_EQ(answer.status, 429);
    EXPECT_EQ(answer.header("Retry-After"), "1");
    EXPECT_EQ(get("/", "Authorization: Bearer open sesame+%\r\n").status, 429);
    EXPECT_EQ(get("/").status, 401);  // no guess
}

TEST_F(TokenTest, WhoHasTheCookieIsLetInWhileOthersGuess)
{
    const QByteArray own = cookie();
    for (int number = 0; number < 10; ++number)
        get("/?token=guess");
    EXPECT_EQ(get("/", "Cookie: " + own + "\r\n").status, 200);
}

TEST_F(TokenTest, WithATokenAnyNameOfTheServerWillDo)
{
    EXPECT_EQ(get("/", "Host: plant.example\r\nAuthorization: Bearer open sesame+%\r\n").status, 200);
}

TEST(AccessTokenTest, ComparesWholeTexts)
{
    EXPECT_TRUE(equalInConstantTime("secret", "secret"));
    EXPECT_FALSE(equalInConstantTime("secret", "secre"));
    EXPECT_FALSE(equalInConstantTime("secret", "secrets"));
    EXPECT_FALSE(equalInConstantTime("secret", ""));
}

TEST(AccessTokenTest, AFileHoldsItInItsFirstLine)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("  the long token \nsomething else\n");
    file.close();
    EXPECT_EQ(AccessToken::readFrom(file.fileName()), "the long token");
}

TEST(AccessTokenTest, AShortOneIsAnError)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("12345678901\nwhat follows does not count\n");
    file.close();
    EXPECT_THROW(AccessToken::readFrom(file.fileName()), ReportableError);
}

TEST(AccessTokenTest, AnEmptyOrMissingFileIsAnError)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    EXPECT_THROW(AccessToken::readFrom(file.fileName()), ReportableError);
    EXPECT_THROW(AccessToken::readFrom(QStringLiteral("/no/such/file")), ReportableError);
}

TEST(HttpServerStartTest, OtherMachinesNeedAToken)
{
    OpenSites sites;
    EXPECT_THROW(HttpServer(sites, {QStringLiteral("0.0.0.0"), 0}, {}), ReportableError);
    EXPECT_THROW(HttpServer(sites, {QStringLiteral("::"), 0}, {}), ReportableError);
    EXPECT_GT(HttpServer(sites, {QStringLiteral("127.0.0.2"), 0}, {}).port(), 0);
}

TEST(HttpServerStartTest, SaysWhatIsWrongWithAnAddress)
{
    OpenSites sites;
    const HttpServer first(sites, {}, {});
    EXPECT_THROW(HttpServer(sites, {QStringLiteral("127.0.0.1"), first.port()}, {}), ReportableError);
    EXPECT_THROW(HttpServer(sites, {QStringLiteral("nowhere"), 0}, "token"), ReportableError);
    EXPECT_THROW(HttpServer(sites, {QStringLiteral("192.0.2.1"), 0}, "token"), ReportableError);
}

TEST(HttpServerStartTest, TheAddressIsWhatABrowserTakes)
{
    OpenSites sites;
    const HttpServer server(sites, {QStringLiteral("localhost"), 0}, {});
    EXPECT_EQ(server.url(), QStringLiteral("http://localhost:%1/").arg(server.port()));
}

TEST(HttpServerStartTest, KnowsLoopback)
{
    EXPECT_TRUE((HttpAddress{QStringLiteral("127.1.2.3"), 0}.isLoopback()));
    EXPECT_TRUE((HttpAddress{QStringLiteral("::1"), 0}.isLoopback()));
    EXPECT_TRUE((HttpAddress{QStringLiteral("localhost"), 0}.isLoopback()));
    EXPECT_FALSE((HttpAddress{QStringLiteral("0.0.0.0"), 0}.isLoopback()));
    EXPECT_FALSE((HttpAddress{QStringLiteral("::"), 0}.isLoopback()));
    EXPECT_FALSE((HttpAddress{QStringLiteral("localhost.example"), 0}.isLoopback()));
}

}  // namespace
}  // namespace plotix
