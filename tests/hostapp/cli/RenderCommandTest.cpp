#include "base/WholeDay.h"
#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

const QByteArray kOldPng("\x89PNG\r\n\x1a\nold");

using RenderCommandTest = CommandLineTest;

TEST_F(RenderCommandTest, RenderDrawsAllTimeUnlessTold)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--output", path("a.png")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("a.png")), "a png");
    const RenderRequest& request = m_services.rendered.front();
    EXPECT_EQ(request.size, QSize(1200, 600));
    EXPECT_EQ(request.trend.from, Date{1420070400});
    EXPECT_EQ(request.trend.to, Date{1420156800});
    EXPECT_EQ(request.trend.properties.size(), 2U);
    EXPECT_FALSE(request.bare);
}

TEST_F(RenderCommandTest, RenderTakesItsOptions)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--agent", "ewr", "--properties", "Pressure, airTemperature", "--from",
                   "2015-01-01T12:00:00+01:00", "--to", "2015-01-02", "--size", "640x480", "--title", "A title",
                   "--output", path("a.pdf")}),
              0)
        << m_error.toStdString();
    EXPECT_EQ(contents(path("a.pdf")), "a pdf");
    const RenderRequest& request = m_services.rendered.front();
    EXPECT_EQ(request.size, QSize(640, 480));
    EXPECT_EQ(request.trend.title, QStringLiteral("A title"));
    EXPECT_EQ(request.trend.properties.at(0)->propertyName(), QStringLiteral("pressure"));
    EXPECT_EQ(request.trend.from, Date{1420110000});
    EXPECT_EQ(request.trend.to, lastMomentOf(QDate(2015, 1, 2)));
}

TEST_F(RenderCommandTest, RenderTakesAQuickRange)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--range", "Last24Hours", "--bare", "--output", path("a.png")}), 0);
    const RenderRequest& request = m_services.rendered.front();
    EXPECT_TRUE(request.bare);
    EXPECT_EQ(request.trend.to->seconds - request.trend.from->seconds, 86'400);
}

TEST_F(RenderCommandTest, RenderTakesWhatIsToldOfQuality)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--quality", "strip,late", "--late-by", "10m", "--output", path("a.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--quality", "none", "--output", path("b.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--late-by", "1h", "--output", path("c.png")}), 0);
    EXPECT_EQ(m_services.rendered[0].reading["missing"].toMap(),
              (QVariantMap{{"strip", true}, {"amended", true}, {"lateBy", 600.0}}));
    EXPECT_EQ(m_services.rendered[1].reading, (QVariantMap{{"missing", QVariantMap()}}));
    EXPECT_EQ(m_services.rendered[2].reading["missing"].toMap(),
              (QVariantMap{{"stretches", true}, {"amended", true}, {"lateBy", 3600.0}}));
    expectFailure({"render", site(), "--quality", "good", "--output", path("a.png")}, 2, QStringLiteral("--quality"));
}

TEST_F(RenderCommandTest, RenderTakesAChoiceOfGaps)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--gaps", "join", "--output", path("a.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--gaps", "15m", "--output", path("b.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--output", path("c.png")}), 0);
    EXPECT_EQ(m_services.rendered[0].reading, (QVariantMap{{"brokenLines", false}}));
    EXPECT_EQ(m_services.rendered[1].reading, (QVariantMap{{"brokenLines", true}, {"longestJoin", 900.0}}));
    EXPECT_TRUE(m_services.rendered[2].reading.isEmpty());
    expectFailure({"render", site(), "--gaps", "tear", "--output", path("a.png")}, 2, QStringLiteral("must be break"));
    expectFailure({"render", site(), "--gaps", "join", "--bare", "--output", path("a.png")}, 2,
                  QStringLiteral("leave out --gaps"));
}

TEST_F(RenderCommandTest, RenderMakesAFigureOfASizeOnPaper)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--look", "paper", "--font-size", "7pt", "--size", "85x60mm", "--dpi", "300",
                   "--output", path("a.png")}),
              0);
    const RenderRequest& request = m_services.rendered[0];
    EXPECT_NEAR(request.size.width() * request.density, 85 / 25.4 * 300, 1e-6);
    EXPECT_NEAR(request.size.height() * request.density, 60 / 25.4 * 300, 1e-6);
    EXPECT_EQ(request.reading.value("looks").toMap(),
              (QVariantMap{{"look", "paper"}, {"fontSize", 7.0}, {"marks", "apart"}}));
}

TEST_F(RenderCommandTest, AFigureThatCannotBeIsRefused)
{
    importWeather();
    expectFailure({"render", site(), "--size", "85x60cm", "--output", path("a.png")}, 2, QStringLiteral("85x60mm"));
    expectFailure({"render", site(), "--font-size", "3", "--output", path("a.png")}, 2, QStringLiteral("7pt"));
    expectFailure({"render", site(), "--dpi", "300", "--output", path("a.pdf")}, 2, QStringLiteral("--dpi is for PNG"));
}

TEST_F(RenderCommandTest, RenderTakesWhatIsWrittenAroundTheGraphAndItsGround)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--legend", "below", "--axis-titles", "values", "--line-width", "0.5",
                   "--transparent", "--output", path("a.png")}),
              0);
    const QVariantMap reading = m_services.rendered[0].reading;
    EXPECT_EQ(reading.value("legend").toMap(), (QVariantMap{{"place", "below"}, {"axisTitles", "values"}}));
    EXPECT_EQ(reading.value("looks").toMap(),
              (QVariantMap{{"lineWidth", 0.5}, {"ground", "transparent"}, {"marks", "apart"}}));
    expectFailure({"render", site(), "--legend", "left", "--output", path("a.png")}, 2, QStringLiteral("--legend"));
    expectFailure({"render", site(), "--line-width", "0", "--output", path("a.png")}, 2,
                  QStringLiteral("--line-width"));
    expectFailure({"render", site(), "--transparent", "--bare", "--output", path("a.png")}, 2,
                  QStringLiteral("--bare draws lines alone"));
}

TEST_F(RenderCommandTest, TheEndingSaysTheFormat)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--output", path("a.svg")}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.rendered[0].format, RenderRequest::Format::Svg);
    expectFailure({"render", site(), "--output", path("a.gif")}, 2, QStringLiteral(".svg"));
    expectFailure({"render", site(), "--bare", "--output", path("a.svg")}, 2, QStringLiteral("--bare draws PNG only"));
}

TEST_F(RenderCommandTest, APresetSaysWhatIsNotSaidBesideIt)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--preset", "paper-column", "--font-size", "8pt", "--dpi", "600", "--output",
                   path("a.png")}),
              0)
        << m_error.toStdString();
    const RenderRequest& request = m_services.rendered[0];
    EXPECT_NEAR(request.size.width(), 85 * 72 / 25.4, 1e-9);
    EXPECT_NEAR(request.density, 600 / 72.0, 1e-9);
    EXPECT_EQ(request.reading.value("looks").toMap(),
              (QVariantMap{{"look", "paper"}, {"fontSize", 8.0}, {"marks", "apart"}}));
    EXPECT_EQ(request.reading.value("legend").toMap(), (QVariantMap{{"place", "below"}, {"axisTitles", "values"}}));
    expectFailure({"render", site(), "--preset", "poster", "--output", path("b.png")}, 2,
                  QStringLiteral("must be one of paper-column"));
}

TEST_F(RenderCommandTest, RenderTakesAnArrangement)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--arrangement", "lane-per-unit", "--output", path("a.png")}), 0);
    EXPECT_EQ(m_services.rendered[0].reading, (QVariantMap{{"arrangement", QVariantMap{{"kind", "lane-per-unit"}}}}));
    expectFailure({"render", site(), "--arrangement", "lanes", "--output", path("a.png")}, 2,
                  QStringLiteral("--arrangement"));
}

TEST_F(RenderCommandTest, RenderTakesAValueLineAndMarks)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--at", "2015-01-01T12:00:00Z", "--output", path("a.png")}), 0);
    ASSERT_EQ(run({"render", site(), "--marks", "2015-01-01T00:00:00Z/2015-01-01T01:00:00+01:00", "--gaps", "join",
                   "--output", path("b.png")}),
              0);
    EXPECT_EQ(m_services.rendered[0].reading, (QVariantMap{{"valueLine", QVariantMap{{"held", 1420113600.0}}}}));
    EXPECT_EQ(m_services.rendered[1].reading,
              (QVariantMap{{"brokenLines", false}, {"marks", QVariantMap{{"a", 1420070400.0}, {"b", 1420070400.0}}}}));
    expectFailure({"render", site(), "--marks", "2015-01-01", "--output", path("a.png")}, 2,
                  QStringLiteral("must be two times"));
    expectFailure({"render", site(), "--at", "2015-01-01", "--bare", "--output", path("a.png")}, 2,
                  QStringLiteral("leave out --arrangement"));
}

TEST_F(RenderCommandTest, RenderComparesWithEarlierTimes)
{
    importWeather();
    ASSERT_EQ(run({"render", "--compare", "2w,1y", "--compare", "36h", site(), "--output", path("a.png")}), 0);
    EXPECT_EQ(m_services.rendered[0].reading,
              (QVariantMap{{"comparing", QVariantMap{{"with", QStringList{"14d", "1y", "36h"}}}}}));
    expectFailure({"render", site(), "--compare", "soon", "--output", path("a.png")}, 2,
                  QStringLiteral("must be a distance like 7d, 2w, 1mo, 1y or 36h, not soon"));
}

TEST_F(RenderCommandTest, LookupsListWhatThereIs)
{
    importWeather();
    importText("time,a\n2015-01-01,1\n", QStringLiteral("JFK"));
    const QString output = path("a.png");
    expectFailure({"render", site(), "--output", output}, 1, QStringLiteral("EWR, JFK"));
    expectFailure({"render", site(), "--agent", "LGA", "--output", output}, 1, QStringLiteral("EWR, JFK"));
    expectFailure({"render", site(), "--agent", "EWR", "--properties", "wind", "--output", output}, 1,
                  QStringLiteral("airTemperature, pressure"));
    EXPECT_FALSE(QFile::exists(output));
}

TEST_F(RenderCommandTest, AFailedRenderKeepsTheFileThatWasThere)
{
    importWeather();
    write("a.png", kOldPng);
    m_services.renderFails = true;
    expectFailure({"render", site(), "--output", path("a.png")}, 1, QStringLiteral("the module is missing"));
    EXPECT_EQ(contents(path("a.png")), kOldPng);
}

TEST_F(RenderCommandTest, ASiteIsNotReplacedByAPictureOfIt)
{
    importWeather();
    QFile::copy(site(), path("site.png"));
    expectFailure({"render", site(), "--output", path("site.png")}, 1, QStringLiteral("a site or another database"));
    expectFailure({"open", site(), "--screenshot", path("site.png")}, 1, QStringLiteral("a site or another database"));
    EXPECT_EQ(contents(path("site.png")), contents(site()));
    EXPECT_TRUE(m_services.rendered.empty() && m_services.opened.empty());
}

TEST_F(RenderCommandTest, PlacesThatCannotBeWrittenAreSaidToBe)
{
    importWeather();
    expectFailure({"render", site(), "--output", path("none/a.png")}, 1, QStringLiteral("cannot be written"));
    expectFailure({"export", site(), "--output", path("none/a.csv")}, 1, QStringLiteral("cannot be written"));
}

TEST_F(RenderCommandTest, LimitsAndNotesMayBeLeftOut)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--output", path("a.png"), "--without", "limits,notes"}), 0)
        << m_error.toStdString();
    const QVariantMap hidden{{"shown", false}};
    EXPECT_EQ(m_services.rendered[0].reading, (QVariantMap{{"limits", hidden}, {"notes", hidden}}));
    expectFailure({"render", site(), "--output", path("a.png"), "--without", "marks"}, 2, QStringLiteral("--without"));
}

TEST_F(RenderCommandTest, RenderSaysTimesByAZone)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--zone", "kathmandu", "--hours", "24", "--from", "2015-01-01", "--to",
                   "2015-01-01T12:00", "--at", "2015-01-01T06:00", "--output", path("a.png")}),
              0)
        << m_error.toStdString();
    const RenderRequest& request = m_services.rendered.front();
    EXPECT_EQ(request.reading.value("clock").toMap(),
              (QVariantMap{{"zone", "Asia/Kathmandu"}, {"form", "24-hour"}, {"changes", true}}));
    EXPECT_EQ(request.trend.from, Date{1420070400 - 20'700});
    EXPECT_EQ(request.trend.to, Date{1420070400 - 20'700 + 43'200});
    EXPECT_EQ(request.reading.value("valueLine").toMap().value("held"), 1420070400 - 20'700 + 21'600.0);
}

TEST_F(RenderCommandTest, RenderRefusesAnUnknownZoneAndNamesTheNearest)
{
    importWeather();
    expectFailure({"render", site(), "--zone", "Europe/Berlinn", "--output", path("a.png")}, 2,
                  QStringLiteral("did you mean Europe/Berlin?"));
    expectFailure({"render", site(), "--zone", "site", "--output", path("a.png")}, 1,
                  QStringLiteral("does not say its time zone"));
}

TEST_F(RenderCommandTest, RenderTakesTheSitesZone)
{
    importWeather();
    SiteDocument::open(site())->setZone(QTimeZone("Asia/Kathmandu"));
    ASSERT_EQ(run({"render", site(), "--zone", "site", "--from", "2015-01-01", "--output", path("a.png")}), 0)
        << m_error.toStdString();
    EXPECT_EQ(m_services.rendered.front().reading.value("clock").toMap().value("zone"), "site");
    EXPECT_EQ(m_services.rendered.front().trend.from, Date{1420070400 - 20'700});
}

}  // namespace

}  // namespace plotix
