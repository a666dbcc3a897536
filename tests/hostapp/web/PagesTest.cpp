#include "tests/hostapp/web/ServedSites.h"

namespace plotix {
namespace {

class WebPagesTest : public ServedSites {
protected:
    void SetUp() override { serve(); }
};

TEST_F(WebPagesTest, TheFirstPageListsTheOpenSites)
{
    const Answer answer = get("/");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.header("Content-Type"), "text/html; charset=utf-8");
    EXPECT_TRUE(answer.body.contains("href=\"/sites/plant/\""));
    EXPECT_TRUE(answer.body.contains("The &lt;Site&gt;"));
}

TEST_F(WebPagesTest, WithoutASiteTheFirstPageSaysSo)
{
    m_sites.withdraw(m_identifier);
    EXPECT_TRUE(get("/").body.contains("No site is open"));
}

TEST_F(WebPagesTest, ASitesPageShowsPreviewsAndTheAdvertisement)
{
    const Answer answer = get("/sites/plant/");
    EXPECT_EQ(answer.status, 200);
    EXPECT_TRUE(answer.body.contains("<img src=\"one.png\" alt=\"First &amp; last\">"));
    EXPECT_TRUE(answer.body.contains("href=\"one.pdf\""));
    EXPECT_TRUE(answer.body.contains("<h2><a href=\"http://localhost/sites/plant/one.png\" target=\"_blank\">"));
    EXPECT_TRUE(answer.body.contains("name=\"viewport\""));
}

TEST_F(WebPagesTest, AdvertisedLinksBeginWithTheHostTheClientAskedFor)
{
    const Answer answer = get("/sites/plant/", "Host: 127.0.0.1:8123\r\n");
    EXPECT_TRUE(answer.body.contains("http://127.0.0.1:8123/sites/plant/one.png"));
}

TEST_F(WebPagesTest, AClientThatNamesNoHostGetsTheServersOwnAddress)
{
    QByteArray bytes;
    meanwhile([&] {
        RawClient client(port());
        client.send("GET /sites/plant/ HTTP/1.0\r\n\r\n");
        bytes = client.readAll();
    });
    EXPECT_TRUE(bytes.contains("http://127.0.0.1:" + QByteArray::number(port()) + "/sites/plant/one.png"));
}

TEST_F(WebPagesTest, AScriptInATitleStandsOnAPageThatRunsNone)
{
    m_site->advertisedTitle = QStringLiteral("<script>alert(1)</script>");
    const Answer answer = get("/sites/plant/");
    EXPECT_TRUE(answer.body.contains("<script>alert(1)</script>"));  // as the plug-in wrote it
    const QByteArray policy = answer.header("Content-Security-Policy");
    EXPECT_TRUE(policy.contains("default-src 'none'"));
    EXPECT_FALSE(policy.contains("script-src"));
    EXPECT_FALSE(policy.contains("unsafe"));
    EXPECT_FALSE(policy.contains("allow-scripts"));
    EXPECT_TRUE(policy.contains("sandbox allow-same-origin allow-popups"));
}

TEST_F(WebPagesTest, TheFragmentComesLastSoThatNothingOfOursCanBeSwallowed)
{
    m_site->advertisedTitle = QStringLiteral("<!--");
    const QByteArray body = get("/sites/plant/").body;
    EXPECT_LT(body.indexOf("<img src=\"one.png\""), body.indexOf("<!--"));
}

TEST_F(WebPagesTest, ASiteWithoutItsSlashLeadsThere)
{
    const Answer answer = get("/sites/plant");
    EXPECT_EQ(answer.status, 308);
    EXPECT_EQ(answer.header("Location"), "/sites/plant/");
}

TEST_F(WebPagesTest, StyleAndIconHaveTheirTypes)
{
    EXPECT_EQ(get("/style.css").header("Content-Type"), "text/css; charset=utf-8");
    EXPECT_EQ(get("/icon.svg").header("Content-Type"), "image/svg+xml");
    EXPECT_EQ(get("/favicon.ico").status, 200);
}

TEST_F(WebPagesTest, StyleAndIconAreBuiltIn)
{
    EXPECT_TRUE(get("/style.css").body.startsWith(":root {"));
    EXPECT_TRUE(get("/icon.svg").body.startsWith("<svg xmlns"));
}

TEST_F(WebPagesTest, ATextThatLooksLikeAPlaceholderStandsAsItIs)
{
    m_site->advertisedTitle = QStringLiteral("90 %1, %2 and %3");
    EXPECT_TRUE(get("/sites/plant/").body.contains("90 %1, %2 and %3"));
}

TEST_F(WebPagesTest, RenderingsHaveTheirTypesAndBytes)
{
    const Answer png = get("/sites/plant/one.png");
    EXPECT_EQ(png.status, 200);
    EXPECT_EQ(png.header("Content-Type"), "image/png");
    EXPECT_EQ(png.body, m_site->picture);
    EXPECT_EQ(get("/sites/plant/one.pdf").header("Content-Type"), "application/pdf");
}

TEST_F(WebPagesTest, WhatStandsBeforeTheLastSegmentIsThePlugInsAffair)
{
    EXPECT_EQ(get("/sites/plant/some/where/one.png").status, 200);
    EXPECT_EQ(get("/sites/plant//one.png").status, 200);
}

TEST_F(WebPagesTest, ThePlugInGetsThePathAsItWasSentWithoutTheQuery)
{
    get("/sites/plant/a%2520b.png?x=1");
    const std::lock_guard guard(m_site->mutex);
    EXPECT_EQ(m_site->lastUrl.path(QUrl::FullyEncoded), QStringLiteral("/sites/plant/a%2520b.png"));
    EXPECT_FALSE(m_site->lastUrl.hasQuery());
}

TEST_F(WebPagesTest, UnknownThingsAreNotFound)
{
    for (const char* target : {"/nothing", "/sites/", "/sites/other/", "/sites/other/one.png", "/sites/plant/two.png",
                               "/sites/plant/one.PNG", "/sites/plant/one"}) {
        const Answer answer = get(target);
        EXPECT_EQ(answer.status, 404) << target;
        EXPECT_TRUE(answer.body.contains("There is nothing here")) << target;
    }
}

TEST_F(WebPagesTest, NoPathLeavesItsSite)
{
    const QString other = m_sites.add(QStringLiteral("other"), std::make_shared<StubSite>());
    for (const char* target :
         {"/sites/plant/../other/one.png", "/sites/plant/%2e%2e/other/one.png", "/sites/plant/..%2fother%2fone.png",
          "/sites/plant/x%2fone.png", "/sites/plant/one.png%00.html", "/sites/plant/%5c..%5cone.png",
          "/sites/plant/%zz/one.png", "/sites/plant/%ff.png", "/../../etc/passwd"}) {
        EXPECT_EQ(get(target).status, 404) << target;
    }
    EXPECT_EQ(m_site->questionCount, 0);
}

TEST_F(WebPagesTest, HeadAnswersLikeGetWithoutTheBody)
{
    for (const char* target : {"/", "/sites/plant/", "/sites/plant/one.png"}) {
        const Answer whole = get(target), head = request("HEAD", target);
        EXPECT_EQ(head.status, 200) << target;
        EXPECT_EQ(head.header("Content-Length"), whole.header("Content-Length")) << target;
        EXPECT_EQ(head.header("Content-Type"), whole.header("Content-Type")) << target;
        EXPECT_TRUE(head.body.isEmpty()) << target;
    }
    EXPECT_EQ(request("HEAD", "/nothing").status, 404);
}

TEST_F(WebPagesTest, OtherMethodsAreNotAllowed)
{
    for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "TRACE", "PATCH", "BREW"}) {
        const Answer answer = request(method, "/sites/plant/one.png", "Content-Length: 0\r\n");
        EXPECT_EQ(answer.status, 405) << method;
        EXPECT_EQ(answer.header("Allow"), "GET, HEAD") << method;
    }
    EXPECT_EQ(m_site->questionCount, 0);
}

TEST_F(WebPagesTest, EveryAnswerCarriesTheProtectiveHeaders)
{
    for (const char* target : {"/", "/sites/plant/", "/sites/plant/one.png", "/sites/plant/one.pdf", "/nothing"}) {
        const Answer answer = get(target);
        EXPECT_EQ(answer.header("X-Content-Type-Options"), "nosniff") << target;
        EXPECT_EQ(answer.header("Referrer-Policy"), "no-referrer") << target;
        EXPECT_EQ(answer.header("Cache-Control"), "no-store") << target;
        EXPECT_TRUE(answer.header("Content-Security-Policy").contains("default-src 'none'")) << target;
    }
}

TEST_F(WebPagesTest, AForeignNameForThisMachineIsRefused)
{
    EXPECT_EQ(get("/", "Host: rebound.example\r\n").status, 421);
    EXPECT_EQ(get("/", "Host: 127.0.0.1.example:80\r\n").status, 421);
    EXPECT_EQ(get("/", "Host: LOCALHOST:80\r\n").status, 200);
    EXPECT_EQ(get("/", "Host: [::1]:80\r\n").status, 200);
}

TEST_F(WebPagesTest, ABrokenHostIsNotUnderstood)
{
    EXPECT_EQ(get("/sites/plant/", "Host: a\"><script>\r\n").status, 400);
}

TEST_F(WebPagesTest, FootnotesOfAViewStandBelowItsPicture)
{
    EXPECT_FALSE(get("/sites/plant/").body.contains("class=\"footnote\""));
    m_site->footnotes = {QStringLiteral("1  noon: <b>Pump</b> replaced (Ada)")};
    EXPECT_TRUE(get("/sites/plant/")
                    .body.contains("<p class=\"footnote\">1  noon: &lt;b&gt;Pump&lt;/b&gt; replaced (Ada)</p>"));
}

}  // namespace
}  // namespace plotix
