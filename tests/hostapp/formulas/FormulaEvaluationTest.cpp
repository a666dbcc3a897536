#include "hostapp/formulas/FormulaEvaluation.h"

#include "tests/hostapp/formulas/FormulaSite.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

class FormulaEvaluationTest : public FormulaSite {
protected:
    /// Values that begin at a time; a NaN is an element that is not valid.
    void given(const char* name, std::vector<double> times, std::vector<double> values)
    {
        std::vector<std::uint64_t> words((values.size() + 63) / 64);
        for (std::size_t i = 0; i < values.size(); ++i)
            if (std::isnan(values[i]))
                values[i] = 12345;  // bits without a meaning
            else
                words[i / 64] |= std::uint64_t{1} << (i % 64);
        const SharedArray<double> shared = m_times.empty() || times != m_times ? share(times) : m_shared;
        m_series[idOf(name)] = {shared, SharedArray<double>::fromVector(std::move(values)),
                                ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(words)))};
    }
    void given(const char* name, std::vector<double> values)
    {
        std::vector<double> times(values.size());
        for (std::size_t i = 0; i < times.size(); ++i)
            times[i] = static_cast<double>(i) * step;
        given(name, times, std::move(values));
    }

    FormulaSeries result(const char* text, const char* unit = "")
    {
        PropertyFormula formula{QString::fromUtf8(text), QString::fromUtf8(unit), join, longestGap};
        const FormulaPlan plan = planFormula(directory, kBoiler, formula);
        if (!plan.program) {
            ADD_FAILURE() << sentenceOf(*plan.problem).toStdString();
            return {};
        }
        std::vector<FormulaSeries> inputs;
        for (const FormulaInput& input : plan.program->inputs)
            inputs.push_back(m_series[input.property]);
        return *evaluate(*plan.program, inputs, {zone});
    }
    std::vector<double> values(const char* text, const char* unit = "")
    {
        const FormulaSeries series = result(text, unit);
        std::vector<double> found;
        for (std::size_t i = 0; i < series.values.size(); ++i)
            found.push_back(series.validity.isValid(i) ? series.values[i] : kNone);
        return found;
    }
    void expect(const char* text, const std::vector<double>& wanted, const char* unit = "")
    {
        const std::vector<double> found = values(text, unit);
        ASSERT_EQ(found.size(), wanted.size()) << text;
        for (std::size_t i = 0; i < wanted.size(); ++i)
            if (std::isnan(wanted[i]))
                EXPECT_TRUE(std::isnan(found[i])) << text << ", element " << i << " is " << found[i];
            else
                EXPECT_NEAR(found[i], wanted[i], 1e-9 * std::max(1.0, std::abs(wanted[i])))
                    << text << ", element " << i;
    }

    double step = 600;
    PropertyFormula::Join join = PropertyFormula::Join::HoldLast;
    double longestGap = 3600;
    QTimeZone zone = QTimeZone::utc();

private:
    SharedArray<double> share(const std::vector<double>& times)
    {
        m_times = times;
        m_shared = SharedArray<double>::fromVector(times);
        return m_shared;
    }

    std::map<qint64, FormulaSeries> m_series;
    std::vector<double> m_times;
    SharedArray<double> m_shared;
};

TEST_F(FormulaEvaluationTest, ArithmeticGoesValueByValue)
{
    given("Supply", {60, 61, 62});
    given("Return", {40, 40.5, 30});
    expect("Supply - Return", {20, 20.5, 32});
    expect("(Supply + Return) / 2", {50, 50.75, 46});
    expect("2 * (Supply - Return) + 1 K", {41, 42, 65});
}

TEST_F(FormulaEvaluationTest, UnitsAreConvertedOnTheWay)
{
    given("Supply", {60});
    given("Outdoor", {32});
    given("Power", {8});
    given("Valve", {50});
    given("Flow", {3.6});
    expect("Supply - Outdoor", {60});
    expect("Outdoor - Supply", {-60});
    expect("(Supply + Outdoor) / 2", {30});
    expect("(Outdoor + Supply) / 2", {(32 + 140) / 2.0});
    expect("Outdoor + 9 K", {32 + 16.2});
    expect("Power * Valve", {4});
    expect("Power / 2 MW", {0.4}, "%");
    expect("value(Flow, [L/min]) + 0", {60});
    expect("Supply > Outdoor", {1});
    expect("max(Supply, 333.15 K)", {60});
}

TEST_F(FormulaEvaluationTest, WhatIsMissingGivesNoValue)
{
    given("Supply", {60, kNone, 62});
    given("Return", {40, 40, kNone});
    given("Level", {0, 1, 4});
    expect("Supply - Return", {20, kNone, kNone});
    expect("if(Supply > 61, 1, 0)", {0, kNone, 1});
    expect("max(Supply, Return)", {60, kNone, kNone});
    expect("1 / Level", {kNone, 1, 0.25});
    expect("ln(Level - 1)", {kNone, kNone, std::log(3)});
    expect("0 * value(Supply, °C) ^ 0 + Level", {0, kNone, 4});
}

TEST_F(FormulaEvaluationTest, OnlyTheBranchTakenHasToHaveAValue)
{
    given("Supply", {60, kNone});
    given("Return", {kNone, 40});
    given("Level", {1, 0});
    expect("if(Level > 0, Supply, Return)", {60, 40});
}

TEST_F(FormulaEvaluationTest, ManyBlocksAreAsOne)
{
    std::vector<double> supply(5000), back(5000), wanted(5000);
    for (std::size_t i = 0; i < supply.size(); ++i) {
        supply[i] = i % 997 == 3 ? kNone : static_cast<double>(i);
        back[i] = i == 4500 ? kNone : static_cast<double>(i) / 2;
        wanted[i] = supply[i] - back[i];
    }
    given("Supply", supply);
    given("Return", back);
    expect("Supply - Return", wanted);
}

TEST_F(FormulaEvaluationTest, AColumnWithoutGapsHasNoBitmapAndInputsAreNotCopied)
{
    const FormulaSeries input{
        SharedArray<double>::fromVector({0, 1, 2}), SharedArray<double>::fromVector({1, 2, 3}), {}};
    const auto answer = evaluate(*plan("Supply - Return").program, {input, input});
    EXPECT_TRUE(answer->validity.isAllValid());
    EXPECT_EQ(answer->times.data(), input.times.data());
}

TEST_F(FormulaEvaluationTest, HoldBridgesNoMoreThanSaid)
{
    given("Power", {1, kNone, kNone, kNone, 5});
    expect("hold(Power, 20 min)", {1, 1, 1, kNone, 5});
    longestGap = 600;
    expect("hold(Power)", {1, 1, kNone, kNone, 5});
}

TEST_F(FormulaEvaluationTest, AMovingMeanIsOfTheSpanThatEndsThere)
{
    given("Power", {1, 2, 6, kNone, 4});
    expect("mean(Power, 20 min)", {1, 1.5, 4, kNone, 4});
    expect("sum(Power, 30 min)", {1, 3, 9, kNone, 10});
    expect("minimum(Power, 30 min)", {1, 1, 1, kNone, 4});
    expect("maximum(Power, 20 min)", {1, 2, 6, kNone, 4});
}

TEST_F(FormulaEvaluationTest, WindowsAgreeWithWorkingEachOutAlone)
{
    std::vector<double> signal(700), least(700), mean(700);
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] = std::sin(static_cast<double>(i * i % 101)) * 1e6 + static_cast<double>(i % 13);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const std::size_t first = i < 29 ? 0 : i - 29;
        least[i] =
            *std::min_element(signal.begin() + static_cast<long>(first), signal.begin() + static_cast<long>(i) + 1);
        double sum = 0;
        for (std::size_t k = first; k <= i; ++k)
            sum += signal[k];
        mean[i] = sum / static_cast<double>(i - first + 1);
    }
    given("Power", signal);
    expect("minimum(Power, 300 min)", least);
    expect("mean(Power, 300 min)", mean);
}

TEST_F(FormulaEvaluationTest, AHugeValueLeavesNothingBehindInAMovingSum)
{
    given("Power", {0.1, 1e17, 0.1, 0.2, 0.3});
    EXPECT_DOUBLE_EQ(values("sum(Power, 20 min)")[4], 0.5);
}

TEST_F(FormulaEvaluationTest, KilowattsIntegratedAreKilowattHours)
{
    step = 1800;
    given("Power", {2, 2, 4, kNone, 4});
    expect("integral(Power)", {0, 1, 2, kNone, 6});
    join = PropertyFormula::Join::Straight;
    expect("integral(Power)", {0, 1, 2.5, kNone, 6.5});
    expect("integral(Power, 1 h)", {0, 1, 2.5, kNone, 4});
    expect("integral(Power)", {0, 3.6, 9, kNone, 23.4}, "MJ");
}

TEST_F(FormulaEvaluationTest, NothingIsIntegratedOverALongGap)
{
    longestGap = 1800;
    given("Power", {0, 1800, 9000, 10800}, {2, 2, 2, 2});
    expect("integral(Power)", {0, 1, 1, 2});
}

TEST_F(FormulaEvaluationTest, ADerivativeIsTheChangeSinceTheValueBefore)
{
    given("Supply", {20, 21, kNone, 24});
    expect("derivative(Supply)", {kNone, 6, kNone, 9});
    longestGap = 900;
    expect("derivative(Supply)", {kNone, 6, kNone, kNone});
}

TEST_F(FormulaEvaluationTest, DaysAreThoseOfTheLocalClock)
{
    zone = QTimeZone("Europe/Berlin");
    // 2024-03-31: the clock is put forward, the day ends at 22:00 UTC.
    const double midnight = static_cast<double>(QDateTime(QDate(2024, 3, 31), QTime(0, 0), zone).toSecsSinceEpoch());
    given("Power", {midnight - 1, midnight, midnight + 22.9 * 3600, midnight + 23 * 3600}, {1, 2, 4, 7});
    expect("daily_mean(Power)", {1, 3, 3, 7});
    expect("daily_maximum(Power)", {1, 4, 4, 7});
}

TEST_F(FormulaEvaluationTest, ADaysIntegralIsCutAtMidnight)
{
    given("Power", {86400 - 1800, 86400 + 1800, 86400 + 3600}, {4, 4, 4});
    expect("daily_integral(Power)", {2, 4, 4});
}

TEST_F(FormulaEvaluationTest, PartsOfADayAreCountedFromMidnight)
{
    given("Power", {0, 600, 900, 1500, 1800}, {1, 3, 5, 7, 9});
    expect("resampled_mean(Power, 15 min)", {2, 2, 6, 6, 9});
}

TEST_F(FormulaEvaluationTest, AnHourShownTwiceIsTwo)
{
    zone = QTimeZone("Europe/Berlin");
    const double second = static_cast<double>(QDateTime(QDate(2024, 10, 27), QTime(1, 0), Qt::UTC).toSecsSinceEpoch());
    given("Power", {second - 1800, second + 1800}, {1, 3});
    expect("resampled_mean(Power, 1 h)", {1, 3});
}

TEST_F(FormulaEvaluationTest, EarlierGoesByTheLocalClock)
{
    zone = QTimeZone("Europe/Berlin");
    const auto at = [this](int day, int hour) {
        return static_cast<double>(QDateTime(QDate(2024, 3, day), QTime(hour, 0), zone).toSecsSinceEpoch());
    };
    given("Power", {at(30, 12), at(30, 13), at(31, 12)}, {1, 2, 5});
    expect("Power - earlier(Power, 1 d)", {kNone, kNone, 4});
    longestGap = 60;
    expect("earlier(Power, 1 h)", {kNone, 1, kNone});
}

TEST_F(FormulaEvaluationTest, DewPointsAreThoseOfTheTables)
{
    given("Supply", {20, 30, -5});
    given("Valve", {50, 100, 80});
    const std::vector<double> found = values("dew_point(Supply, Valve)");
    EXPECT_NEAR(found[0], 9.26, 0.02);
    EXPECT_NEAR(found[1], 30, 1e-9);
    EXPECT_NEAR(found[2], -7.9, 0.1);
}

TEST_F(FormulaEvaluationTest, AnotherAgentsTimesAreJoinedByItsLastValue)
{
    given("Air temperature", {5, 15, 100}, {1, 2, 3});
    given("Supply", {10, 20, 30}, {11, 12, 13});
    longestGap = 10;
    EXPECT_EQ(result("Supply - \"Roof station\".\"Air temperature\"").times.size(), 6U);
    expect("Supply - \"Roof station\".\"Air temperature\"", {kNone, 10, 9, 10, kNone, kNone});
}

TEST_F(FormulaEvaluationTest, OrByStraightLinesBetweenNeighbours)
{
    join = PropertyFormula::Join::Straight;
    given("Air temperature", {5, 15, 100}, {1, 2, 3});
    given("Supply", {10, 20, 30}, {11, 12, 13});
    longestGap = 10;
    expect("Supply - \"Roof station\".\"Air temperature\"", {kNone, 9.5, 9.5, kNone, kNone, kNone});
}

TEST_F(FormulaEvaluationTest, StraightLinesSkipElementsWithoutAValue)
{
    join = PropertyFormula::Join::Straight;
    given("Air temperature", {0, 10, 20}, {0, kNone, 20});
    given("Supply", {5, 15}, {100, 100});
    expect("Supply - \"Roof station\".\"Air temperature\"", {kNone, 95, 90, 85, kNone});
}

TEST_F(FormulaEvaluationTest, ItStopsWhenTold)
{
    const FormulaSeries input{SharedArray<double>::fromVector({1}), SharedArray<double>::fromVector({1}), {}};
    EXPECT_FALSE(evaluate(*plan("Power * 2").program, {input}, {zone, [] { return false; }}));
}

TEST(FormulaSeriesTest, ACutSharesTheValuesAndMovesTheBits)
{
    std::vector<double> times(200), values(200);
    std::vector<std::uint64_t> words(4, ~std::uint64_t{0});
    for (std::size_t i = 0; i < times.size(); ++i)
        times[i] = values[i] = static_cast<double>(i);
    words[1] &= ~std::uint64_t{2};  // element 65
    const FormulaSeries whole{SharedArray<double>::fromVector(times), SharedArray<double>::fromVector(values),
                              ValidityBitmap(SharedArray<std::uint64_t>::fromVector(words))};
    const FormulaSeries part = cutTo(whole, 3, 150);
    ASSERT_EQ(part.times.size(), 148U);
    EXPECT_EQ(part.values.data(), whole.values.data() + 3);
    EXPECT_FALSE(part.validity.isValid(62));
    EXPECT_TRUE(part.validity.isValid(61) && part.validity.isValid(63) && part.validity.isValid(147));
    EXPECT_EQ(cutTo(whole, 300, std::nullopt).times.size(), 0U);
}

}  // namespace
}  // namespace plotix
