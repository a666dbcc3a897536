#include "tests/support/paging/PagedRecords.h"

#include "base/PagedColumnMemory.h"
#include "base/PagedReading.h"
#include "records/columns/ExactTotal.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix_test {

using namespace plotix;

namespace {

/// Times, which are all valid.
class PagedValues : public PagedMemory {
public:
    PagedValues(std::shared_ptr<PageCache> cache, SharedArray<double> source)
        : PagedMemory(std::move(cache), source.size()), m_source(std::move(source)), m_values(reserve<double>())
    {
    }
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        std::copy(m_source.data() + first, m_source.data() + end, m_values + first);
        return true;
    }
    SharedArray<double> m_source;
    double* m_values;
};

class PagedColumn : public PagedColumnMemory {
public:
    PagedColumn(std::shared_ptr<PageCache> cache, SharedArray<double> source, SharedArray<std::uint64_t> validity)
        : PagedColumnMemory(std::move(cache), source.size()),
          m_source(std::move(source)),
          m_validity(std::move(validity))
    {
    }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        std::copy(m_source.data() + first, m_source.data() + end, m_values + first);
        for (std::size_t word = first / kBits; word < (end + kBits - 1) / kBits; ++word)
            m_words[word] = m_validity.isEmpty() ? ~std::uint64_t{0} : m_validity[word];
        return true;
    }
    std::optional<bool> readPast(std::size_t first, std::size_t end, const Show& show) const override
    {
        constexpr std::size_t kWords = 65;  // in a piece
        for (; first < end; first += kWords * kBits) {
            const std::size_t count = std::min(kWords * kBits, end - first);
            const std::vector<double> values(m_source.data() + first, m_source.data() + first + count);
            std::vector<std::uint64_t> words(kWords, ~std::uint64_t{0});
            for (std::size_t word = 0; !m_validity.isEmpty() && word * kBits < count; ++word)
                words[word] = m_validity[first / kBits + word];
            show({first, values, words.data()});
        }
        return true;
    }
    SharedArray<double> m_source;
    SharedArray<std::uint64_t> m_validity;
};

KTVRecordColumn::Known knownOf(const KTVRecordColumn& column, const std::vector<std::size_t>& begin)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    ValueRuns runs;
    ExactTotal sum;
    KTVRecordColumn::Known known;
    for (std::size_t run = 0; run + 1 < begin.size() && begin[run] < column.size(); ++run) {
        double least = kInfinity, greatest = -kInfinity;
        bool isEmpty = true;
        for (std::size_t index = begin[run]; index < std::min(column.size(), begin[run + 1]); ++index) {
            if (!column.isValid(index))
                continue;
            const double value = column.archivedValues()[index];
            least = isEmpty || value < least ? value : least;
            greatest = isEmpty || value > greatest ? value : greatest;
            isEmpty = false;
            sum.add(value);
            ++known.count;
        }
        runs.least.push_back(least);
        runs.greatest.push_back(greatest);
        runs.first.push_back(column.isValid(begin[run]) ? column.archivedValues()[begin[run]] : std::nan(""));
    }
    known.runs = KeptRuns::of(std::move(runs));
    known.sum = sum.value();
    return known;
}

}  // namespace

std::vector<std::size_t> randomRuns(std::size_t elements, std::mt19937& random)
{
    const std::size_t longest = random() % 3 == 0 ? 3 : 700;
    std::vector<std::size_t> begin{0};
    while (begin.back() < elements)
        begin.push_back(std::min(elements, begin.back() + 1 + random() % longest));
    return begin;
}

PagedArray<double> paged(const PagedArray<double>& values, const std::shared_ptr<PageCache>& cache)
{
    return std::make_shared<const PagedValues>(cache, values.allHeld())->values();
}

std::shared_ptr<KTVRecordColumn> paged(const KTVRecordColumn& column, const std::vector<std::size_t>& begin,
                                       const std::shared_ptr<PageCache>& cache)
{
    const auto memory = std::make_shared<const PagedColumn>(cache, column.archivedValues().allHeld(),
                                                            column.validity().words().allHeld());
    const auto made = std::make_shared<KTVRecordColumn>(
        column.descriptor(), memory->values(), column.validity().isAllValid() ? ValidityBitmap() : memory->validity(),
        column.unitModel());
    made->setKnown(knownOf(column, begin));
    for (const auto& [index, snapshot] : column.exceptions())
        made->setException(index, snapshot);
    return made;
}

KTVRecordDictionaryPtr paged(const KTVRecordDictionary& records, const std::shared_ptr<PageCache>& cache,
                             std::mt19937& random)
{
    const auto made = std::make_shared<KTVRecordDictionary>();
    TimeRuns runs;
    runs.begin = {0};
    if (records.time()) {
        runs.begin = randomRuns(records.time()->size(), random);
        const PagedReader<double> times(*records.time());
        for (std::size_t run = 0; run + 1 < runs.begin.size(); ++run) {
            runs.first.push_back(times[runs.begin[run]]);
            runs.last.push_back(times[runs.begin[run + 1] - 1]);
        }
    }
    for (const auto& [key, column] : records.columns())
        made->setColumn(key, column ? paged(*column, runs.begin, cache) : nullptr);
    if (records.time())
        made->setTime({paged(*records.time(), cache), std::make_shared<const TimeRuns>(std::move(runs))});
    return made;
}

}  // namespace plotix_test
