#pragma once

#include "base/PagedArray.h"

#include <cstdint>

/// One bit per element, least significant bit of word 0 first; set means valid.
///
/// A bitmap without words means "every element is valid", whatever its size. Words that are paged are read as every
/// paged column is: while they are held. *Shared*; any thread may read.
namespace plotix {

class ValidityBitmap {
public:
    ValidityBitmap() = default;
    explicit ValidityBitmap(SharedArray<std::uint64_t> words) : m_words(std::move(words)) {}
    /// Requires: an entry for 64 elements.
    explicit ValidityBitmap(PagedArray<std::uint64_t> words) : m_words(std::move(words)) {}

    bool isValid(std::size_t index) const
    {
        return m_words.isEmpty() || ((m_words[index / 64] >> (index % 64)) & 1U) != 0;
    }
    bool isAllValid() const { return m_words.isEmpty(); }
    const PagedArray<std::uint64_t>& words() const { return m_words; }

private:
    PagedArray<std::uint64_t> m_words;
};

}  // namespace plotix
