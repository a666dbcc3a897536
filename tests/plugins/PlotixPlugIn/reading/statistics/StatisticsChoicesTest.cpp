#include "plugins/PlotixPlugIn/reading/statistics/StatisticsChoices.h"

#include "plugins/PlotixPlugIn/reading/statistics/FigureColumns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using namespace plotix;

TEST(StatisticsChoicesTest, NothingChosenIsAnEmptyMap)
{
    EXPECT_TRUE(mapFromChoices({}).isEmpty());
    EXPECT_EQ(choicesFromMap({}), StatisticsChoices());
}

TEST(StatisticsChoicesTest, ComeBackFromTheirMap)
{
    StatisticsChoices choices;
    choices.over = StatisticsOver::Marked;
    choices.columns = QStringList{"maximumTime", "coverage"};
    choices.isOffered = true;
    choices.highLimits[QStringLiteral("power")] = {60, QStringLiteral("kW")};
    choices.lowLimits[QStringLiteral("power")] = {-1, QStringLiteral("W")};
    choices.lowLimits[QStringLiteral("level")] = {2, QString()};
    EXPECT_EQ(choicesFromMap(mapFromChoices(choices)), choices);
}

TEST(StatisticsChoicesTest, UnknownAndDamagedPartsArePassedOver)
{
    const QVariantMap map{{"over", 7},
                          {"columns", QStringList{"coverage", "nonsense", "minimumTime", "coverage"}},
                          {"limits", QVariantMap{{"power", QVariantMap{{"high", "much"}}}, {"level", std::nan("")}}}};
    const StatisticsChoices choices = choicesFromMap(map);
    EXPECT_EQ(choices.over, StatisticsOver::Fetched);
    EXPECT_EQ(choices.columns, (QStringList{"minimumTime", "coverage"}));
    EXPECT_TRUE(choices.highLimits.empty() && choices.lowLimits.empty());
}

TEST(StatisticsChoicesTest, EveryColumnIsFoundByItsOwnName)
{
    std::set<QString> names;
    for (const FigureColumn& column : figureColumns()) {
        EXPECT_EQ(figureColumn(QLatin1String(column.identifier)), &column);
        EXPECT_TRUE(names.insert(QLatin1String(column.identifier)).second) << column.identifier;
    }
    EXPECT_EQ(figureColumn(QStringLiteral("minimum")), nullptr);
}

}  // namespace
