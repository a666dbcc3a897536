#include "tests/hostapp/formulas/FormulaSite.h"

namespace plotix {
namespace {

using Kind = FormulaProblem::Kind;

class FormulaPlanTest : public FormulaSite {};

TEST_F(FormulaPlanTest, ADifferenceOfTemperaturesIsInKelvins)
{
    EXPECT_EQ(unitOf("Supply - Return"), "K");
    EXPECT_EQ(unitOf("Supply - Outdoor"), "K");
    EXPECT_EQ(unitOf("Outdoor - Outdoor"), "K");
}

TEST_F(FormulaPlanTest, ATemperatureAndADifferenceAreATemperature)
{
    EXPECT_EQ(unitOf("Supply + 5 K"), "°C");
    EXPECT_EQ(unitOf("Supply - 5"), "°C");
    EXPECT_EQ(unitOf("Return + (Supply - Return) / 2"), "°C");
    EXPECT_EQ(unitOf("Return + Spread"), "°C");
}

TEST_F(FormulaPlanTest, TheMeanOfTemperaturesIsOne)
{
    EXPECT_EQ(unitOf("(Supply + Return) / 2"), "°C");
    EXPECT_EQ(unitOf("0.25 * Supply + 0.75 * Return"), "°C");
}

TEST_F(FormulaPlanTest, TheSumOfTemperaturesIsRefused)
{
    EXPECT_EQ(problemOf("Supply + Return").kind, Kind::SumOfTemperatures);
    EXPECT_EQ(problemOf("2 * Supply").kind, Kind::SumOfTemperatures);
    EXPECT_EQ(problemOf("-Supply").kind, Kind::SumOfTemperatures);
    EXPECT_EQ(problemOf("Supply * Power").kind, Kind::TemperatureInProduct);
    EXPECT_EQ(problemOf("integral(Supply)").kind, Kind::TemperatureInProduct);
}

TEST_F(FormulaPlanTest, WhatDoesNotFitIsSaidAtItsPlace)
{
    EXPECT_EQ(sentence("Supply + Power"), "°C and kW do not fit together: they are different quantities.");
    EXPECT_EQ(placeOf("2 * (Supply + Power)"), "Supply + Power");
    EXPECT_EQ(sentence("Power + Level"),
              "kW and a number without a unit do not fit together: they are different quantities.");
}

TEST_F(FormulaPlanTest, UnknownUnitsFitThemselvesAlone)
{
    EXPECT_EQ(unitOf("Count + Count"), "pieces");
    EXPECT_EQ(unitOf("Count / Count"), "");
    EXPECT_EQ(unitOf("Count * 2"), "pieces");
    EXPECT_EQ(problemOf("Count + Power").kind, Kind::NoFit);
    EXPECT_EQ(unitOf("derivative(Count)"), "pieces/h");
}

TEST_F(FormulaPlanTest, PlainNumbersTakeOnTheUnitTheyMeet)
{
    EXPECT_EQ(unitOf("max(Power, 0)"), "kW");
    EXPECT_EQ(unitOf("if(Supply > 60, Supply, 60)"), "°C");
    EXPECT_EQ(unitOf("Power * 0.001"), "kW");
    EXPECT_EQ(unitOf("100 - Valve"), "%");
}

TEST_F(FormulaPlanTest, ProductsHaveTheNamesPeopleKnow)
{
    EXPECT_EQ(unitOf("Power * 1 h"), "kWh");
    EXPECT_EQ(unitOf("Power / 2 kW"), "");
    EXPECT_EQ(unitOf("integral(Power)"), "kWh");
    EXPECT_EQ(unitOf("integral(Flow)"), "m³");
    EXPECT_EQ(unitOf("integral(Level)"), "h");
    EXPECT_EQ(unitOf("integral(Level * 1 [W/m2])"), "Wh/m²");
    EXPECT_EQ(unitOf("derivative(integral(Power))"), "kW");
    EXPECT_EQ(unitOf("derivative(Supply)"), "K/h");
    EXPECT_EQ(unitOf("Power * Valve"), "kW");
    EXPECT_EQ(unitOf("Power / Flow"), "kW/(m³/h)");
    EXPECT_EQ(unitOf("Level / 5 s"), "Hz");
    EXPECT_EQ(unitOf("sqrt((3 m) ^ 2 * Level)"), "m");
}

TEST_F(FormulaPlanTest, AResultCanBeWantedInAUnitItConvertsTo)
{
    EXPECT_EQ(unitOf("integral(Power)", "MJ"), "MJ");
    EXPECT_EQ(unitOf("Power / 2 kW", "%"), "%");
    EXPECT_EQ(unitOf("Level * 3", "kW"), "kW");
    EXPECT_EQ(sentence("Power * 2", "K"), "The result is kW, which cannot be shown in K.");
    EXPECT_EQ(sentence("Supply - Return", "°C"), "The result is a difference of temperatures: choose K, not °C.");
}

TEST_F(FormulaPlanTest, FunctionsOfNumbersRefuseQuantities)
{
    EXPECT_EQ(unitOf("sin(90 [degrees] + Valve * 0)"), "");
    EXPECT_EQ(problemOf("exp(Power)").kind, Kind::NotPlain);
    EXPECT_EQ(unitOf("exp(value(Power, MW))"), "");
    EXPECT_EQ(problemOf("Power ^ 0.5").kind, Kind::PowerNotWhole);
}

TEST_F(FormulaPlanTest, DewPointWantsATemperatureAndAHumidity)
{
    directory.agents[0].properties.push_back(directory.agents[1].properties[1]);
    EXPECT_EQ(unitOf("dew_point(Supply, Valve)"), "°C");
    EXPECT_EQ(unitOf("dew_point(Supply, Level)"), "°C");
    EXPECT_EQ(problemOf("dew_point(Power, Valve)").kind, Kind::NoFit);
    EXPECT_EQ(problemOf("dew_point(Supply - Return, Valve)").kind, Kind::DifferenceAsTemperature);
}

TEST_F(FormulaPlanTest, SpansAreTimes)
{
    EXPECT_EQ(problemOf("mean(Power, 1 kW)").kind, Kind::NotASpan);
    EXPECT_EQ(problemOf("mean(Power, 60)").kind, Kind::NotASpan);
    EXPECT_EQ(problemOf("mean(Power, 1 parsnip)").kind, Kind::UnknownUnit);
    EXPECT_EQ(placeOf("mean(Power, 60)"), "60");
    EXPECT_EQ(problemOf("resampled_mean(Power, 2 d)").kind, Kind::NotASpan);
}

TEST_F(FormulaPlanTest, NamesAreFoundInTheAgentOrBehindAnothers)
{
    EXPECT_EQ(unitOf("\"Room-air (2)\" - \"roof station\".\"AIR TEMPERATURE\""), "K");
    EXPECT_EQ(sentence("Suply - Return"), "“Boiler” has no property “Suply”.");
    EXPECT_EQ(placeOf("Supply - Cellar.Return"), "Cellar.Return");
    EXPECT_EQ(problemOf("Cellar.Return").kind, Kind::UnknownAgent);
    EXPECT_EQ(problemOf("1 + 2").kind, Kind::NoProperty);
}

TEST_F(FormulaPlanTest, CyclesAreRefused)
{
    const qint64 one = add(kBoiler, "One", "K", "Two * 2");
    const qint64 two = add(kBoiler, "Two", "K", "Supply - Return");
    EXPECT_FALSE(planProperty(directory, one).problem);
    const FormulaPlan plan = planFormula(directory, kBoiler, {QStringLiteral("One / 2")}, two);
    ASSERT_TRUE(plan.problem);
    EXPECT_EQ(sentenceOf(*plan.problem).toStdString(), "“One” leads back to the property that is being computed.");
}

TEST_F(FormulaPlanTest, AFormulaOverABrokenOneSaysWhatIsWrongWithThat)
{
    add(kBoiler, "One", "K", "Gone - Return");
    EXPECT_EQ(sentence("One * 2"), "“One” cannot be computed: “Boiler” has no property “Gone”.");
}

TEST_F(FormulaPlanTest, AKeptFormulaWhoseUnitNoLongerFitsIsAProblem)
{
    const qint64 one = add(kBoiler, "One", "K", "Supply - Return");
    for (auto& property : directory.agents[0].properties)
        if (property.name == QLatin1String("Supply") || property.name == QLatin1String("Return"))
            property.archivedUnit = QStringLiteral("kW");
    EXPECT_EQ(planProperty(directory, one).problem->kind, Kind::ResultDoesNotFit);
}

TEST_F(FormulaPlanTest, WhatDependsOnAPropertyIsFoundAlsoThroughOthers)
{
    const qint64 one = add(kBoiler, "One", "K", "Supply - Return");
    const qint64 two = add(kRoof, "Two", "K", "Boiler.One * 2");
    add(kRoof, "Three", "%", "Humidity");
    EXPECT_EQ(dependentsOf(directory, idOf("Supply")), (std::vector<qint64>{one, two}));
}

TEST_F(FormulaPlanTest, WindowsSayHowFarTheyReach)
{
    EXPECT_EQ(plan("Supply - Return").program->reach, (FormulaReach{0, 0, false}));
    EXPECT_EQ(plan("mean(hold(Power, 10 min), 1 h)").program->reach, (FormulaReach{4200, 0, false}));
    EXPECT_TRUE(plan("integral(Power)").program->reach.fromBeginning);
    EXPECT_GE(plan("daily_mean(Power)").program->reach.after, 86400);
}

}  // namespace
}  // namespace plotix
