#include "hostapp/site/ViewLink.h"
#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

/// A figure and a link of a trend of site.plotix.
class OpenViewCommandTest : public CommandLineTest {
protected:
    OpenViewCommandTest()
    {
        view.siteFile = "site.plotix";
        view.trend = "Week";
        view.agent = "EWR";
        view.properties = QStringList{"pressure"};
    }
    QString figure() const
    {
        return write("figure.svg", withRecipe(FileKind::Svg, "<?xml version=\"1.0\"?>\n<svg>\n<defs>\n</defs></svg>",
                                              recipeOf(view)));
    }
    ShownView view;
};

TEST_F(OpenViewCommandTest, AFigureOpensTheSiteBesideIt)
{
    importWeather();
    ASSERT_EQ(run({"open", figure()}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.opened[0].view, view);
    EXPECT_EQ(QFileInfo(m_services.opened[0].site), QFileInfo(site()));
}

TEST_F(OpenViewCommandTest, ItsSiteIsSaidWhereItIsElsewhere)
{
    importWeather();
    view.siteFile = "other.plotix";
    ASSERT_EQ(run({"open", figure(), "--site", site()}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.opened[0].site, site());
    expectFailure({"open", figure(), "--screenshot", path("w.png")}, 1, QStringLiteral("say where it is with --site"));
    expectFailure({"open", figure(), "--site", path("absent.plotix")}, 1, QStringLiteral("there is no site"));
}

TEST_F(OpenViewCommandTest, OnADisplayTheUserIsAskedForIt)
{
    view.siteFile = "other.plotix";
    ASSERT_EQ(run({"open", figure()}), 0);
    EXPECT_TRUE(m_services.opened[0].site.isEmpty());
    EXPECT_EQ(m_services.opened[0].view, view);
}

TEST_F(OpenViewCommandTest, ALinkOpensTheSameView)
{
    importWeather();
    ASSERT_EQ(run({"open", linkOf(view), "--site", site()}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.opened[0].view, view);
}

TEST_F(OpenViewCommandTest, AFigureThatDoesNotTellIsRefused)
{
    const QString plain = write("plain.pdf", "%PDF-1.4 nothing in it");
    expectFailure({"open", plain}, 1, QStringLiteral("does not tell what it shows"));
}

TEST_F(OpenViewCommandTest, ARecipeIsLeftOutOnRequest)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--output", path("a.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--no-recipe", "--output", path("b.png")}), 0);
    EXPECT_TRUE(m_services.rendered[0].hasRecipe);
    EXPECT_FALSE(m_services.rendered[1].hasRecipe);
}

}  // namespace

}  // namespace plotix
