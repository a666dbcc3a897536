#pragma once

#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

/// Paged memory of a column: its values, and which of them are valid. Whoever derives from it fills both. As
/// PagedMemory, *shared* by those who read; any thread.
namespace plotix {

class PagedColumnMemory : public PagedMemory {
public:
    PagedArray<double> values() const { return {shared_from_this(), m_values, elements()}; }
    ValidityBitmap validity() const
    {
        return ValidityBitmap(
            PagedArray<std::uint64_t>(shared_from_this(), m_words, (elements() + kBits - 1) / kBits, kBits));
    }

protected:
    static constexpr std::size_t kBits = 64;  // of a word

    PagedColumnMemory(std::shared_ptr<PageCache> cache, std::size_t size)
        : PagedMemory(std::move(cache), size), m_values(reserve<double>()), m_words(reserve<std::uint64_t>(kBits))
    {
    }

    double* const m_values;
    std::uint64_t* const m_words;
};

}  // namespace plotix
