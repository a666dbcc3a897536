// Working formulas out over columns in memory, on one thread: planned once, as before a fetch, then ten million values.

#include "benchmarks/data/Signal.h"
#include "hostapp/formulas/FormulaEvaluation.h"
#include "hostapp/formulas/FormulaPlan.h"

#include <benchmark/benchmark.h>

#include <string>

using plotix::FormulaDirectory;
using plotix::FormulaSeries;
using plotix::SharedArray;

namespace {

constexpr std::size_t kRecords = 10'000'000;

/// An agent with the properties a and b in kW, a record a second.
class Columns {
public:
    Columns()
    {
        std::vector<double> times(kRecords);
        for (std::size_t i = 0; i < kRecords; ++i)
            times[i] = plotix_bench::kStart + static_cast<double>(i);
        const auto shared = SharedArray<double>::fromVector(std::move(times));
        FormulaDirectory::Agent agent{1, QStringLiteral("Station"), {}};
        for (const char* name : {"a", "b"}) {
            plotix_bench::Signal signal(plotix_bench::SignalKind::Walk, static_cast<unsigned>(m_series.size()));
            std::vector<double> values(kRecords);
            for (double& value : values)
                value = signal.next();
            m_series.push_back({shared, SharedArray<double>::fromVector(std::move(values)), {}});
            plotix::SiteProperty::Description property;
            property.id = static_cast<qint64>(m_series.size());
            property.name = property.propertyName = QString::fromLatin1(name);
            property.unit = property.archivedUnit = QStringLiteral("kW");
            agent.properties.push_back(property);
        }
        m_directory.agents.push_back(agent);
    }

    void run(benchmark::State& state, const char* formula) const
    {
        const plotix::FormulaPlan plan = planFormula(m_directory, 1, {QString::fromLatin1(formula)});
        if (!plan.program) {
            state.SkipWithError("the formula cannot be worked out");
            return;
        }
        std::vector<FormulaSeries> inputs;
        for (const plotix::FormulaInput& input : plan.program->inputs)
            inputs.push_back(m_series[static_cast<std::size_t>(input.property - 1)]);
        for (auto _ : state)
            benchmark::DoNotOptimize(plotix::evaluate(*plan.program, inputs, {QTimeZone::utc()}));
        state.counters["values_per_second"] =
            benchmark::Counter(static_cast<double>(kRecords), benchmark::Counter::kIsIterationInvariantRate);
    }

private:
    FormulaDirectory m_directory;
    std::vector<FormulaSeries> m_series;
};

}  // namespace

int main(int argc, char** argv)
{
    const Columns columns;
    for (const char* formula : {"a-b", "(a-b)*0.001+b", "mean(a,1h)", "maximum(a,1h)", "integral(a)", "daily_mean(a)"})
        benchmark::RegisterBenchmark(("formula/" + std::string(formula) + "/10M").c_str(),
                                     [&columns, formula](benchmark::State& state) { columns.run(state, formula); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
