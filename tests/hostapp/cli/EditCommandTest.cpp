#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

/// What edit prints and returns; that it works is tested with the document.
class EditCommandTest : public CommandLineTest {
protected:
    void SetUp() override { importWeather(); }

    int importAgain(const char* rows, const QStringList& more = {})
    {
        write("again.csv", QByteArray("time,Air Temperature (°C),Pressure [hPa]\n") + rows);
        return run(QStringList{"import", path("again.csv"), "--site", site(), "--agent", agentName()} + more);
    }
    QString agentName() const { return SiteDocument::open(site())->agents().front()->name(); }
    QStringList propertyNames() const
    {
        QStringList names;
        const auto document = SiteDocument::open(site());
        for (const auto& property : document->agents().front()->siteProperties())
            names << property->name();
        return names;
    }
    std::size_t records() const
    {
        return recordsOfSite(site())->overview(SiteDocument::open(site())->agents().front()->id(), {}).records();
    }
};

TEST_F(EditCommandTest, RenamesAProperty)
{
    ASSERT_EQ(run({"edit", site(), "--property", "Pressure", "--rename", "Air Pressure"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("Pressure → Air Pressure”")) << m_output.toStdString();
    EXPECT_EQ(propertyNames(), (QStringList{"Air Temperature", "Air Pressure"}));
}

TEST_F(EditCommandTest, WithoutAPropertyTheAgentIsMeant)
{
    ASSERT_EQ(run({"edit", site(), "--rename", "Roof"}), 0) << m_error.toStdString();
    EXPECT_EQ(agentName(), "Roof");
}

TEST_F(EditCommandTest, RemovesASpanAndUndoesIt)
{
    ASSERT_EQ(run({"edit", site(), "--remove", "--from", "2015-01-01T12:00:00Z"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("2 values")) << m_output.toStdString();
    EXPECT_EQ(records(), 2U);
    ASSERT_EQ(run({"edit", site(), "--undo"}), 0) << m_error.toStdString();
    EXPECT_EQ(records(), 3U);
}

TEST_F(EditCommandTest, ListsWhatCanBeUndoneTheLatestFirst)
{
    run({"edit", site(), "--property", "Pressure", "--delete"});
    ASSERT_EQ(run({"edit", site(), "--list"}), 0);
    EXPECT_TRUE(m_output.contains("delete “")) << m_output.toStdString();
    EXPECT_TRUE(m_output.section('\n', 1, 1).contains("import “")) << m_output.toStdString();
}

TEST_F(EditCommandTest, WishesThatContradictAreWrongUsage)
{
    expectFailure({"edit", site()}, 2, QStringLiteral("say one of"));
    expectFailure({"edit", site(), "--undo", "--delete"}, 2, QStringLiteral("say one of"));
    expectFailure({"edit", site(), "--remove"}, 2, QStringLiteral("--from and --to"));
    expectFailure({"edit", site(), "--delete"}, 2, QStringLiteral("--agent or --property"));
    EXPECT_EQ(propertyNames().size(), 2);
}

TEST_F(EditCommandTest, AnImportOverOtherValuesIsRefusedAndChangesNothing)
{
    EXPECT_EQ(importAgain("2015-01-01T00:00:00Z,9,1000\n2015-01-02T00:00:00Z,9,9\n2016-01-01T00:00:00Z,1,1\n"), 1);
    EXPECT_TRUE(m_error.contains("replaces 3 stored values of 2 properties")) << m_error.toStdString();
    EXPECT_TRUE(m_error.contains("--replace")) << m_error.toStdString();
    EXPECT_EQ(records(), 3U);
}

TEST_F(EditCommandTest, OneReplacedValueIsOne)
{
    EXPECT_EQ(importAgain("2015-01-01T00:00:00Z,9,1000\n"), 1);
    EXPECT_TRUE(m_error.contains("replaces 1 stored value of 1 property;")) << m_error.toStdString();
}

TEST_F(EditCommandTest, TheSameFileAgainReplacesNothing)
{
    importWeather();
    EXPECT_EQ(records(), 3U);
}

TEST_F(EditCommandTest, AllowedReplacingIsCountedAndUndone)
{
    ASSERT_EQ(importAgain("2015-01-01T00:00:00Z,9,1000\n2016-01-01T00:00:00Z,1,1\n", {"--replace"}), 0)
        << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("1 stored value replaced")) << m_output.toStdString();
    EXPECT_EQ(records(), 4U);
    ASSERT_EQ(run({"edit", site(), "--undo-import"}), 0) << m_error.toStdString();
    EXPECT_EQ(records(), 3U);
    importWeather();  // nothing to replace: all is as it was
    EXPECT_EQ(records(), 3U);
}

TEST_F(EditCommandTest, AnUndoneImportTakesWhatItMadeAlong)
{
    ASSERT_EQ(run({"edit", site(), "--undo-import"}), 0) << m_error.toStdString();
    EXPECT_TRUE(SiteDocument::open(site())->agents().empty());
    EXPECT_FALSE(recordsOfSite(site())->extent());
    expectFailure({"edit", site(), "--undo-import"}, 1, QStringLiteral("no import"));
}

TEST_F(EditCommandTest, WhatWasChangedAfterAnImportIsUndoneFirst)
{
    run({"edit", site(), "--rename", "Roof"});
    expectFailure({"edit", site(), "--undo-import"}, 1, QStringLiteral("undo that first"));
}

TEST_F(EditCommandTest, SetsALimitAndInfoTellsIt)
{
    ASSERT_EQ(run({"edit", site(), "--limit", "Air Temperature > 330 K"}), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("limits of “EWR: Air Temperature”")) << m_output.toStdString();
    run({"info", site()});
    EXPECT_TRUE(m_output.contains("limit “warning high”: warning above 330 K")) << m_output.toStdString();
    run({"edit", site(), "--undo"});
    run({"info", site()});
    EXPECT_FALSE(m_output.contains("limit")) << m_output.toStdString();
}

TEST_F(EditCommandTest, ALimitOfTheSameNameIsChanged)
{
    run({"edit", site(), "--limit", "Pressure < 990", "--limit-name", "storm"});
    ASSERT_EQ(run({"edit", site(), "--limit", "\"Pressure\"<-9.5e2", "--limit-name", "Storm", "--severity", "alarm"}),
              0);
    run({"info", site()});
    EXPECT_EQ(m_output.count("limit “"), 1);
    EXPECT_TRUE(m_output.contains("limit “Storm”: alarm below -950 hPa")) << m_output.toStdString();
}

TEST_F(EditCommandTest, RemovesALimitAndSaysWhichThereAre)
{
    run({"edit", site(), "--limit", "Pressure < 990", "--limit-name", "storm"});
    expectFailure({"edit", site(), "--property", "Pressure", "--remove-limit", "gale"}, 1,
                  QStringLiteral("it has “storm”"));
    ASSERT_EQ(run({"edit", site(), "--property", "Pressure", "--remove-limit", "STORM"}), 0) << m_error.toStdString();
    EXPECT_TRUE(SiteDocument::open(site())->limits().empty());
}

TEST_F(EditCommandTest, ALimitThatCannotBeIsRefused)
{
    expectFailure({"edit", site(), "--limit", "Pressure 990"}, 2, QStringLiteral("> or <"));
    expectFailure({"edit", site(), "--limit", "Pressure > 60 °C"}, 1, QStringLiteral("does not convert"));
    expectFailure({"edit", site(), "--limit", "Presure > 60"}, 1, QStringLiteral("Presure"));
    expectFailure({"edit", site(), "--remove-limit", "storm"}, 2, QStringLiteral("--property"));
    expectFailure({"edit", site(), "--undo", "--severity", "alarm"}, 2, QStringLiteral("--limit"));
    EXPECT_TRUE(SiteDocument::open(site())->limits().empty());
}

TEST_F(EditCommandTest, WritesANoteThatIsListedAndSearched)
{
    ASSERT_EQ(run({"edit", site(), "--note", "2015-01-01T14:00Z .. 2015-01-01T15:00Z", "Pump replaced", "--property",
                   "Pressure", "--author", "Ada"}),
              0)
        << m_error.toStdString();
    ASSERT_EQ(run({"edit", site(), "--note", "2015-01-02", "Filter\ncleaned"}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"notes", site()}), 0);
    EXPECT_TRUE(m_output.startsWith("1  2015-01-01T14:00:00Z .. 2015-01-01T15:00:00Z, Ada, EWR: Pressure\n"
                                    "    Pump replaced\n2  2015-01-02T"))
        << m_output.toStdString();
    run({"notes", site(), "--search", "pressure PUMP"});
    EXPECT_EQ(m_output.count("\n"), 2) << m_output.toStdString();
    run({"notes", site(), "--search", "pump filter"});
    EXPECT_EQ(m_output, "No notes.\n");
    run({"notes", site(), "--from", "2015-01-01T15:00:01Z", "--json"});
    EXPECT_FALSE(m_output.contains("Pump"));
    EXPECT_TRUE(m_output.contains("\"text\": \"Filter\\ncleaned\"")) << m_output.toStdString();
}

TEST_F(EditCommandTest, ASpanMayEndAtATimeOfTheSameDay)
{
    ASSERT_EQ(run({"edit", site(), "--note", "2015-01-01 14:00 .. 15:30", "Pump"}), 0) << m_error.toStdString();
    const SiteNote note = SiteDocument::open(site())->notes().front();
    EXPECT_EQ(note.to - note.from, 5400);
}

TEST_F(EditCommandTest, ANoteIsChangedRemovedAndBroughtBack)
{
    run({"edit", site(), "--note", "2015-01-01T14:00Z", "Pump"});
    ASSERT_EQ(run({"edit", site(), "--change-note", "1", "Valve"}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"edit", site(), "--remove-note", "1"}), 0) << m_error.toStdString();
    EXPECT_TRUE(SiteDocument::open(site())->notes().empty());
    run({"edit", site(), "--undo"});
    EXPECT_EQ(SiteDocument::open(site())->notes().front().text, "Valve");
    expectFailure({"edit", site(), "--remove-note", "9"}, 1, QStringLiteral("there is no note 9"));
    expectFailure({"edit", site(), "--note", "yesterday", "Pump"}, 2, QStringLiteral("needs a time"));
    expectFailure({"edit", site(), "--undo", "--author", "Ada"}, 2, QStringLiteral("--author"));
}

}  // namespace

}  // namespace plotix
