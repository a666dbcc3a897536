#include "hostapp/formulas/StreamedColumns.h"

#include "base/PagedColumnMemory.h"
#include "base/PagedReading.h"
#include "hostapp/formulas/FormulaBlocks.h"
#include "hostapp/formulas/FormulaJoining.h"
#include "hostapp/formulas/PointwiseGroup.h"
#include "hostapp/formulas/StateKeeping.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
/// What is read at a time: whatever packs the values seldom ends where pages do, and is unpacked for each reader.
constexpr std::size_t kReadAtOnce = 16 * PagedMemory::kPage;

std::size_t pageOf(std::size_t element)
{
    return element / PagedMemory::kPage;
}

/// Values worked out of others, at times that are read where they are.
class WorkedOutColumn : public PagedColumnMemory {
public:
    PagedSeries series() const { return {m_times, values(), validity(), 0}; }

protected:
    WorkedOutColumn(PagedTimes times, std::vector<PagedSeries> sources, const std::shared_ptr<PageCache>& cache)
        : PagedColumnMemory(cache, times.count), m_times(std::move(times)), m_sources(std::move(sources))
    {
    }

    /// Elements of one page. False: of stand-ins.
    virtual bool workOut(std::size_t first, std::span<double> to) const = 0;

    const PagedTimes& times() const { return m_times; }
    const std::vector<PagedSeries>& sources() const { return m_sources; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        bool areRead = true;
        for (std::size_t stretch = first; stretch < end; stretch += kReadAtOnce) {
            const std::size_t stretchEnd = std::min(end, stretch + kReadAtOnce);
            std::vector<PagedMemory::Hold> held;
            for (const PagedSeries& source : m_sources)
                if (source.times.count == m_times.count)
                    held.push_back(source.values.hold(source.first + stretch, source.first + stretchEnd));
            for (std::size_t page = stretch; page < stretchEnd; page += kPage) {
                const std::size_t count = std::min(kPage, stretchEnd - page);
                areRead = workOut(page, {m_values + page, count}) && areRead;
                for (std::size_t at = page; at < page + count; at += kBits)
                    m_words[at / kBits] = keepFinite({m_values + at, std::min(kBits, page + count - at)});
            }
        }
        return areRead;
    }

    /// Of up to 64 values; others become NaN.
    static std::uint64_t keepFinite(std::span<double> values)
    {
        double sum = 0;
        for (const double value : values)
            sum += value * 0.0;
        std::uint64_t bits = values.size() == kBits ? ~std::uint64_t{0} : (std::uint64_t{1} << values.size()) - 1;
        if (sum == 0)
            return bits;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (!std::isfinite(values[i])) {
                values[i] = kNone;
                bits &= ~(std::uint64_t{1} << i);
            }
        return bits;
    }

    PagedTimes m_times;
    std::vector<PagedSeries> m_sources;
};

class PointwiseColumn final : public WorkedOutColumn {
public:
    PointwiseColumn(const std::shared_ptr<const FormulaProgram>& program, int position, const PagedTimes& times,
                    std::vector<PagedSeries> leaves, const std::shared_ptr<PageCache>& cache)
        : WorkedOutColumn(times, std::move(leaves), cache), m_program(program), m_group(*program, position)
    {
    }

private:
    bool workOut(std::size_t first, std::span<double> to) const override
    {
        std::vector<double> masked(sources().size() * kFormulaBlock);
        std::vector<const double*> leaves(sources().size());
        PointwiseGroup::Scratch scratch(m_group);
        bool areRead = true;
        for (const PagedSeries& leaf : sources())
            areRead = isRead(leaf.values, leaf.first + first, leaf.first + first + to.size()) && areRead;
        for (std::size_t at = 0; at < to.size(); at += kFormulaBlock) {
            const std::size_t count = std::min(kFormulaBlock, to.size() - at);
            for (std::size_t i = 0; i < leaves.size(); ++i)
                leaves[i] = maskedBlock(sources()[i], first + at, count, masked.data() + i * kFormulaBlock);
            m_group.run(leaves, scratch, count, to.data() + at);
        }
        return areRead;
    }

    /// In `room` where some are not valid.
    static const double* maskedBlock(const PagedSeries& leaf, std::size_t first, std::size_t count, double* room)
    {
        const std::size_t begin = leaf.first + first;
        const double* values = leaf.values.data();
        if (leaf.validity.isAllValid())
            return values + begin;
        if (begin % kBits == 0) {
            if (areValid(leaf.validity, begin, count))
                return values + begin;
            copyMasked(values, leaf.validity, begin, count, room);
            return room;
        }
        for (std::size_t i = 0; i < count; ++i)
            room[i] = leaf.validity.isValid(begin + i) ? values[begin + i] : kNone;
        return room;
    }

    std::shared_ptr<const FormulaProgram> m_program;
    PointwiseGroup m_group;
};

/// What a page needs of the pages before is kept.
template <class Passed>
class PassedColumn : public WorkedOutColumn {
protected:
    PassedColumn(PagedTimes times, PagedSeries source, const std::shared_ptr<PageCache>& cache, Passed begun)
        : WorkedOutColumn(std::move(times), {std::move(source)}, cache), m_kept(std::move(begun))
    {
    }

    /// Elements of one page. `later`: the state behind it, if that is known.
    virtual bool pass(Passed& state, std::size_t first, std::span<double> to, const Passed* later) const = 0;

private:
    bool workOut(std::size_t first, std::span<double> to) const override
    {
        const auto advance = [this](Passed& state, std::size_t page) {
            std::vector<double> unused(kPage);
            pass(state, page * kPage, unused, nullptr);
        };
        auto [state, later] = m_kept.at(pageOf(first), advance);
        const bool areRead = pass(state, first, to, later ? &*later : nullptr);
        if (!areRead)
            std::fill(to.begin(), to.end(), kNone);  // what depends on records before would be finite and wrong
        else if (!later)
            m_kept.keep(pageOf(first) + 1, std::move(state));
        return areRead;
    }

    mutable StateKeeping<Passed> m_kept;
};

class ColumnOverTime final : public PassedColumn<WindowState> {
public:
    ColumnOverTime(const std::shared_ptr<const FormulaProgram>& program, int position, const PagedSeries& argument,
                   const WindowRules& rules, const std::shared_ptr<PageCache>& cache)
        : PassedColumn(argument.times, argument, cache,
                       begunState(program->steps[static_cast<std::size_t>(position)], rules)),
          m_program(program),
          m_step(program->steps[static_cast<std::size_t>(position)]),
          m_rules(rules)
    {
    }

private:
    bool pass(WindowState& state, std::size_t first, std::span<double> to, const WindowState* later) const override
    {
        const SeriesReader now(sources().front()), around(sources().front());
        runOverTime<SeriesReader>(m_step, m_rules, {now, around}, state, first, to, later);
        makeSmall(state);
        return now.isRead() && around.isRead();
    }

    std::shared_ptr<const FormulaProgram> m_program;
    const FormulaStep& m_step;
    const WindowRules m_rules;
};

class JoinedColumn final : public PassedColumn<JoiningCourse> {
public:
    JoinedColumn(const PagedSeries& series, const PagedTimes& times, PropertyFormula::Join join, double longestGap,
                 const std::shared_ptr<PageCache>& cache)
        : PassedColumn(times, series, cache, {}), m_join(join), m_longestGap(longestGap)
    {
    }

private:
    bool pass(JoiningCourse& state, std::size_t first, std::span<double> to, const JoiningCourse*) const override
    {
        const SeriesReader series(sources().front()), at(times());
        state.run(series, at, m_join, m_longestGap, first, to);
        return series.isRead() && at.isRead();
    }

    PropertyFormula::Join m_join;
    double m_longestGap;
};

class PlacedColumn final : public PassedColumn<PlacingCourse> {
public:
    PlacedColumn(const PagedSeries& series, const PagedTimes& times, const std::shared_ptr<PageCache>& cache)
        : PassedColumn(times, series, cache, {})
    {
    }

private:
    bool pass(PlacingCourse& state, std::size_t first, std::span<double> to, const PlacingCourse*) const override
    {
        const SeriesReader series(sources().front()), at(times());
        state.run(series, at, first, to);
        return series.isRead() && at.isRead();
    }
};

/// Elements of a column, as they are.
class CopiedColumn final : public PagedColumnMemory {
public:
    CopiedColumn(const PagedSeries& series, const std::shared_ptr<PageCache>& cache)
        : PagedColumnMemory(cache, series.times.count), m_series(series)
    {
    }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        const std::size_t from = m_series.first + first;
        const PagedMemory::Hold held = m_series.values.hold(from, from + (end - first));
        std::copy_n(m_series.values.data() + from, end - first, m_values + first);
        for (std::size_t at = first; at < end; at += kBits) {
            std::uint64_t bits = 0;
            for (std::size_t i = 0; i < std::min(kBits, end - at); ++i)
                bits |= std::uint64_t{m_series.validity.isValid(m_series.first + at + i)} << i;
            m_words[at / kBits] = bits;
        }
        return isRead(m_series.values, from, from + (end - first));
    }
    PagedSeries m_series;
};

}  // namespace

std::vector<int> leavesOf(const FormulaProgram& program, int position)
{
    return PointwiseGroup(program, position).leaves();
}

PagedSeries pointwiseColumn(const StreamedStep& step, const PagedTimes& times, std::vector<PagedSeries> leaves)
{
    return std::make_shared<const PointwiseColumn>(step.program, step.position, times, std::move(leaves), step.cache)
        ->series();
}

PagedSeries columnOverTime(const StreamedStep& step, const PagedSeries& argument, const QTimeZone& zone)
{
    const WindowRules rules{step.program->join, step.program->longestGap, zone};
    return std::make_shared<const ColumnOverTime>(step.program, step.position, argument, rules, step.cache)->series();
}

PagedSeries joined(const PagedSeries& series, const PagedTimes& times, PropertyFormula::Join join, double longestGap,
                   const std::shared_ptr<PageCache>& cache)
{
    if (areSame(series.times, times))
        return {times, series.values, series.validity, series.first};
    return std::make_shared<const JoinedColumn>(series, times, join, longestGap, cache)->series();
}

PagedSeries placed(const PagedSeries& series, const PagedTimes& times, const std::shared_ptr<PageCache>& cache)
{
    if (areSame(series.times, times))
        return {times, series.values, series.validity, series.first};
    return std::make_shared<const PlacedColumn>(series, times, cache)->series();
}

PagedSeries wholeSeries(const PagedSeries& series, const std::shared_ptr<PageCache>& cache)
{
    const auto copied = std::make_shared<const CopiedColumn>(series, cache);
    return {series.times, copied->values(), copied->validity(), 0};
}

}  // namespace plotix
