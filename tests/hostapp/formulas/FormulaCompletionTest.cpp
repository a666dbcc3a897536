#include "hostapp/formulas/FormulaCompletion.h"

#include "tests/hostapp/formulas/FormulaSite.h"

namespace plotix {
namespace {

class FormulaCompletionTest : public FormulaSite {
protected:
    /// The bar stands at the place of writing.
    FormulaCompletions at(QString text, CompleteNothing nothing = CompleteNothing::WithNothing) const
    {
        const auto place = static_cast<int>(text.indexOf('|'));
        return completionsAt(text.remove('|'), place, directory, kBoiler, nothing);
    }
    std::vector<std::string> offered(const char* text) const
    {
        std::vector<std::string> texts;
        for (const FormulaCompletion& candidate : at(QString::fromUtf8(text)).candidates)
            texts.push_back(candidate.text.toStdString());
        return texts;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(FormulaCompletionTest, PropertiesComeBeforeFunctions)
{
    EXPECT_EQ(offered("2 * su|"), (Texts{"Supply", "sum(", "daily_sum(", "resampled_sum("}));
    EXPECT_EQ(at("2 * su|").position, 4);
    EXPECT_EQ(at("2 * su|").length, 2);
}

TEST_F(FormulaCompletionTest, NamesThatNeedItAreQuoted)
{
    EXPECT_EQ(offered("\"Room|"), (Texts{"\"Room-air (2)\""}));
    EXPECT_EQ(offered("Supply - Room|"), (Texts{"\"Room-air (2)\""}));
}

TEST_F(FormulaCompletionTest, BehindAnAgentAndAPointStandItsProperties)
{
    EXPECT_EQ(offered("\"Roof station\".|"), (Texts{"\"Air temperature\"", "Humidity"}));
    EXPECT_EQ(offered("\"Roof station\".hu|"), (Texts{"Humidity"}));
    EXPECT_EQ(offered("roof|"), (Texts{"\"Roof station\"."}));
}

TEST_F(FormulaCompletionTest, NothingIsOfferedWhereAUnitStands)
{
    EXPECT_EQ(offered("mean(Power, 1 h|"), Texts{});
    EXPECT_EQ(offered("Power * 5 k|"), Texts{});
    EXPECT_EQ(offered("12|"), Texts{});
}

TEST_F(FormulaCompletionTest, WhereNothingIsWrittenEverythingIsOfferedWhenAskedFor)
{
    EXPECT_TRUE(at("Supply - |").candidates.empty());
    EXPECT_GT(at("Supply - |", CompleteNothing::WithEverything).candidates.size(), 30U);
}

TEST_F(FormulaCompletionTest, UnitsAndMeaningsAreTold)
{
    EXPECT_EQ(at("Pow|").candidates.front().detail.toStdString(), "kW");
    EXPECT_EQ(at("dew|").candidates.front().label.toStdString(), "dew_point(temperature, humidity)");
    EXPECT_FALSE(at("dew|").candidates.front().detail.isEmpty());
}

}  // namespace
}  // namespace plotix
