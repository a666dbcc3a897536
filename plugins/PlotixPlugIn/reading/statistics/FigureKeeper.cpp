#include "plugins/PlotixPlugIn/reading/statistics/FigureKeeper.h"

#include "plugins/PlotixPlugIn/reading/figures/Percentiles.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr std::size_t kRecordsAtOnce = 400'000;  // a few milliseconds

std::size_t recordsOf(const std::vector<FigureTask>& tasks)
{
    std::size_t records = 0;
    for (const FigureTask& task : tasks)
        records += task.records;
    return records;
}

/// The records in the order of their times; most are.
FigureRecords inOrder(const FigureRecords& records)
{
    if (records.times().runs())
        return records;
    const PagedMemory::Hold held = records.times().hold(0, records.size());
    const auto times = records.times().span();
    const auto order = sortingOrder(times.first(records.size()));
    if (!order)
        return records;
    std::vector<double> sorted(order->size());
    std::ranges::transform(*order, sorted.begin(), [&](std::size_t index) { return times[index]; });
    return records.arranged(*order, SharedArray<double>::fromVector(std::move(sorted)));
}

/// Whether records begin among others and end no earlier.
bool doCarryOn(const RecordTimes& times, const RecordTimes& before)
{
    return !times.isEmpty() && !before.isEmpty() && times.front() >= before.front() && times.front() <= before.back() &&
           times.back() >= before.back();
}

}  // namespace

FigureKeeper::FigureKeeper()
{
    connect(&m_tasks, &FigureTasks::progressed, this, &FigureKeeper::progressed);
    connect(&m_tasks, &FigureTasks::ended, this, [this] {
        update();
        emit changed();
    });
}

FigureKeeper::~FigureKeeper() = default;

// Whoever asks for the unit again gets the same text, so that a comparison of two texts is a comparison of units.
FigureKeeper::Kept FigureKeeper::kept(const FigureLine& line) const
{
    for (const Kept& each : m_lines)
        if (each.line.key == line.key && each.line.column == line.column && each.unit == line.column->unit() &&
            each.line.times.data() == line.times.data() && each.line.longestJoin == line.longestJoin)
            return each;
    Kept made{.line = line,
              .unit = line.column->unit(),
              .records = FigureRecords(line.times, *line.column),
              .sums = nullptr,
              .isBehind = false,
              .high = nullptr,
              .low = nullptr,
              .figures = {},
              .percentiles = {}};
    // A trend that is followed gets its records anew every few seconds: until they are summed up, those it had serve.
    for (const Kept& each : m_lines)
        if (each.line.key == line.key && each.unit == made.unit && doCarryOn(line.times, each.line.times)) {
            made.sums = each.sums;
            made.isBehind = made.sums != nullptr;
        }
    return made;
}

void FigureKeeper::setLines(const std::vector<FigureLine>& lines)
{
    std::vector<Kept> now;
    for (const FigureLine& line : lines)
        now.push_back(kept(line));
    const auto isSame = [](const Kept& one, const Kept& other) {
        return one.line.key == other.line.key && one.line.column == other.line.column && one.unit == other.unit &&
               one.line.longestJoin == other.line.longestJoin;
    };
    if (std::ranges::equal(now, m_lines, isSame))
        return;
    m_tasks.stop();
    m_lines = std::move(now);
    m_isCancelled = false;
    update();
}

void FigureKeeper::ask(const FigureQuestion& question)
{
    if (question == m_question)
        return;
    m_question = question;
    forgetAnswers();
    m_isCancelled = false;
    if (!m_isSumming)
        m_tasks.stop();
    update();
}

void FigureKeeper::forgetAnswers()
{
    for (Kept& each : m_lines) {
        each.figures.reset();
        each.percentiles.reset();
        const auto found = m_question.limits.find(each.line.key);
        const bool hasLimits = found != m_question.limits.end();
        if (each.high && !(hasLimits && found->second.high == each.high->limit()))
            each.high.reset();
        if (each.low && !(hasLimits && found->second.low == each.low->limit()))
            each.low.reset();
    }
}

void FigureKeeper::cancel()
{
    m_tasks.stop();
    m_isCancelled = true;
    emit changed();
}

void FigureKeeper::update()
{
    if (m_tasks.isRunning() || m_isCancelled)
        return;
    for (TaskList tasks = nextTasks(); !tasks.empty(); tasks = nextTasks()) {
        if (recordsOf(tasks) > kRecordsAtOnce) {
            m_tasks.start(std::move(tasks));
            return;
        }
        runHere(tasks);
    }
}

void FigureKeeper::finish()
{
    m_tasks.stop();
    m_isCancelled = false;
    for (TaskList tasks = nextTasks(); !tasks.empty(); tasks = nextTasks())
        runHere(tasks);
    emit changed();
}

void FigureKeeper::runHere(const TaskList& tasks)
{
    for (const FigureTask& task : tasks)
        task.run({})();
}

/// First the sums of all lines, which everything else needs; then what is worked out from them.
FigureKeeper::TaskList FigureKeeper::nextTasks()
{
    TaskList tasks = sumTasks();
    m_isSumming = !tasks.empty();
    if (m_isSumming || !m_question.span)
        return tasks;
    for (const Kept& each : m_lines) {
        addLimitTasks(tasks, each);
        addPercentileTask(tasks, each);
    }
    return tasks;
}

FigureKeeper::TaskList FigureKeeper::sumTasks()
{
    TaskList tasks;
    for (const Kept& each : m_lines)
        if (!each.sums || each.isBehind)
            tasks.push_back({each.records.size(), [this, key = each.line.key, records = each.records,
                                                   join = each.line.longestJoin](const Work& work) {
                                 auto sums = LineSummary::make(inOrder(records), join, work);
                                 return sums ? FigureTask::Deliver([this, key, sums] { takeSums(key, sums); })
                                             : FigureTask::Deliver();
                             }});
    return tasks;
}

void FigureKeeper::takeSums(const QString& key, const std::shared_ptr<const LineSummary>& sums)
{
    Kept* kept = at(key);
    if (!kept)
        return;
    kept->sums = sums;
    kept->isBehind = false;
    kept->high.reset();
    kept->low.reset();
    kept->figures.reset();
    kept->percentiles.reset();
}

void FigureKeeper::addLimitTasks(TaskList& tasks, const Kept& kept)
{
    const auto found = m_question.limits.find(kept.line.key);
    if (found == m_question.limits.end())
        return;
    const auto add = [&](std::optional<double> limit, std::shared_ptr<const LimitSummary> Kept::*place) {
        if (limit && !(kept.*place))
            tasks.push_back({kept.records.size(),
                             [this, place, key = kept.line.key, line = kept.sums, value = *limit](const Work& work) {
                                 auto sums = LimitSummary::make(line, value, work);
                                 return sums ? FigureTask::Deliver([this, place, key, sums] {
                                     if (Kept* now = at(key))
                                         now->*place = sums;
                                 })
                                             : FigureTask::Deliver();
                             }});
    };
    add(found->second.high, &Kept::high);
    add(found->second.low, &Kept::low);
}

void FigureKeeper::addPercentileTask(TaskList& tasks, const Kept& kept)
{
    if (m_question.shares.empty() || kept.percentiles)
        return;
    const LineSummary::Elements elements = kept.sums->elements(m_question.span->from, m_question.span->to);
    const std::size_t records = (elements.last - elements.first) * kPercentilePasses;
    tasks.push_back(
        {std::max<std::size_t>(1, records), [this, key = kept.line.key, line = kept.sums, span = *m_question.span,
                                             shares = m_question.shares](const Work& work) {
             auto found = percentiles(*line, span.from, span.to, shares, work);
             return found ? FigureTask::Deliver([this, key, found] {
                 if (Kept* now = at(key))
                     now->percentiles = found;
             })
                          : FigureTask::Deliver();
         }});
}

const FigureKeeper::Kept* FigureKeeper::at(const QString& key) const
{
    const auto found = std::ranges::find_if(m_lines, [&](const Kept& each) { return each.line.key == key; });
    return found == m_lines.end() ? nullptr : &*found;
}

FigureKeeper::Kept* FigureKeeper::at(const QString& key)
{
    return const_cast<Kept*>(std::as_const(*this).at(key));
}

std::optional<LineFigures> FigureKeeper::figures(const QString& key) const
{
    const Kept* kept = at(key);
    if (!kept || !kept->sums || !m_question.span)
        return std::nullopt;
    if (!kept->figures)
        kept->figures = kept->sums->figures(m_question.span->from, m_question.span->to);
    return kept->figures;
}

std::optional<double> FigureKeeper::percentile(const QString& key, double share) const
{
    const Kept* kept = at(key);
    const auto place = std::ranges::find(m_question.shares, share);
    if (!kept || !kept->percentiles || place == m_question.shares.end())
        return std::nullopt;
    return (*kept->percentiles)[static_cast<std::size_t>(place - m_question.shares.begin())];
}

std::optional<LimitFigures> FigureKeeper::aboveHigh(const QString& key) const
{
    const Kept* kept = at(key);
    return kept && kept->high && m_question.span
               ? std::optional(kept->high->figures(m_question.span->from, m_question.span->to))
               : std::nullopt;
}

std::optional<LimitFigures> FigureKeeper::belowLow(const QString& key) const
{
    const Kept* kept = at(key);
    return kept && kept->low && m_question.span
               ? std::optional(kept->low->figures(m_question.span->from, m_question.span->to))
               : std::nullopt;
}

std::optional<LineSummary::Point> FigureKeeper::latest(const QString& key) const
{
    const Kept* kept = at(key);
    return kept && kept->sums ? kept->sums->pointBefore(kept->sums->records().size()) : std::nullopt;
}

}  // namespace plotix
