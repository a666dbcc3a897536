#include "hostapp/document/ComputedReading.h"

#include "hostapp/document/ComputedRecords.h"
#include "hostapp/formulas/FormulaEvaluation.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();
/// Of the whole work; formulas take the rest.
constexpr double kReadingPart = 0.8;
/// A span that is up to so many times as long is read in place of another one.
constexpr double kHardlyLonger = 2;

QString notWorkedOut(const QString& name, const FormulaProblem& problem)
{
    return QCoreApplication::translate("FormulaText", "“%1” cannot be computed: %2").arg(name, sentenceOf(problem));
}

}  // namespace

ComputedReading::ComputedReading(RecordStore& stored, const FormulaDirectory& directory, const RecordPart& wanted)
    : m_stored(stored),
      m_directory(directory),
      m_wanted(wanted),
      m_span{wanted.from.value_or(-kOpen), wanted.to.value_or(kOpen)}
{
    for (const RowId property : wanted.properties)
        collect(wanted.agent, property, m_span);
    shareReads();
}

std::optional<double> ComputedReading::bound(double time)
{
    return std::isinf(time) ? std::nullopt : std::optional(time);
}

/// What is needed to work out the span.
ComputedReading::Span ComputedReading::around(const FormulaProgram& program, const Span& span)
{
    const FormulaReach& reach = program.reach;
    return {reach.fromBeginning ? -kOpen : span.from - reach.before, span.to + reach.after};
}

std::shared_ptr<const FormulaProgram> programOf(const FormulaDirectory& directory, RowId property)
{
    const FormulaPlan plan = planProperty(directory, property);
    if (plan.problem)
        throw FormulaNotWorkedOut(property, notWorkedOut(directory.propertyWithId(property)->name, *plan.problem));
    return plan.program;
}

void ComputedReading::collect(RowId agent, RowId property, const Span& span)
{
    const SiteProperty::Description* known = m_directory.propertyWithId(property);
    if (!known || !known->formula) {
        m_parts[{agent, span}].properties.insert(property);
        return;
    }
    if (!m_collected.insert({property, span}).second)
        return;
    std::shared_ptr<const FormulaProgram>& kept = m_programs[property];
    if (!kept)
        kept = programOf(m_directory, property);
    const std::shared_ptr<const FormulaProgram> program = kept;
    for (const FormulaInput& input : program->inputs)
        collect(input.agent, input.property, around(*program, span));
}

void ComputedReading::shareReads()
{
    for (auto& [key, part] : m_parts)
        for (auto& [wider, longer] : m_parts) {
            const Span &inner = key.second, &outer = wider.second;
            const bool isWithin = wider.first == key.first && outer != inner && outer.from <= inner.from &&
                                  outer.to >= inner.to && !longer.within;
            if (!isWithin || outer.to - outer.from > kHardlyLonger * (inner.to - inner.from))
                continue;
            part.within = outer;
            longer.properties.insert(part.properties.begin(), part.properties.end());
            break;
        }
}

std::vector<RecordPart> ComputedReading::parts() const
{
    std::vector<RecordPart> parts;
    for (const auto& [key, part] : m_parts)
        if (!part.within)
            parts.push_back({key.first,
                             {part.properties.begin(), part.properties.end()},
                             bound(key.second.from),
                             bound(key.second.to)});
    return parts;
}

bool ComputedReading::readParts(const ArchiveProgress& progress)
{
    double done = 0;
    const double share = kReadingPart / static_cast<double>(parts().size());
    for (auto& [key, part] : m_parts) {
        if (part.within)
            continue;
        const std::vector<RowId> properties(part.properties.begin(), part.properties.end());
        std::optional<RecordBlock> block =
            m_stored.read(key.first, properties, bound(key.second.from), bound(key.second.to),
                          [&](double fraction) { return !progress || progress(done + share * fraction); });
        if (!block)
            return false;
        part.block = std::move(*block);
        done += share;
    }
    return true;
}

std::optional<FormulaSeries> ComputedReading::computed(RowId property, const Span& span)
{
    const FormulaProgram& program = *m_programs.at(property);
    std::vector<FormulaSeries> inputs;
    for (const FormulaInput& input : program.inputs) {
        std::optional<FormulaSeries> values = series(input.agent, input.property, around(program, span));
        if (!values)
            return std::nullopt;
        inputs.push_back(std::move(*values));
    }
    const std::optional<FormulaSeries> result = evaluate(program, inputs, {QTimeZone::systemTimeZone(), m_goesOn});
    if (!result)
        return std::nullopt;
    return cutTo(*result, bound(span.from), bound(span.to));
}

FormulaSeries ComputedReading::recorded(RowId agent, RowId property, const Span& span) const
{
    const Read& part = m_parts.at({agent, span});
    if (part.within)
        return cutTo(recorded(agent, property, *part.within), bound(span.from), bound(span.to));
    for (const RecordBlock::Column& column : part.block.columns)
        if (column.property == property)
            return {part.block.times, column.values, column.validity};
    return {part.block.times, {}, {}};
}

std::optional<FormulaSeries> ComputedReading::series(RowId agent, RowId property, const Span& span)
{
    if (!m_programs.contains(property))
        return recorded(agent, property, span);
    const auto key = std::pair(property, span);
    if (const auto done = m_done.find(key); done != m_done.end())
        return done->second;
    std::optional<FormulaSeries> result = computed(property, span);
    if (result)
        m_done[key] = *result;
    return result;
}

std::optional<RecordBlock> ComputedReading::read(const ArchiveProgress& progress)
{
    m_goesOn = [&progress] { return !progress || progress(kReadingPart); };
    if (!readParts(progress))
        return std::nullopt;
    std::vector<FormulaSeries> columns;
    for (const RowId property : m_wanted.properties) {
        std::optional<FormulaSeries> values = series(m_wanted.agent, property, m_span);
        if (!values)
            return std::nullopt;
        columns.push_back(std::move(*values));
    }
    RecordBlock block = together(columns);
    if (progress && !progress(1))
        return std::nullopt;
    return block;
}

RecordBlock ComputedReading::together(const std::vector<FormulaSeries>& columns) const
{
    std::vector<SharedArray<double>> times;
    for (const FormulaSeries& column : columns)
        times.push_back(column.times);
    RecordBlock block;
    block.times = unionOfTimes(times);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const FormulaSeries column = placed(columns[i], block.times);
        block.columns.push_back({m_wanted.properties[i], column.values, column.validity});
    }
    return block;
}

}  // namespace plotix
