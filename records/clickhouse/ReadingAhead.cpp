#include "records/clickhouse/ReadingAhead.h"

#include <algorithm>
#include <iterator>

namespace plotix {

namespace {

/// Somewhat more than a connection brings while a question is on its way.
constexpr std::size_t kExpectedBytes = 4 << 20;
constexpr std::size_t kFewestBytes = 128 << 10, kMostBytes = 2 << 20;
/// That a look at one place brings along: next to nothing.
constexpr std::size_t kLookBytes = 64 << 10;
constexpr std::size_t kOwnBytes = 32;  // of a row without its column
/// Several threads read on, each from where another one is not.
constexpr std::size_t kMostReaders = 8, kMostSkipped = 8, kMostStretches = 4096;

}  // namespace

void ReadingAhead::expect(std::size_t first, std::size_t end)
{
    if (first >= end)
        return;
    if (m_expected.size() > kMostStretches)
        m_expected.clear();  // nobody came for them
    auto at = m_expected.upper_bound(first);
    if (at != m_expected.begin() && std::prev(at)->second >= first)
        --at;
    while (at != m_expected.end() && at->first <= end) {
        first = std::min(first, at->first);
        end = std::max(end, at->second);
        at = m_expected.erase(at);
    }
    m_expected.emplace(first, end);
}

void ReadingAhead::fetched(std::size_t columns, std::size_t bytes)
{
    m_columns += columns;
    m_bytes += bytes;
}

std::size_t ReadingAhead::places(std::size_t bytes, std::size_t whereUnknown) const
{
    return m_columns > 0 ? bytes / (m_bytes / m_columns + kOwnBytes) : whereUnknown;
}

ReadingAhead::Reader& ReadingAhead::readerAt(std::size_t place)
{
    const auto found = std::find_if(m_readers.begin(), m_readers.end(), [&](const Reader& reader) {
        return place >= reader.next && place <= reader.next + kMostSkipped;
    });
    if (found != m_readers.end()) {
        found->bytes = std::clamp(2 * found->bytes, kFewestBytes, kMostBytes);
        std::rotate(found, found + 1, m_readers.end());
        return m_readers.back();
    }
    if (m_readers.size() == kMostReaders)
        m_readers.erase(m_readers.begin());
    return m_readers.emplace_back(Reader{place, 0});
}

/// Takes expected places from `place` on out; false: that one is not expected.
bool ReadingAhead::takeExpected(std::size_t place, std::size_t atMost, std::vector<std::size_t>& taken)
{
    auto at = m_expected.upper_bound(place);
    if (at == m_expected.begin() || std::prev(at)->second <= place)
        return false;
    --at;
    std::size_t from = place;
    while (at != m_expected.end() && taken.size() < atMost) {
        const auto [first, end] = *at;
        from = std::max(from, first);
        const std::size_t to = std::min(end, from + (atMost - taken.size()));
        for (std::size_t each = from; each < to; ++each)
            taken.push_back(each);
        at = m_expected.erase(at);
        if (first < from)
            m_expected.emplace(first, from);
        if (to < end)
            m_expected.emplace(to, end);
    }
    return true;
}

std::vector<std::size_t> ReadingAhead::besides(std::size_t first, std::size_t end, std::size_t count,
                                               const IsAbsent& isAbsent)
{
    constexpr std::size_t kAtFirst = 16;
    std::vector<std::size_t> found;
    if (!takeExpected(first, places(kExpectedBytes, kAtFirst), found)) {
        Reader& reader = readerAt(first);
        const std::size_t ahead = std::max(places(reader.bytes, reader.bytes > 0 ? 4 : 0), places(kLookBytes, 0));
        for (std::size_t skipped = reader.next; skipped < first; ++skipped)
            found.push_back(skipped);
        for (std::size_t place = end; place < std::min(count, end + ahead); ++place)
            found.push_back(place);
        reader.next = std::min(count, end + ahead);
    }
    std::erase_if(found, [&](std::size_t place) {
        return (place >= first && place < end) || place >= count || !isAbsent(place);
    });
    return found;
}

}  // namespace plotix
