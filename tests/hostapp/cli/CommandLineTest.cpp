#include "hostapp/cli/CommandLine.h"

#include "hostapp/core/HostError.h"
#include "hostapp/station/DemonstrationSite.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

namespace plotix {

namespace {

/// Records what it is asked for; draws nothing.
class RecordingServices : public CommandServices {
public:
    bool hasDisplay() const override { return display; }
    int open(const OpenRequest& request) override
    {
        opened.push_back(request);
        return 0;
    }
    QByteArray render(const RenderRequest& request) override
    {
        if (renderFails)
            throw HostError(QStringLiteral("the module is missing; build it"));
        rendered.push_back(request);
        return request.format == RenderRequest::Format::Pdf ? "a pdf" : "a png";
    }
    QByteArray report(const ReportRequest& request) override
    {
        reported.push_back(request);
        return "a report";
    }
    void serve(const ServeRequest& request) override
    {
        served.push_back(request);
        request.say(QStringLiteral("http://127.0.0.1:8123/"));
    }
    void storeTrend(const TrendRequest& trend) override
    {
        stored.push_back(trend);
        // The program lets go of the document too: the demonstration site is renamed once it is built.
        stored.back().document.reset();
    }
    CommandProgress makeProgress(const QString&) override { return progress; }

    bool display = true, renderFails = false;
    CommandProgress progress;
    std::vector<OpenRequest> opened;
    std::vector<RenderRequest> rendered;
    std::vector<ReportRequest> reported;
    std::vector<ServeRequest> served;
    std::vector<TrendRequest> stored;
};

class CommandLineTest : public testing::Test {
protected:
    int run(const QStringList& arguments)
    {
        std::ostringstream out, err;
        const int status = runCommandLine(arguments, m_services, {out, err, m_isTerminal});
        m_output = QString::fromStdString(out.str());
        m_error = QString::fromStdString(err.str());
        return status;
    }

    void expectFailure(const QStringList& arguments, int status, const QString& text)
    {
        EXPECT_EQ(run(arguments), status);
        EXPECT_TRUE(m_error.contains(text)) << m_error.toStdString();
        EXPECT_EQ(m_error.count(QLatin1Char('\n')), 1) << m_error.toStdString();
        EXPECT_TRUE(m_error.startsWith(QStringLiteral("plotix: ")));
    }

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    QString site() const { return path("site.plotix"); }

    QString write(const char* name, const QByteArray& text) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QByteArray contents(const QString& file) const
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
        return opened.readAll();
    }

    void importText(const QByteArray& text, const QString& agent = QStringLiteral("EWR"))
    {
        ASSERT_EQ(run({"import", write("data.csv", text), "--site", site(), "--agent", agent}), 0)
            << m_error.toStdString();
    }

    void importWeather()
    {
        importText("time,Air Temperature (°C),Pressure [hPa]\n2015-01-01T00:00:00Z,1.5,1000\n"
                   "2015-01-01T00:01:00.25Z,,1001.25\n2015-01-02T00:00:00Z,2.5,1002\n");
    }

    RecordingServices m_services;
    bool m_isTerminal = false;
    QString m_output, m_error;
    QTemporaryDir m_folder;
};

TEST_F(CommandLineTest, ExplainsItself)
{
    EXPECT_EQ(run({"--help"}), 0);
    for (const char* command : {"open", "import", "info", "render", "export", "report"}) {
        EXPECT_TRUE(m_output.contains(QLatin1String(command)));
    }
}

TEST_F(CommandLineTest, ExplainsEachCommandWithAnExample)
{
    for (const char* command : {"open", "import", "info", "render", "export", "report"}) {
        EXPECT_EQ(run({command, "--help"}), 0);
        EXPECT_TRUE(m_output.contains(QStringLiteral("plotix %1 ").arg(QLatin1String(command)))) << command;
        EXPECT_TRUE(m_output.contains(QStringLiteral("Example"))) << command;
        EXPECT_TRUE(m_error.isEmpty());
    }
}

struct UsageCase {
    const char* name;
    QStringList arguments;
    QString text;
};

class WrongUsage : public CommandLineTest, public testing::WithParamInterface<UsageCase> {};

TEST_P(WrongUsage, IsStatusTwo)
{
    expectFailure(GetParam().arguments, 2, GetParam().text);
    EXPECT_TRUE(m_output.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, WrongUsage,
    testing::Values(
        UsageCase{"UnknownCommand", {"frobnicate"}, "frobnicate"},
        UsageCase{"UnknownOption", {"info", "a.plotix", "--wat"}, "--wat"},
        UsageCase{"MissingSite", {"import", "a.csv"}, "--site"},
        UsageCase{"MissingOutput", {"render", "a.plotix"}, "--output"},
        UsageCase{"WrongPicture", {"render", "a.plotix", "--output", "a.gif"}, ".png or .pdf"},
        UsageCase{"WrongSize", {"render", "a.plotix", "--output", "a.png", "--size", "big"}, "1200x600"},
        UsageCase{"EmptySize", {"render", "a.plotix", "--output", "a.png", "--size", "0x5"}, "1200x600"},
        UsageCase{"WrongRange", {"render", "a.plotix", "--output", "a.png", "--range", "soon"}, "last7Days"},
        UsageCase{"RangeAndFrom",
                  {"render", "a.plotix", "--output", "a.png", "--range", "today", "--from", "2015-01-01"},
                  "--from"},
        UsageCase{"BarePdf", {"render", "a.plotix", "--output", "a.pdf", "--bare"}, "--bare"},
        UsageCase{"Pair", {"import", "a.csv", "--site", "a.plotix", "--unit", "temp"}, "COLUMN=TEXT"},
        UsageCase{"DateOrder", {"import", "a.csv", "--site", "a.plotix", "--date-order", "ymd"}, "--date-order"},
        UsageCase{"SizeOfAWindow", {"open", "a.plotix", "--size", "100x100"}, "--screenshot"}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandLineTest, OnlyOpeningWithoutAScreenshotWantsAWindow)
{
    EXPECT_TRUE(commandWantsWindow({}));
    EXPECT_TRUE(commandWantsWindow({"open", "a.plotix"}));
    EXPECT_FALSE(commandWantsWindow({"open", "a.plotix", "--screenshot", "a.png"}));
    EXPECT_FALSE(commandWantsWindow({"open", "--help"}));
    EXPECT_FALSE(commandWantsWindow({"info", "a.plotix"}));
    EXPECT_FALSE(commandWantsWindow({"frobnicate"}));
}

TEST_F(CommandLineTest, SitesThatAreNotThereAreSaidToBe)
{
    const QString absent = path("none.plotix");
    for (const QStringList& arguments : {QStringList{"open", absent}, QStringList{"info", absent},
                                         QStringList{"render", absent, "--output", path("a.png")},
                                         QStringList{"export", absent, "--output", path("a.csv")}})
        expectFailure(arguments, 1, QStringLiteral("there is no site"));
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

TEST_F(CommandLineTest, ImportMakesSiteAgentAndFirstTrend)
{
    importWeather();
    EXPECT_TRUE(m_output.contains(QStringLiteral("3 records"))) << m_output.toStdString();
    ASSERT_EQ(m_services.stored.size(), 1U);
    const TrendRequest& trend = m_services.stored.front();
    EXPECT_EQ(trend.title, QStringLiteral("EWR"));
    EXPECT_EQ(trend.agent->name(), QStringLiteral("EWR"));
    EXPECT_EQ(trend.properties.size(), 2U);
    EXPECT_EQ(trend.from, Date{1420070400});
    EXPECT_EQ(trend.to, Date{1420156800});
}

TEST_F(CommandLineTest, ASecondImportMakesNoSecondTrend)
{
    importWeather();
    importWeather();
    EXPECT_EQ(m_services.stored.size(), 1U);
    importText("time,a\n2015-01-01,1\n", QStringLiteral("JFK"));
    EXPECT_EQ(m_services.stored.size(), 2U);
}

TEST_F(CommandLineTest, ImportOptionsReachTheImporter)
{
    const QString file = write("o.csv", "origin,when,temp,x\nEWR,3/4/2015 12:00,50,1\nJFK,oops,1,1\nEWR,bad,1,1\n");
    ASSERT_EQ(run({"import",       file,   "--site",          site(),      "--agent", "EWR",
                   "--time",       "when", "--time-zone",     "+02:00",    "--where", "origin=EWR",
                   "--only",       "temp", "--unit",          "temp=degF", "--name",  "temp=Air Temperature",
                   "--date-order", "dmy",  "--skip-bad-rows", "--json"}),
              0)
        << m_error.toStdString();
    const QJsonObject summary = QJsonDocument::fromJson(m_output.toUtf8()).object();
    EXPECT_EQ(summary["records"].toInt(), 1);
    EXPECT_EQ(summary["otherRows"].toInt(), 1);
    EXPECT_EQ(summary["badRows"].toInt(), 1);
    EXPECT_EQ(summary["first"].toString(), QStringLiteral("2015-04-03T10:00:00Z"));
    EXPECT_EQ(summary["columns"][0]["propertyName"].toString(), QStringLiteral("airTemperature"));
    EXPECT_EQ(summary["columns"][0]["unit"].toString(), QStringLiteral("°F"));
}

TEST_F(CommandLineTest, AFailedImportLeavesNothing)
{
    expectFailure({"import", write("bad.csv", "time,a\n2015-01-01,1\n2015-01-02,x\n"), "--site", site()}, 1,
                  QStringLiteral("bad.csv: line 3, column “a”: “x” is no number"));
    EXPECT_FALSE(QFile::exists(site()));
    EXPECT_TRUE(m_services.stored.empty());
}

TEST_F(CommandLineTest, CancellingAnImportLeavesNothing)
{
    m_services.progress = [](double) { return false; };
    expectFailure({"import", write("a.csv", "time,a\n2015-01-01,1\n"), "--site", site()}, 1,
                  QStringLiteral("cancelled"));
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(CommandLineTest, AnInterruptFromTheKeyboardCancels)
{
    m_services.progress = [](double) {
        std::raise(SIGINT);
        return true;
    };
    expectFailure({"import", write("a.csv", "time,a\n2015-01-01,1\n"), "--site", site()}, 1,
                  QStringLiteral("cancelled"));
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(CommandLineTest, ATerminalGetsABarThatVanishes)
{
    m_isTerminal = true;
    importWeather();
    EXPECT_TRUE(m_error.contains(QStringLiteral("Importing data.csv  ["))) << m_error.toStdString();
    EXPECT_TRUE(m_error.endsWith(QStringLiteral("\r\x1b[K")));
}

TEST_F(CommandLineTest, InfoGivesFullPrecisionAsJson)
{
    importWeather();
    ASSERT_EQ(run({"info", site(), "--json"}), 0);
    const QJsonObject info = QJsonDocument::fromJson(m_output.toUtf8()).object();
    EXPECT_EQ(info["site"].toString(), QStringLiteral("site"));
    const QJsonValue agent = info["agents"][0];
    EXPECT_EQ(agent["name"].toString(), QStringLiteral("EWR"));
    EXPECT_EQ(agent["records"].toInt(), 3);
    EXPECT_EQ(agent["first"].toString(), QStringLiteral("2015-01-01T00:00:00Z"));
    EXPECT_EQ(agent["last"].toString(), QStringLiteral("2015-01-02T00:00:00Z"));
    const QJsonValue pressure = agent["properties"][1];
    EXPECT_EQ(pressure["name"].toString(), QStringLiteral("Pressure"));
    EXPECT_EQ(pressure["propertyName"].toString(), QStringLiteral("pressure"));
    EXPECT_EQ(pressure["unit"].toString(), QStringLiteral("hPa"));
    EXPECT_EQ(pressure["valid"].toInt(), 3);
    EXPECT_EQ(pressure["minimum"].toDouble(), 1000);
    EXPECT_EQ(pressure["maximum"].toDouble(), 1002);
    EXPECT_EQ(pressure["average"].toDouble(), (1000 + 1001.25 + 1002) / 3);
}

TEST_F(CommandLineTest, InfoSpeaksToPeopleToo)
{
    importWeather();
    ASSERT_EQ(run({"info", site()}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("EWR: 3 records from 2015-01-01T00:00:00Z to 2015-01-02T00:00:00Z")));
    EXPECT_TRUE(
        m_output.contains(QStringLiteral("Air Temperature (°C), airTemperature: 2 valid, 1.5 to 2.5, average 2")));
}

TEST_F(CommandLineTest, RenderDrawsAllTimeUnlessTold)
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

TEST_F(CommandLineTest, RenderTakesItsOptions)
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
    EXPECT_EQ(request.trend.to, Date{1420156800});
}

TEST_F(CommandLineTest, RenderTakesAQuickRange)
{
    importWeather();
    ASSERT_EQ(run({"render", site(), "--range", "Last24Hours", "--bare", "--output", path("a.png")}), 0);
    const RenderRequest& request = m_services.rendered.front();
    EXPECT_TRUE(request.bare);
    EXPECT_EQ(request.trend.to->seconds - request.trend.from->seconds, 86'400);
}

TEST_F(CommandLineTest, LookupsListWhatThereIs)
{
    importWeather();
    importText("time,a\n2015-01-01,1\n", QStringLiteral("JFK"));
    const QString output = path("a.png");
    expectFailure({"render", site(), "--output", output}, 1, QStringLiteral("EWR, JFK"));
    expectFailure({"render", site(), "--agent", "LGA", "--output", output}, 1, QStringLiteral("EWR, JFK"));
    expectFailure({"render", site(), "--agent", "EWR", "--properties", "wind", "--output", output}, 1,
                  QStringLiteral("airTemperature, pressure"));
    expectFailure({"render", site(), "--agent", "EWR", "--from", "soon", "--output", output}, 1,
                  QStringLiteral("--from"));
    expectFailure({"render", site(), "--agent", "EWR", "--from", "2016", "--output", output}, 1,
                  QStringLiteral("--from"));
    expectFailure(
        {"render", site(), "--agent", "EWR", "--from", "2015-01-02", "--to", "2015-01-01", "--output", output}, 1,
        QStringLiteral("before --from"));
    EXPECT_FALSE(QFile::exists(output));
}

TEST_F(CommandLineTest, AFailedRenderKeepsTheFileThatWasThere)
{
    importWeather();
    write("a.png", "old");
    m_services.renderFails = true;
    expectFailure({"render", site(), "--output", path("a.png")}, 1, QStringLiteral("the module is missing"));
    EXPECT_EQ(contents(path("a.png")), "old");
}

TEST_F(CommandLineTest, PlacesThatCannotBeWrittenAreSaidToBe)
{
    importWeather();
    expectFailure({"render", site(), "--output", path("none/a.png")}, 1, QStringLiteral("cannot be written"));
    expectFailure({"export", site(), "--output", path("none/a.csv")}, 1, QStringLiteral("cannot be written"));
}

TEST_F(CommandLineTest, ExportWritesEveryDigit)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")),
              QByteArray("time,Air Temperature (°C),Pressure (hPa)\n2015-01-01T00:00:00Z,1.5,1000\n"
                         "2015-01-01T00:01:00.25Z,,1001.25\n2015-01-02T00:00:00Z,2.5,1002\n"));
}

TEST_F(CommandLineTest, ExportTakesAPart)
{
    importWeather();
    ASSERT_EQ(run({"export", site(), "--properties", "pressure", "--from", "2015-01-01T00:01:00Z", "--to",
                   "2015-01-01T12:00Z", "--output", path("out.csv")}),
              0);
    EXPECT_EQ(contents(path("out.csv")), QByteArray("time,Pressure (hPa)\n2015-01-01T00:01:00.25Z,1001.25\n"));
}

struct RoundTripCase {
    const char* name;
    QByteArray text;  ///< as export writes it
};

class RoundTrip : public CommandLineTest, public testing::WithParamInterface<RoundTripCase> {};

TEST_P(RoundTrip, ExportAndImportAreInverse)
{
    importText(GetParam().text);
    ASSERT_EQ(run({"export", site(), "--output", path("out.csv")}), 0) << m_error.toStdString();
    EXPECT_EQ(contents(path("out.csv")), GetParam().text);
    ASSERT_EQ(run({"import", path("out.csv"), "--site", path("second.plotix")}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"export", path("second.plotix"), "--output", path("again.csv")}), 0);
    EXPECT_EQ(contents(path("again.csv")), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RoundTrip,
    testing::Values(
        RoundTripCase{"Exotic",
                      "time,a\n2015-01-01T00:00:00Z,-0\n2015-01-01T00:00:01Z,5e-324\n2015-01-01T00:00:02Z,inf\n"
                      "2015-01-01T00:00:03Z,-inf\n2015-01-01T00:00:04Z,0.1\n2015-01-01T00:00:05Z,\n"},
        RoundTripCase{"FractionsOfSeconds", "time,a\n1969-12-31T23:59:59.9Z,1\n2015-01-01T00:00:00.0000002Z,2\n"},
        RoundTripCase{"EarlyAndLateYears", "time,a\n0001-01-01T00:00:00Z,1\n9999-12-31T23:59:59Z,2\n"},
        RoundTripCase{"TimesOutsideTheCalendar", "time (s),a\n-1e+300,1\n1e+300,2\n"},
        RoundTripCase{"NameLikeAUnit", "time,Level (m) ()\n2015-01-01T00:00:00Z,1\n"},
        RoundTripCase{"NameWithComma", "time,\"Wind, roof (m/s)\",b\n2015-01-01T00:00:00Z,1,2\n"}),
    [](const auto& row) { return row.param.name; });

TEST_F(CommandLineTest, OpenHandsTheSiteOver)
{
    importWeather();
    ASSERT_EQ(run({"open", site(), "--screenshot", "w.png", "--size", "800x600"}), 0);
    EXPECT_EQ(m_services.opened.at(0).site, site());
    EXPECT_EQ(m_services.opened.at(0).screenshot, QStringLiteral("w.png"));
    EXPECT_EQ(m_services.opened.at(0).screenshotSize, QSize(800, 600));
}

TEST_F(CommandLineTest, OpenNeedsADisplayOrAScreenshot)
{
    importWeather();
    m_services.display = false;
    expectFailure({"open", site()}, 1, QStringLiteral("no display"));
    EXPECT_EQ(run({"open", site(), "--screenshot", path("w.png")}), 0);
}

TEST_F(CommandLineTest, ReportIsAskedForAndWritten)
{
    importWeather();
    ASSERT_EQ(run({"report", site(), "--view", "EWR", "--paper", "Letter", "--output", path("report.pdf")}), 0)
        << m_error.toStdString();
    EXPECT_EQ(contents(path("report.pdf")), "a report");
    EXPECT_EQ(m_services.reported.at(0).view, "EWR");
    EXPECT_EQ(m_services.reported.at(0).paper, Paper::Letter);
    EXPECT_EQ(m_services.reported.at(0).document->path(), site());
}

TEST_F(CommandLineTest, ReportTakesTheUsualPaperAndTheOnlyViewUnlessTold)
{
    importWeather();
    ASSERT_EQ(run({"report", site(), "--output", path("report.pdf")}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_services.reported.at(0).view.isEmpty());
    EXPECT_FALSE(m_services.reported.at(0).paper);
}

TEST_F(CommandLineTest, ReportIsAPdfOnOneOfTwoPapers)
{
    expectFailure({"report", site(), "--output", path("report.png")}, 2, "must end in .pdf");
    expectFailure({"report", site(), "--paper", "A3", "--output", path("report.pdf")}, 2, "A3");
    expectFailure({"report", path("nowhere.plotix"), "--output", path("report.pdf")}, 1, "there is no site");
}

TEST_F(CommandLineTest, ServeListensOnThisMachineUnlessTold)
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

TEST_F(CommandLineTest, ServeTakesSeveralSitesAddressPortAndToken)
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

TEST_F(CommandLineTest, ServeNeedsASiteAndAPort)
{
    expectFailure({"serve"}, 2, "SITE");
    expectFailure({"serve", site(), "--port", "65536"}, 2, "--port");
    expectFailure({"serve", path("nowhere.plotix")}, 1, "there is no site");
    EXPECT_TRUE(m_services.served.empty());
}

/// The demonstration site of two years is built once for all of these.
class DemonstrationCommandTest : public CommandLineTest {
protected:
    static void SetUpTestSuite() { s_home = std::make_unique<QTemporaryDir>(); }
    static void TearDownTestSuite() { s_home.reset(); }
    void SetUp() override
    {
        qputenv("PLOTIX_DATA_HOME", s_home->path().toUtf8());
        m_before = QDir::currentPath();
        QDir::setCurrent(m_folder.path());
    }
    void TearDown() override
    {
        QDir::setCurrent(m_before);
        qunsetenv("PLOTIX_DATA_HOME");
    }

    static inline std::unique_ptr<QTemporaryDir> s_home;
    QString m_before;
};

TEST_F(DemonstrationCommandTest, IsBuiltOnceWithItsTrendsAndShown)
{
    ASSERT_EQ(run({}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.stored.size(), suggestedTrends().size());
    EXPECT_EQ(m_services.opened.at(0).site, demonstrationSitePath());
    m_services.stored.clear();
    ASSERT_EQ(run({"open"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_services.stored.empty());
    EXPECT_EQ(m_services.opened.size(), 2U);
}

TEST_F(DemonstrationCommandTest, IsDrawnIntoTwoFilesWithoutADisplay)
{
    m_services.display = false;
    ASSERT_EQ(run({}), 0) << m_error.toStdString();
    EXPECT_EQ(m_output.count(QLatin1Char('\n')), 2);
    EXPECT_EQ(contents(path("plotix-demonstration.png")), "a png");
    EXPECT_EQ(contents(path("plotix-demonstration.pdf")), "a pdf");
    EXPECT_TRUE(m_output.contains(QStringLiteral("plotix-demonstration.png")));
    EXPECT_TRUE(m_services.opened.empty());
}

}  // namespace

}  // namespace plotix
