#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <vector>

/// Which columns of chunks are fetched together with those that somebody looks at, since a question to a server in
/// another building takes longer than what it brings: those that are expected, those that follow where somebody reads
/// on, and, where columns are short, neighbours.
///
/// Columns are counted by the chunks' places in time. Pure; one thread at a time.
namespace plotix {

class ReadingAhead {
public:
    /// Somebody is about to read these places.
    void expect(std::size_t first, std::size_t end);

    using IsAbsent = std::function<bool(std::size_t place)>;
    /// Places besides [first, end), which are fetched now: ascending, below `count`, and absent ones alone. Requires:
    /// first < end ≤ count.
    std::vector<std::size_t> besides(std::size_t first, std::size_t end, std::size_t count, const IsAbsent& isAbsent);

    /// So long were columns that came.
    void fetched(std::size_t columns, std::size_t bytes);

private:
    /// Somebody who reads places one after the other.
    struct Reader {
        std::size_t next = 0;   // behind what was fetched last
        std::size_t bytes = 0;  // to fetch ahead
    };
    std::size_t places(std::size_t bytes, std::size_t whereUnknown) const;
    Reader& readerAt(std::size_t place);
    bool takeExpected(std::size_t place, std::size_t atMost, std::vector<std::size_t>& taken);

    std::vector<Reader> m_readers;                  // the one that read last: at the end
    std::map<std::size_t, std::size_t> m_expected;  // [first, end), apart from each other
    std::size_t m_columns = 0, m_bytes = 0;         // fetched
};

}  // namespace plotix
