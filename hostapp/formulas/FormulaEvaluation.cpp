#include "hostapp/formulas/FormulaEvaluation.h"

#include "base/LargeMemory.h"
#include "hostapp/formulas/FormulaBlocks.h"
#include "hostapp/formulas/FormulaWindows.h"
#include "hostapp/formulas/PointwiseGroup.h"
#include "hostapp/formulas/StreamedColumns.h"

#include <algorithm>
#include <cassert>
#include <map>

namespace plotix {

namespace {

struct Stopped {};

/// Values and which of them there are, at the times of the result.
struct Column {
    SharedArray<double> values;
    ValidityBitmap validity;
};

class Evaluation {
public:
    Evaluation(const FormulaProgram& program, const std::vector<FormulaSeries>& inputs,
               const FormulaSurroundings& surroundings)
        : m_program(program), m_surroundings(surroundings)
    {
        std::vector<SharedArray<double>> times;
        for (const FormulaSeries& input : inputs)
            times.push_back(input.times);
        m_times = unionOfTimes(times);
        for (const FormulaSeries& input : inputs)
            m_inputs.push_back(joined(input, m_times, program.join, program.longestGap));
    }

    FormulaSeries result()
    {
        const Column column = columnOf(static_cast<int>(m_program.steps.size()) - 1);
        return {m_times, column.values, column.validity};
    }

private:
    const FormulaStep& step(int position) const { return m_program.steps[static_cast<std::size_t>(position)]; }

    void requireGoingOn() const
    {
        if (m_surroundings.goesOn && !m_surroundings.goesOn())
            throw Stopped();
    }

    Column columnOf(int position)
    {
        if (step(position).what == FormulaStep::Do::Input) {
            const FormulaSeries& input = m_inputs[static_cast<std::size_t>(step(position).input)];
            return {input.values, input.validity};
        }
        return step(position).isPointwise() ? pointwise(position) : overTime(position);
    }

    Column overTime(int position)
    {
        const Column argument = columnOf(step(position).arguments[0]);
        requireGoingOn();
        const SharedArray<double> plain = plainValues(argument.values, argument.validity);
        const auto values = unsetArray<double>(m_times.size());
        const std::span<double> to(values.get(), m_times.size());
        const WindowRules rules{m_program.join, m_program.longestGap, m_surroundings.zone};
        const PlainSeries series{m_times.span(), plain.span()};
        WindowState state = begunState(step(position), rules);
        runOverTime<PlainSeries>(step(position), rules, {series, series}, state, 0, to);
        return {SharedArray<double>(values, m_times.size()), finiteOnly(to)};
    }

    Column pointwise(int position);

    const FormulaProgram& m_program;
    const FormulaSurroundings& m_surroundings;
    SharedArray<double> m_times;
    std::vector<FormulaSeries> m_inputs;  // at these times
};

Column Evaluation::pointwise(int position)
{
    const PointwiseGroup group(m_program, position);
    std::vector<Column> columns;
    for (const int leaf : group.leaves())
        columns.push_back(columnOf(leaf));
    const std::size_t total = m_times.size();
    const auto values = unsetArray<double>(total);
    std::vector<double> masked(columns.size() * kFormulaBlock);
    std::vector<const double*> leaves(columns.size());
    PointwiseGroup::Scratch scratch(group);
    FiniteBits finite(total);
    constexpr std::size_t kBlocksBetweenLooks = 256;
    for (std::size_t at = 0; at < total; at += kFormulaBlock) {
        if (at % (kBlocksBetweenLooks * kFormulaBlock) == 0)
            requireGoingOn();
        const std::size_t count = std::min(kFormulaBlock, total - at);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Column& column = columns[i];
            leaves[i] = column.values.data() + at;
            if (areValid(column.validity, at, count))
                continue;
            double* room = masked.data() + i * kFormulaBlock;
            copyMasked(column.values.data(), column.validity, at, count, room);
            leaves[i] = room;
        }
        group.run(leaves, scratch, count, values.get() + at);
        finite.take(values.get() + at, at, count);
    }
    return {SharedArray<double>(values, total), finite.bitmap()};
}

/// The steps as columns over each other, each once.
class PagedEvaluation {
public:
    PagedEvaluation(const std::shared_ptr<const FormulaProgram>& program, const std::vector<PagedSeries>& inputs,
                    const PagedTimes& times, const std::shared_ptr<PageCache>& cache, const QTimeZone& zone)
        : m_program(program), m_times(times), m_cache(cache), m_zone(zone)
    {
        for (const PagedSeries& input : inputs)
            m_inputs.push_back(joined(input, times, program->join, program->longestGap, cache));
    }

    PagedSeries result() { return columnOf(static_cast<int>(m_program->steps.size()) - 1); }

private:
    PagedSeries columnOf(int position)
    {
        const FormulaStep& step = m_program->steps[static_cast<std::size_t>(position)];
        if (step.what == FormulaStep::Do::Input)
            return m_inputs[static_cast<std::size_t>(step.input)];
        if (const auto made = m_made.find(position); made != m_made.end())
            return made->second;
        const StreamedStep streamed{m_program, position, m_cache};
        PagedSeries made;
        if (step.isPointwise()) {
            std::vector<PagedSeries> leaves;
            for (const int leaf : leavesOf(*m_program, position))
                leaves.push_back(columnOf(leaf));
            made = pointwiseColumn(streamed, m_times, std::move(leaves));
        } else {
            made = columnOverTime(streamed, columnOf(step.arguments[0]), m_zone);
        }
        return m_made.emplace(position, made).first->second;
    }

    std::shared_ptr<const FormulaProgram> m_program;
    PagedTimes m_times;
    std::shared_ptr<PageCache> m_cache;
    QTimeZone m_zone;
    std::vector<PagedSeries> m_inputs;  // at these times
    std::map<int, PagedSeries> m_made;
};

}  // namespace

std::optional<PagedSeries> evaluateByPages(const std::shared_ptr<const FormulaProgram>& program,
                                           const std::vector<PagedSeries>& inputs,
                                           const std::shared_ptr<PageCache>& cache,
                                           const FormulaSurroundings& surroundings)
{
    assert(!inputs.empty() && inputs.size() == program->inputs.size());
    std::vector<PagedTimes> times;
    for (const PagedSeries& input : inputs)
        times.push_back(input.times);
    const std::optional<PagedTimes> all = unionOfTimes(times, cache, surroundings.goesOn);
    if (!all)
        return std::nullopt;
    return PagedEvaluation(program, inputs, *all, cache, surroundings.zone).result();
}

std::optional<FormulaSeries> evaluate(const FormulaProgram& program, const std::vector<FormulaSeries>& inputs,
                                      const FormulaSurroundings& surroundings)
{
    assert(!inputs.empty() && inputs.size() == program.inputs.size());
    try {
        return Evaluation(program, inputs, surroundings).result();
    } catch (const Stopped&) {
        return std::nullopt;
    }
}

}  // namespace plotix
