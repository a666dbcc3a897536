#include "records/sqlite/SpanNotes.h"

#include "records/sqlite/ColumnPages.h"

#include <algorithm>

namespace plotix {

namespace {

bool areSame(const outlinecodec::Cut& one, const outlinecodec::Cut& other)
{
    return one.doublings == other.doublings && one.records == other.records;
}

}  // namespace

SpanNotes::~SpanNotes() = default;

void SpanNotes::keep(const Outline& outline, std::span<const ChunkPart> parts, std::span<const RowId> properties,
                     const KnownRuns& known)
{
    std::map<RowId, std::shared_ptr<const Column>> columns;
    for (std::size_t place = 0; place < properties.size(); ++place) {
        const KnownRuns::Column& column = known.columns[place];
        columns[properties[place]] =
            std::make_shared<const Column>(Column{column.runs.front(), column.total, column.isAllValid, column.absent});
    }
    const std::lock_guard lock(m_mutex);
    Outlined& noted = m_outlined[outline.id];
    if (noted.chunks.empty())
        noted = {outline.chunks, outline.cut, parts.front().target, {}};
    for (auto& [property, column] : columns)
        noted.columns[property] = std::move(column);
}

std::optional<KnownRuns> SpanNotes::of(const Outline& outline, std::span<const ChunkPart> parts,
                                       std::span<const RowId> properties) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_outlined.find(outline.id);
    if (found == m_outlined.end() || found->second.chunks != outline.chunks || !areSame(found->second.cut, outline.cut))
        return std::nullopt;
    KnownRuns known(properties.size(), 0, 0);
    for (std::size_t place = 0; place < properties.size(); ++place) {
        const auto column = found->second.columns.find(properties[place]);
        std::shared_ptr<const KeptRuns> runs =
            column == found->second.columns.end() ? nullptr : column->second->runs.lock();
        if (!runs)
            return std::nullopt;
        KnownRuns::Column& taken = known.columns[place];
        taken.runs = {std::move(runs)};
        taken.total = column->second->total;
        taken.isAllValid = column->second->isAllValid;
        taken.absent = column->second->absent;
    }
    if (!takeTimes(found->second, parts.front().target, known.times))
        return std::nullopt;
    return known;
}

/// From wherever the span's times are kept, cut as the outline says.
bool SpanNotes::takeTimes(const Outlined& noted, std::size_t target, TimeRuns& times) const
{
    for (const Given& given : m_given) {
        const std::shared_ptr<const TimeRuns> all = given.runs.lock();
        if (!all)
            continue;
        const auto firstRun = static_cast<std::size_t>(
            std::lower_bound(all->begin.begin(), all->begin.end(), noted.target) - all->begin.begin());
        times.begin.clear();
        std::size_t run = firstRun;
        std::size_t begin = 0;
        for (std::size_t chunk = 0; chunk < noted.chunks.size(); begin += noted.cut.records[chunk++])
            for (std::size_t i = 0; i < noted.cut.runsOf(chunk) && run < all->count(); ++i)
                if (all->begin[run] == noted.target + begin + i * noted.cut.runLength()) {
                    times.begin.push_back(target + begin + i * noted.cut.runLength());
                    ++run;
                }
        if (times.begin.size() != noted.cut.runs() || all->begin[run] != noted.target + begin)
            continue;
        const auto from = static_cast<std::ptrdiff_t>(firstRun), to = static_cast<std::ptrdiff_t>(run);
        times.first.assign(all->first.begin() + from, all->first.begin() + to);
        times.last.assign(all->last.begin() + from, all->last.begin() + to);
        return true;
    }
    return false;
}

bool SpanNotes::Given::isOf(std::span<const RowId> properties) const
{
    return std::equal(columns.begin(), columns.end(), properties.begin(), properties.end(),
                      [](const Column& column, RowId property) { return column.property == property; });
}

std::optional<SpanNotes::Answer> SpanNotes::Given::answer() const
{
    Answer answer{runs.lock(), times.lock(), {}};
    if (!answer.runs || !answer.times)
        return std::nullopt;
    for (const Column& column : columns) {
        answer.columns.push_back({column.property, column.pages.lock(), column.runs.lock(), column.total});
        if (!answer.columns.back().pages || !answer.columns.back().runs)
            return std::nullopt;
    }
    return answer;
}

std::optional<SpanNotes::Answer> SpanNotes::answerTo(std::span<const RowId> properties,
                                                     const std::shared_ptr<PageCache>& cache) const
{
    for (const Given& given : m_given)
        if (given.isOf(properties))
            if (std::optional<Answer> answer = given.answer(); answer && answer->times->cache() == cache)
                return answer;
    return std::nullopt;
}

std::optional<SpanNotes::Answer> SpanNotes::of(std::span<const RowId> properties,
                                               const std::shared_ptr<PageCache>& cache) const
{
    const std::lock_guard lock(m_mutex);
    return answerTo(properties, cache);
}

SpanNotes::Answer SpanNotes::shared(Answer answer, const std::shared_ptr<PageCache>& cache)
{
    std::vector<RowId> properties;
    for (const Answer::Column& column : answer.columns)
        properties.push_back(column.property);
    const std::lock_guard lock(m_mutex);
    if (std::optional<Answer> before = answerTo(properties, cache))
        return std::move(*before);
    std::erase_if(m_given, [](const Given& given) { return given.runs.expired(); });
    const auto takeOver = [&](auto& mine, const auto& known, const auto& isEqual) {
        const auto other = known.lock();
        if (other && isEqual(*mine, *other))
            mine = other;
    };
    const auto areLikewise = [](const ColumnPages& one, const ColumnPages& other) { return one.isLike(other); };
    for (const Given& given : m_given) {
        takeOver(answer.runs, given.runs, std::equal_to<TimeRuns>());
        takeOver(answer.times, given.times, areLikewise);
        for (const Given::Column& known : given.columns)
            for (Answer::Column& column : answer.columns)
                if (column.property == known.property)
                    takeOver(column.pages, known.pages, areLikewise);
    }
    // The new one has all that is left of those to the same properties.
    std::erase_if(m_given, [&](const Given& given) {
        const std::shared_ptr<const ColumnPages> times = given.times.lock();
        return !times || (given.isOf(properties) && times->cache() == cache);
    });
    Given given{answer.runs, answer.times, {}};
    for (const Answer::Column& column : answer.columns)
        given.columns.push_back({column.property, column.pages, column.runs, column.total});
    m_given.push_back(std::move(given));
    return answer;
}

}  // namespace plotix
