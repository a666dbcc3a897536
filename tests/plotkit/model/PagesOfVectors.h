#pragma once

#include "base/PageCache.h"
#include "plotkit/model/CPTPagedPoints.h"

#include <atomic>
#include <span>
#include <vector>

/// Times and points whose pages are written from vectors.
namespace plotkit_test {

/// Times in paged memory.
class PagedTimes : public plotix::PagedMemory {
public:
    PagedTimes(std::shared_ptr<plotix::PageCache> cache, std::vector<double> times)
        : PagedMemory(std::move(cache), times.size()), m_times(std::move(times)), m_pages(reserve<double>())
    {
    }
    plotix::PagedArray<double> array() const { return {shared_from_this(), m_pages, elements()}; }

private:
    bool fill(std::size_t first, std::size_t end) const noexcept override
    {
        for (std::size_t element = first; element < end; ++element)
            m_pages[element] = m_times[element];
        return true;
    }
    std::vector<double> m_times;
    double* m_pages;
};

/// Points that cannot be read.
class UnreadablePoints : public CPTPagedPoints {
public:
    UnreadablePoints(std::shared_ptr<plotix::PageCache> cache, std::size_t elements)
        : CPTPagedPoints(std::move(cache), elements)
    {
    }
    std::size_t looks() const { return m_looks; }  ///< how often they were wanted

private:
    bool writePoints(CPTPointWriter& /*into*/) const noexcept override
    {
        ++m_looks;
        return false;
    }
    mutable std::atomic<std::size_t> m_looks = 0;
};

/// Points written from archived doubles.
class PagedDoubles : public CPTPagedPoints {
public:
    PagedDoubles(std::shared_ptr<plotix::PageCache> cache, std::vector<double> values, std::vector<bool> valid)
        : CPTPagedPoints(std::move(cache), values.size()),
          m_values(std::move(values)),
          m_words((m_values.size() + 63) / 64)
    {
        for (std::size_t element = 0; element < m_values.size(); ++element)
            if (valid[element])
                m_words[element / 64] |= std::uint64_t{1} << (element % 64);
    }
    std::size_t looks() const { return m_looks; }  ///< how often pages were written
    const std::vector<double>& values() const { return m_values; }

private:
    bool writePoints(CPTPointWriter& into) const noexcept override
    {
        ++m_looks;
        const plotix::ValidityBitmap valid(plotix::SharedArray<std::uint64_t>::fromVector(m_words));
        into.setBlock(into.first(), std::span(m_values).subspan(into.first(), into.end() - into.first()), valid);
        return true;
    }
    std::vector<double> m_values;
    std::vector<std::uint64_t> m_words;
    mutable std::atomic<std::size_t> m_looks = 0;  // several threads write pages
};

}  // namespace plotkit_test
