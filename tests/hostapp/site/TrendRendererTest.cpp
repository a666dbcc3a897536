#include "hostapp/site/TrendRenderer.h"

#include "base/ReportableError.h"
#include "tests/hostapp/site/ServedTrendFixture.h"

namespace plotix {

namespace {

/// Pictures of a day of minutes, by the real module.
class TrendRendererTest : public ServedTrendTest {
protected:
    static constexpr double kStart = 1'700'000'000;

    QByteArray render(double from, double to, RenderRequest request = {})
    {
        request.trend = {site.document, station, {station->properties().objects().front()}, Date{from}, Date{to}, {}};
        request.size = {600, 300};
        return TrendRenderer(module()).render(request);
    }
};

TEST_F(TrendRendererTest, DrawsWhatTheRecordsReach)
{
    EXPECT_TRUE(render(kStart, kStart + 3600).startsWith("\x89PNG"));
}

TEST_F(TrendRendererTest, ASpanWithoutRecordsIsRefusedWithTheSpanTheyHave)
{
    for (const bool bare : {false, true}) {
        RenderRequest request;
        request.bare = bare;
        try {
            render(kStart - 7200, kStart - 3600, request);
            ADD_FAILURE() << "an empty graph was drawn";
        } catch (const ReportableError& error) {
            EXPECT_TRUE(error.message().contains(QStringLiteral("2023-11-14T22:13:20Z")))
                << error.message().toStdString();
        }
    }
}

TEST_F(TrendRendererTest, AChoiceOfReadingIsDrawn)
{
    site.store(*station, {kStart + 200'000, kStart + 200'060});
    RenderRequest plain, joined;
    plain.hasRecipe = joined.hasRecipe = false;  // it tells of the choice
    joined.reading = {{QStringLiteral("brokenLines"), false}};
    EXPECT_NE(render(kStart, kStart + 201'000, plain), render(kStart, kStart + 201'000, joined));
}

TEST_F(TrendRendererTest, ValuesBeyondTheUsualLimitAreDrawnInAPicture)
{
    site.store(*station, {kStart, kStart + 60, kStart + 120}, {0, 9000, 0});
    const QVariantMap oneScale{{QStringLiteral("kind"), QStringLiteral("one-scale")}};
    RenderRequest plain, cut, all;
    plain.hasRecipe = cut.hasRecipe = all.hasRecipe = false;  // it tells of the choice
    plain.reading = {{QStringLiteral("arrangement"), oneScale}};
    cut.reading = {{QStringLiteral("arrangement"), oneScale}, {QStringLiteral("unlimitedValues"), false}};
    all.reading = {{QStringLiteral("arrangement"), oneScale}, {QStringLiteral("unlimitedValues"), true}};
    EXPECT_EQ(render(kStart, kStart + 120, plain), render(kStart, kStart + 120, all));
    EXPECT_NE(render(kStart, kStart + 120, plain), render(kStart, kStart + 120, cut));
}

TEST_F(TrendRendererTest, LanesKnowNoLimit)
{
    site.store(*station, {kStart, kStart + 60, kStart + 120}, {0, 9000, 0});
    RenderRequest plain, cut;
    plain.hasRecipe = cut.hasRecipe = false;  // it tells of the choice
    cut.reading = {{QStringLiteral("unlimitedValues"), false}};
    EXPECT_EQ(render(kStart, kStart + 120, plain), render(kStart, kStart + 120, cut));
}

}  // namespace

}  // namespace plotix
