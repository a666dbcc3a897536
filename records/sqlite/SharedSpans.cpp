#include "records/sqlite/SharedSpans.h"

#include "records/columns/ValidityBits.h"

#include <algorithm>
#include <cstring>

namespace plotix {

namespace {

/// Bit for bit.
template <class T>
bool areSame(const T* one, const T* other, std::size_t count)
{
    return count == 0 || std::memcmp(one, other, count * sizeof(T)) == 0;
}

/// Of tails, whose words begin with the first element and end in zeros.
bool areSame(const RecordsView& one, const RecordsView& other)
{
    if (one.size != other.size || one.columns.size() != other.columns.size() ||
        !areSame(one.times, other.times, one.size))
        return false;
    for (std::size_t i = 0; i < one.columns.size(); ++i) {
        const RecordsView::Column &mine = one.columns[i], &theirs = other.columns[i];
        if (mine.property != theirs.property || !areSame(mine.values, theirs.values, one.size) ||
            !areSame(mine.valid, theirs.valid, bits::wordsFor(one.size)))
            return false;
    }
    return true;
}

bool areSame(const ChunkPart& one, const ChunkPart& other)
{
    return one.chunk.id == other.chunk.id && one.first == other.first && one.count == other.count;
}

bool haveSameRecords(const PackedSpan& one, const PackedSpan& other)
{
    return std::equal(one.parts.begin(), one.parts.end(), other.parts.begin(), other.parts.end(),
                      [](const ChunkPart& mine, const ChunkPart& theirs) { return areSame(mine, theirs); }) &&
           areSame(one.tail.view(), other.tail.view());
}

}  // namespace

std::shared_ptr<const PackedSpan> SharedSpans::shared(RowId agent, std::shared_ptr<const PackedSpan> span)
{
    Spans known;  // outlives the lock: some of it may have nobody else any more
    const std::lock_guard lock(m_mutex);
    known = spansOf(agent);
    for (const std::shared_ptr<const PackedSpan>& each : known)
        if (!each->failure->message() && haveSameRecords(*each, *span))
            return each;
    m_spans.emplace_back(agent, span);
    return span;
}

SharedSpans::Spans SharedSpans::ofAgent(RowId agent)
{
    const std::lock_guard lock(m_mutex);
    return spansOf(agent);
}

SharedSpans::Spans SharedSpans::spansOf(RowId agent)
{
    Spans found;
    std::erase_if(m_spans, [](const auto& each) { return each.second.expired(); });
    for (auto each = m_spans.rbegin(); each != m_spans.rend(); ++each)
        if (each->first == agent)
            if (std::shared_ptr<const PackedSpan> span = each->second.lock())
                found.push_back(std::move(span));
    return found;
}

std::optional<KnownRuns> NotedOutlines::of(const Outline& outline, std::span<const ChunkPart> parts,
                                           std::span<const RowId> properties) const
{
    std::optional<KnownRuns> known = m_span->notes->of(outline, parts, properties);
    for (auto other = m_others.begin(); !known && other != m_others.end(); ++other) {
        known = (*other)->notes->of(outline, parts, properties);
        if (known)
            keep(outline, parts, properties, *known);
    }
    return known;
}

}  // namespace plotix
