#include "hostapp/document/SiteDocument.h"
#include "tests/hostapp/cli/CommandLineFixture.h"

namespace plotix {

namespace {

/// Computed properties by `plotix edit`, and as other commands see them.
class ComputeCommandTest : public CommandLineTest {
protected:
    void SetUp() override
    {
        write("boiler.csv", "time,Supply (°C),Return (°C),Room-air (°C),Power (kW)\n"
                            "2024-01-01T00:00:00Z,60,40,20,6\n2024-01-01T00:30:00Z,62,41,21,6\n"
                            "2024-01-01T01:00:00Z,64,44,,8\n");
        ASSERT_EQ(run({"import", path("boiler.csv"), "--site", site(), "--agent", "Boiler"}), 0)
            << m_error.toStdString();
    }

    int compute(const QString& definition, const QStringList& more = {})
    {
        return run(QStringList{"edit", site(), "--compute", definition} + more);
    }
    QString exported(const QString& properties)
    {
        EXPECT_EQ(run({"export", site(), "--properties", properties, "--output", path("out.csv")}), 0)
            << m_error.toStdString();
        QFile file(path("out.csv"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }
};

TEST_F(ComputeCommandTest, AComputedPropertyIsExportedLikeAnyOther)
{
    ASSERT_EQ(compute("Spread = Supply - Return"), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.contains("compute “Boiler: Spread”")) << m_output.toStdString();
    const QString text = exported("spread,Power");
    EXPECT_TRUE(text.contains("Spread (K)")) << text.toStdString();
    EXPECT_TRUE(text.contains(",21,6\n")) << text.toStdString();
}

TEST_F(ComputeCommandTest, NamesWithSignsAreQuotedOnBothSides)
{
    ASSERT_EQ(compute("\"Lift = 1\" = Supply - \"Room-air\""), 0) << m_error.toStdString();
    EXPECT_TRUE(exported("lift1").contains("Lift = 1 (K)"));
}

TEST_F(ComputeCommandTest, TheUnitAndTheJoinMayBeChosen)
{
    ASSERT_EQ(compute("Heat = integral(Power)", {"--unit", "MJ", "--join", "line", "--longest-gap", "30m"}), 0)
        << m_error.toStdString();
    EXPECT_TRUE(exported("Heat").contains(",23.4")) << exported("Heat").toStdString();
}

TEST_F(ComputeCommandTest, TheSameNameChangesItAndKeepsWhatIsNotSaid)
{
    ASSERT_EQ(compute("Heat = integral(Power)", {"--unit", "MJ"}), 0);
    ASSERT_EQ(compute("Heat = integral(Power) * 2"), 0) << m_error.toStdString();
    ASSERT_EQ(run({"edit", site(), "--computed"}), 0);
    EXPECT_EQ(m_output.toStdString(), "Boiler: Heat (MJ) = integral(Power) * 2\n");
}

TEST_F(ComputeCommandTest, AnErrorHasACaretAtItsPlaceAndASentence)
{
    EXPECT_EQ(compute("Sum = 2 * (Supply + Power)"), 1);
    EXPECT_EQ(m_error.toStdString(), "2 * (Supply + Power)\n     ^^^^^^^^^^^^^^\n"
                                     "plotix: °C and kW do not fit together: they are different quantities.\n");
    EXPECT_EQ(compute("Sum = Suply"), 1);
    EXPECT_TRUE(m_error.startsWith("Suply\n^^^^^\nplotix: “Boiler” has no property “Suply”.")) << m_error.toStdString();
}

TEST_F(ComputeCommandTest, OptionsThatDoNotFitAreWrongUsage)
{
    expectFailure({"edit", site(), "--compute", "Supply - Return"}, 2, "needs a name");
    expectFailure({"edit", site(), "--rename", "A", "--unit", "kW"}, 2, "belong to --compute");
    expectFailure({"edit", site(), "--compute", "A = Supply", "--color", "loud"}, 2, "no colour");
    expectFailure({"edit", site(), "--compute", "Supply = Return"}, 1, "taken");
}

TEST_F(ComputeCommandTest, ItIsRemovedAndBroughtBackAsAnyProperty)
{
    compute("Spread = Supply - Return");
    ASSERT_EQ(run({"edit", site(), "--property", "Spread", "--delete"}), 0) << m_error.toStdString();
    ASSERT_EQ(run({"edit", site(), "--undo"}), 0) << m_error.toStdString();
    EXPECT_TRUE(exported("Spread").contains(",20\n"));
}

TEST_F(ComputeCommandTest, FormulasThatFollowARenamedPropertyAreTold)
{
    compute("Spread = Supply - Return");
    ASSERT_EQ(run({"edit", site(), "--property", "Return", "--rename", "Return flow"}), 0);
    EXPECT_TRUE(m_output.contains("The formula of “Spread” has the new name in it.")) << m_output.toStdString();
    run({"edit", site(), "--computed"});
    EXPECT_EQ(m_output.toStdString(), "Boiler: Spread (K) = Supply - \"Return flow\"\n");
}

TEST_F(ComputeCommandTest, WhatADeletedPropertyBreaksIsTold)
{
    compute("Spread = Supply - Return");
    ASSERT_EQ(run({"edit", site(), "--property", "Return", "--delete"}), 0);
    EXPECT_TRUE(m_output.contains("“Spread” can be computed no longer: “Boiler” has no property “Return”."))
        << m_output.toStdString();
    run({"edit", site(), "--computed"});
    EXPECT_TRUE(m_output.contains("cannot be computed")) << m_output.toStdString();
    expectFailure({"export", site(), "--properties", "Spread", "--output", path("out.csv")}, 1,
                  "“Spread” cannot be computed");
}

TEST_F(ComputeCommandTest, InfoTellsFormulaAndFigures)
{
    compute("Spread = Supply - Return", {"--color", "#336699"});
    ASSERT_EQ(run({"info", site()}), 0);
    EXPECT_TRUE(m_output.contains("Spread (K), spread: 3 valid, 20 to 21")) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("= Supply - Return")) << m_output.toStdString();
    ASSERT_EQ(run({"info", site(), "--json"}), 0);
    EXPECT_TRUE(m_output.contains("\"formula\"")) << m_output.toStdString();
    EXPECT_EQ(SiteDocument::open(site())->agents().front()->siteProperties().back()->color(), QColor("#336699"));
}

}  // namespace

}  // namespace plotix
