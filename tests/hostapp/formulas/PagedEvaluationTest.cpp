#include "hostapp/formulas/FormulaEvaluation.h"

#include "tests/hostapp/formulas/FormulaSite.h"
#include "tests/support/paging/PagedRecords.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace plotix {
namespace {

/// Random records of two agents, irregular, with drop-outs and numbers that are none: worked out page by page, and at
/// once. The cache keeps nothing that is not held.
class PagedEvaluationTest : public FormulaSite, public testing::WithParamInterface<const char*> {
protected:
    static constexpr std::size_t kElements = 3 * PagedMemory::kPage + 777;
    static constexpr double kBegin = 1518600000;  // some days before a clock that was put back over midnight

    void given(qint64 agent, std::initializer_list<const char*> names, double longestStep, std::size_t elements)
    {
        std::vector<double> times(elements);
        double time = kBegin;
        for (double& each : times)
            each = time += 0.001 + uniform() * (random() % 5000 == 0 ? 40'000 : longestStep);
        const auto shared = SharedArray<double>::fromVector(std::move(times));
        for (const char* name : names)
            m_series[idOf(name)] = {shared, SharedArray<double>::fromVector(values(elements)), bits(elements)};
        m_paged[agent] = plotix_test::paged(shared, cache);
    }

    double uniform() { return static_cast<double>(random() % 10'000) / 10'000; }
    /// A walk now and then, noise else, and what is no number.
    std::vector<double> values(std::size_t count)
    {
        std::vector<double> made(count);
        double last = 20;
        for (std::size_t i = 0; i < count; ++i) {
            last = i / 10'000 % 2 == 0 ? last + uniform() - 0.5 : 100 * uniform() - 30;
            made[i] = last;
            if (i > 55'000 && i < 80'000)
                made[i] = 1e6 - static_cast<double>(i);  // falls all along
            if (random() % 700 == 0)
                made[i] = random() % 2 == 0 ? std::nan("") : std::numeric_limits<double>::infinity();
        }
        return made;
    }
    ValidityBitmap bits(std::size_t count)
    {
        if (random() % 3 == 0)
            return {};
        std::vector<std::uint64_t> words((count + 63) / 64);
        bool isOut = false;
        for (std::size_t i = 0; i < count; ++i) {
            isOut = random() % (isOut ? 300 : 3000) == 0 ? !isOut : isOut;
            words[i / 64] |= std::uint64_t{!isOut && random() % 50 != 0} << (i % 64);
        }
        return ValidityBitmap(SharedArray<std::uint64_t>::fromVector(std::move(words)));
    }

    void begin(unsigned seed)
    {
        random.seed(seed);
        join = random() % 2 == 0 ? PropertyFormula::Join::HoldLast : PropertyFormula::Join::Straight;
        longestGap = random() % 2 == 0 ? 60 : 3600;
        given(kBoiler, {"Supply", "Return", "Power", "Level", "Spread"}, 12, kElements);
        given(kRoof, {"Air temperature", "Humidity"}, 31, kElements / 2);
        PropertyFormula formula{QString::fromUtf8(GetParam()), {}, join, longestGap};
        const FormulaPlan plan = planFormula(directory, kBoiler, formula);
        ASSERT_TRUE(plan.program) << sentenceOf(*plan.problem).toStdString();
        std::vector<FormulaSeries> inputs;
        std::vector<PagedSeries> pagedInputs;
        for (const FormulaInput& input : plan.program->inputs) {
            const FormulaSeries& each = m_series.at(input.property);
            inputs.push_back(each);
            pagedInputs.push_back({{m_paged.at(input.agent), 0, each.times.size(), nullptr},
                                   plotix_test::paged(each.values, cache),
                                   each.validity,
                                   0});
        }
        const FormulaSurroundings surroundings{QTimeZone("America/Sao_Paulo"), {}};
        atOnce = *evaluate(*plan.program, inputs, surroundings);
        byPages = *evaluateByPages(plan.program, pagedInputs, cache, surroundings);
        ASSERT_EQ(byPages.times.count, atOnce.times.size());
    }
    void expectSame(std::size_t first, std::size_t end)
    {
        const PagedMemory::Hold times = byPages.times.array.hold(first, end),
                                values = byPages.values.hold(byPages.first + first, byPages.first + end);
        std::size_t others = 0;
        for (std::size_t i = first; i < end; ++i) {
            const bool isValid = atOnce.validity.isValid(i);
            others += byPages.times.array[i] != atOnce.times[i] ? 1 : 0;
            others += byPages.validity.isValid(byPages.first + i) != isValid ? 1 : 0;
            others += isValid && std::bit_cast<std::uint64_t>(byPages.values[byPages.first + i]) !=
                                     std::bit_cast<std::uint64_t>(atOnce.values[i])
                          ? 1
                          : 0;
        }
        EXPECT_EQ(others, 0U) << "in [" << first << ", " << end << ")";
    }
    void expectSamePages(const std::vector<std::size_t>& pages)
    {
        const std::size_t count = byPages.times.count;
        for (const std::size_t page : pages)
            expectSame(std::min(count, page * PagedMemory::kPage), std::min(count, (page + 1) * PagedMemory::kPage));
    }

    std::shared_ptr<PageCache> cache = std::make_shared<PageCache>(0);
    std::mt19937 random;
    PropertyFormula::Join join{};
    double longestGap = 0;
    FormulaSeries atOnce;
    PagedSeries byPages;

private:
    std::map<qint64, FormulaSeries> m_series;
    std::map<qint64, PagedArray<double>> m_paged;
};

TEST_P(PagedEvaluationTest, PagesHaveTheBitsOfWorkingOutEverythingAtOnce)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        begin(seed);
        expectSamePages({0, 1, 2, 3});
        expectSamePages({2, 0, 3, 1});
    }
}

TEST_P(PagedEvaluationTest, TheLastPageCanBeLookedAtFirst)
{
    begin(4);
    expectSamePages({3, 1});
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, PagedEvaluationTest,
    testing::Values("Power", "Supply - Return", "Level * 2 + 1", "if(Supply > Return, Level, Level / 0)",
                    "mean(Supply, 20 min)", "sum(Level, 1 h)", "minimum(Supply, 10 min)", "maximum(Supply, 6 h)",
                    "integral(Power)", "integral(Power, 45 min)", "daily_mean(Supply)", "daily_maximum(Supply)",
                    "daily_integral(Power)", "resampled_mean(Supply, 15 min)", "resampled_minimum(Supply, 6 h)",
                    "resampled_sum(Level, 1 min)", "derivative(Power)", "hold(Supply)", "hold(Level, 1 min)",
                    "earlier(Supply, 1 d)", "earlier(Supply, 90 s)", "Supply - \"Roof station\".\"Air temperature\"",
                    "mean(earlier(hold(Supply), 1 h) - \"Roof station\".\"Air temperature\", 30 min)",
                    "daily_integral(derivative(Power) * integral(Power))",
                    "maximum(mean(\"Roof station\".Humidity, 1 h), 3 h) + minimum(\"Roof station\".Humidity, 5 min)",
                    "\"Roof station\".Humidity"));

}  // namespace
}  // namespace plotix
