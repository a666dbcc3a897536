#include "tests/hostapp/cli/CommandLineFixture.h"

#include <QtCore/QDir>

namespace plotix {

namespace {

TEST_F(CommandLineTest, ExplainsItself)
{
    EXPECT_EQ(run({"--help"}), 0);
    for (const char* command :
         {"open", "import", "info", "render", "export", "record", "serve", "report", "compact", "verify"}) {
        EXPECT_TRUE(m_output.contains(QLatin1String(command)));
    }
}

TEST_F(CommandLineTest, ExplainsEachCommandWithAnExample)
{
    for (const char* command :
         {"open", "import", "info", "render", "export", "record", "serve", "report", "compact", "verify"}) {
        EXPECT_EQ(run({command, "--help"}), 0);
        EXPECT_TRUE(m_output.contains(QStringLiteral("plotix %1 ").arg(QLatin1String(command)))) << command;
        EXPECT_TRUE(m_output.contains(QStringLiteral("Example"))) << command;
        EXPECT_TRUE(m_error.isEmpty());
    }
}

TEST_F(CommandLineTest, ATimeOfAMachineWhoseZoneNobodyKnowsIsWrongUsage)
{
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Nowhere/Else");
    EXPECT_EQ(run({"export", "some.plotix", "--from", "2015-01-01"}), kCommandWrongUsage);
    EXPECT_TRUE(m_error.contains(QStringLiteral("Nowhere/Else"))) << m_error.toStdString();
    qputenv("TZ", before);
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
        UsageCase{"WrongPicture", {"render", "a.plotix", "--output", "a.gif"}, ".png, .pdf or .svg"},
        UsageCase{"WrongSize", {"render", "a.plotix", "--output", "a.png", "--size", "big"}, "1200x600"},
        UsageCase{"EmptySize", {"render", "a.plotix", "--output", "a.png", "--size", "0x5"}, "1200x600"},
        UsageCase{"WrongRange", {"render", "a.plotix", "--output", "a.png", "--range", "soon"}, "last7Days"},
        UsageCase{"SeveralUnknownWords", {"info", "a.plotix", "--property", "Nope"}, "unknown option: --property Nope"},
        UsageCase{"UnknownWord", {"info", "a.plotix", "b.plotix"}, "not understood: b.plotix"},
        UsageCase{"WrongTime", {"render", "a.plotix", "--output", "a.png", "--from", "soon"}, "--from"},
        UsageCase{"YearAlone", {"export", "a.plotix", "--output", "a.csv", "--to", "2016"}, "2013-07-01T12:00:00Z"},
        UsageCase{"ToBeforeFrom",
                  {"export", "a.plotix", "--output", "a.csv", "--from", "2015-01-02", "--to", "2015-01-01"},
                  "before --from"},
        UsageCase{"CompactBefore", {"compact", "a.plotix", "--before", "soon"}, "--before"},
        UsageCase{"CompactKeep", {"compact", "a.plotix", "--keep", "0d"}, "--keep"},
        UsageCase{"CompactBeforeAndKeep", {"compact", "a.plotix", "--before", "2015-01-01", "--keep", "1d"}, "--keep"},
        UsageCase{"RangeAndFrom",
                  {"render", "a.plotix", "--output", "a.png", "--range", "today", "--from", "2015-01-01"},
                  "--from"},
        UsageCase{"BarePdf", {"render", "a.plotix", "--output", "a.pdf", "--bare"}, "--bare"},
        UsageCase{"Pair", {"import", "a.csv", "--site", "a.plotix", "--unit", "temp"}, "COLUMN=TEXT"},
        UsageCase{"DateOrder", {"import", "a.csv", "--site", "a.plotix", "--date-order", "dym"}, "--date-order"},
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

TEST_F(CommandLineTest, WhatIsLookedAtSpeaksTheUsersLanguageAndWhatIsPrintedDoesNot)
{
    EXPECT_TRUE(commandShowsTexts({}));
    EXPECT_TRUE(commandShowsTexts({"open", "a.plotix", "--screenshot", "a.png"}));
    EXPECT_TRUE(commandShowsTexts({"report", "a.plotix", "--output", "a.pdf"}));
    EXPECT_TRUE(commandShowsTexts({"serve", "a.plotix"}));
    EXPECT_FALSE(commandShowsTexts({"import", "a.csv", "--site", "a.plotix"}));
    EXPECT_FALSE(commandShowsTexts({"verify", "a.plotix"}));
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

}  // namespace

TEST_F(CommandLineTest, AFileWithoutACommandIsOpened)
{
    QFile(site()).open(QIODevice::WriteOnly);
    ASSERT_EQ(run({site()}), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.opened.at(0).site, site());
    EXPECT_TRUE(commandWantsWindow({site()}));
}

TEST_F(CommandLineTest, FilesOfMeasurementsAreOfferedForImport)
{
    const QStringList files{path("a.csv"), path("b.csv")};
    for (const QString& file : files) {
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write("time,Humidity\n2024-05-01,40\n");
    }
    ASSERT_EQ(run(files), 0) << m_error.toStdString();
    EXPECT_EQ(m_services.opened.at(0).imports, files);
    EXPECT_EQ(m_services.opened.at(0).site, QString());
}

TEST_F(CommandLineTest, MeasurementsWithoutADisplayAreForTheImportCommand)
{
    m_services.display = false;
    QFile written(path("a.csv"));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    written.write("time,Humidity\n");
    written.close();
    expectFailure({path("a.csv")}, 1, QStringLiteral("plotix import"));
}

TEST_F(CommandLineTest, AWordThatIsNoFileIsNotUnderstood)
{
    expectFailure({"imprt"}, 2, QStringLiteral("not understood: imprt"));
    expectFailure({path("absent.csv")}, 1, QStringLiteral("there is no file"));
}

TEST_F(CommandLineTest, SaysItsVersion)
{
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(m_output, QStringLiteral("plotix 1.2.3\n"));
    QCoreApplication::setApplicationVersion({});
}

}  // namespace plotix
