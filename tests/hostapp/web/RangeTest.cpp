#include "tests/hostapp/web/ServedSites.h"

#include "tests/support/PinnedZone.h"

namespace plotix {

namespace {

constexpr double kJuly = 1'372'636'800;  // 2013-07-01 UTC

class RangeTest : public ServedSites {
protected:
    RangeTest()
    {
        zone.use("UTC");
        serve();
    }
    std::optional<WebRange> rangeOf(const QByteArray& query)
    {
        EXPECT_EQ(get("/sites/plant/one.png" + query).status, 200) << query.constData();
        return std::exchange(m_site->lastRange, std::nullopt);
    }
    void expectRefused(const QByteArray& query, const char* sentence)
    {
        for (const char* path : {"/sites/plant/one.png", "/sites/plant/one.pdf", "/sites/plant/"}) {
            const Answer answer = get(path + query);
            EXPECT_EQ(answer.status, 400) << path << query.constData();
            EXPECT_TRUE(answer.body.contains(sentence)) << answer.body.constData();
        }
        EXPECT_EQ(m_site->questionCount, 0);
    }
    PinnedZone zone;
};

TEST_F(RangeTest, GoesToTheViewAsItIsWrittenInLinks)
{
    EXPECT_EQ(rangeOf("?from=2013-07-01T00:00:00.000Z&to=2013-07-01T00:00:00.500Z"), (WebRange{kJuly, kJuly + 0.5}));
    EXPECT_EQ(rangeOf("?trend=Week&agent=EWR&properties=temp&from=2013-07-01T00:00:00Z&to=2013-07-01T01:00:00%2B00:30"),
              (WebRange{kJuly, kJuly + 1800}));
}

TEST_F(RangeTest, ADateMeansItsWholeDay)
{
    const auto range = rangeOf("?from=2013-07-01&to=2013-07-02");
    ASSERT_TRUE(range);
    EXPECT_EQ(range->from, kJuly);
    EXPECT_NEAR(range->to, kJuly + 2 * 86'400, 0.01);
}

TEST_F(RangeTest, WithoutOneTheViewIsAskedAsEver)
{
    EXPECT_FALSE(rangeOf(""));
    EXPECT_FALSE(rangeOf("?size=large"));
    EXPECT_TRUE(get("/sites/plant/").body.contains("src=\"one.png\""));
}

TEST_F(RangeTest, WhatCannotBeReadIsSaid)
{
    expectRefused("?from=2013-07-01", "needs both ends");
    expectRefused("?from=yesterday&to=2013-07-01", "“yesterday” is not a time");
    expectRefused("?from=2013-07-01&to=%3Cb%3E", "“&lt;b&gt;” is not a time");
    expectRefused("?from=2013-07-02T00:00:00Z&to=2013-07-01T00:00:00Z", "ends before it begins");
}

TEST_F(RangeTest, ThePageHasItInAllItsPictures)
{
    const Answer page = get("/sites/plant/?from=2013-07-01T00:00:00Z&to=2013-07-02T00:00:00Z");
    EXPECT_EQ(page.status, 200);
    const QByteArray query = "?from=2013-07-01T00:00:00.000Z&amp;to=2013-07-02T00:00:00.000Z\"";
    EXPECT_TRUE(page.body.contains("src=\"one.png" + query)) << page.body.constData();
    EXPECT_TRUE(page.body.contains("href=\"one.pdf" + query));
}

TEST_F(RangeTest, NotesAboutTheViewsOwnTimesStandOnNoOtherPage)
{
    m_site->footnotes = {QStringLiteral("1  noon: Pump replaced (Ada)")};
    EXPECT_TRUE(get("/sites/plant/").body.contains("Pump replaced"));
    const QByteArray range = "?from=2013-07-01T00:00:00Z&to=2013-07-02T00:00:00Z";
    EXPECT_FALSE(get("/sites/plant/" + range).body.contains("Pump replaced"));
}

TEST_F(RangeTest, ATokenLeavesTheAddressAndTheRangeStays)
{
    m_sites.withdraw(m_identifier);
    m_server.reset();
    serve({}, "open sesame, please");
    const Answer answer =
        get("/sites/plant/?token=open%20sesame%2C%20please&from=2013-07-01T00:00:00Z&to=2013-07-02T00:00:00Z");
    EXPECT_EQ(answer.status, 303);
    EXPECT_EQ(answer.header("Location"), "/sites/plant/?from=2013-07-01T00:00:00.000Z&to=2013-07-02T00:00:00.000Z");
}

}  // namespace

}  // namespace plotix
