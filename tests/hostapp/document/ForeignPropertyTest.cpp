#include "hostapp/document/ForeignProperty.h"

#include "hostapp/formulas/FormulaPlan.h"

#include <gtest/gtest.h>

// Unit A has a Power of its own; Unit B has one too.

namespace {

using plotix::foreignProperty;

constexpr plotix::RowId kUnitA = 1, kUnitB = 2, kOwnPower = 11, kOtherPower = 21;

class ForeignPropertyTest : public testing::Test {
protected:
    ForeignPropertyTest()
    {
        directory.agents = {{kUnitA, "Unit A", {}}, {kUnitB, "Unit B", {}}};
        add(0, kOwnPower, "Power");
        add(1, kOtherPower, "Power");
    }
    void add(std::size_t agent, plotix::RowId id, const QString& name, const QString& formula = {})
    {
        plotix::SiteProperty::Description property;
        property.id = id;
        property.name = name;
        property.propertyName = QStringLiteral("key%1").arg(id);
        property.unit = property.archivedUnit = "kW";
        if (!formula.isEmpty())
            property.formula = plotix::PropertyFormula{formula};
        directory.agents[agent].properties.push_back(property);
    }

    plotix::FormulaDirectory directory;
};

TEST_F(ForeignPropertyTest, IsCalledAfterItsAgent)
{
    const auto foreign = foreignProperty(directory, kUnitA, kOtherPower);
    EXPECT_EQ(foreign->wanted.name, "Power (Unit B)");
    EXPECT_EQ(foreign->key, std::nullopt);
}

TEST_F(ForeignPropertyTest, ItsFormulaCanBeWorkedOut)
{
    const auto foreign = foreignProperty(directory, kUnitA, kOtherPower);
    EXPECT_EQ(foreign->wanted.formula.text, "\"Unit B\".Power");
    EXPECT_FALSE(planFormula(directory, kUnitA, foreign->wanted.formula, 0).problem);
}

TEST_F(ForeignPropertyTest, ANameThatIsTakenGetsANumber)
{
    add(0, 12, "power (unit b)");
    EXPECT_EQ(foreignProperty(directory, kUnitA, kOtherPower)->wanted.name, "Power (Unit B) 2");
}

TEST_F(ForeignPropertyTest, OneThatSaysTheSameIsTakenAgain)
{
    add(0, 12, "B's", "\"Unit B\".Power");
    EXPECT_EQ(foreignProperty(directory, kUnitA, kOtherPower)->key, "key12");
}

TEST_F(ForeignPropertyTest, AnAgentsOwnIsNone)
{
    EXPECT_FALSE(foreignProperty(directory, kUnitA, kOwnPower));
    EXPECT_FALSE(foreignProperty(directory, kUnitA, 99));
    EXPECT_FALSE(foreignProperty(directory, 99, kOtherPower));
}

}  // namespace
