#include "hostapp/formulas/FormulaEvaluation.h"

#include "base/LargeMemory.h"
#include "hostapp/formulas/FormulaBlocks.h"
#include "hostapp/formulas/FormulaWindows.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <utility>

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
        runOverTime(step(position),
                    {m_times.span(), plain.span(), m_program.join, m_program.longestGap, m_surroundings.zone}, to);
        return {SharedArray<double>(values, m_times.size()), finiteOnly(to)};
    }

    /// Everything pointwise that the step is made of, in order, and the columns that it begins with.
    void gather(int position, std::vector<int>& order, std::map<int, Column>& columns)
    {
        if (columns.contains(position) || std::find(order.begin(), order.end(), position) != order.end())
            return;
        if (!step(position).isPointwise()) {
            columns[position] = columnOf(position);
            return;
        }
        for (const int argument : step(position).arguments)
            if (argument >= 0)
                gather(argument, order, columns);
        order.push_back(position);
    }

    Column pointwise(int position);

    const FormulaProgram& m_program;
    const FormulaSurroundings& m_surroundings;
    SharedArray<double> m_times;
    std::vector<FormulaSeries> m_inputs;  // at these times
};

Column Evaluation::pointwise(int position)
{
    std::vector<int> order;
    std::map<int, Column> columns;
    gather(position, order, columns);
    const std::size_t total = m_times.size(), steps = m_program.steps.size();
    const auto values = unsetArray<double>(total);
    std::vector<double> scratch((order.size() + columns.size()) * kFormulaBlock);
    std::vector<const double*> found(steps, nullptr);
    FiniteBits finite(total);
    constexpr std::size_t kBlocksBetweenLooks = 256;
    for (std::size_t at = 0; at < total; at += kFormulaBlock) {
        if (at % (kBlocksBetweenLooks * kFormulaBlock) == 0)
            requireGoingOn();
        const std::size_t count = std::min(kFormulaBlock, total - at);
        double* free = scratch.data();
        for (const auto& [leaf, column] : columns) {
            const double* view = column.values.data() + at;
            if (!areValid(column.validity, at, count)) {
                copyMasked(column.values.data(), column.validity, at, count, free);
                view = std::exchange(free, free + kFormulaBlock);
            }
            found[static_cast<std::size_t>(leaf)] = view;
        }
        for (const int each : order) {
            double* to = each == position ? values.get() + at : std::exchange(free, free + kFormulaBlock);
            std::array<const double*, 3> arguments{};
            for (std::size_t i = 0; i < arguments.size(); ++i)
                if (step(each).arguments[i] >= 0)
                    arguments[i] = found[static_cast<std::size_t>(step(each).arguments[i])];
            runStep(step(each), arguments, to, count);
            found[static_cast<std::size_t>(each)] = to;
        }
        finite.take(values.get() + at, at, count);
    }
    return {SharedArray<double>(values, total), finite.bitmap()};
}

}  // namespace

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
