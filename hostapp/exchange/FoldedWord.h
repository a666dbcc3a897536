#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace plotix {

/// A cell as our tables write words: in lower case, with one '?' for a run of characters beyond ASCII, since a cell may
/// be UTF-8 or Latin-1. Empty when it is too long to be a word. A value; any thread.
class FoldedWord {
public:
    static constexpr std::size_t kLongest = 40;

    explicit FoldedWord(std::string_view field)
    {
        if (field.size() > kLongest)
            return;
        for (const char character : field) {
            const bool isLetterBeyond = static_cast<unsigned char>(character) >= 0x80;
            if (isLetterBeyond && m_size > 0 && m_text[m_size - 1] == '?')
                continue;
            const bool isCapital = character >= 'A' && character <= 'Z';
            m_text[m_size++] = isLetterBeyond ? '?' : isCapital ? static_cast<char>(character + 32) : character;
        }
    }
    std::string_view text() const { return {m_text.data(), m_size}; }

private:
    std::array<char, kLongest> m_text{};
    std::size_t m_size = 0;
};

}  // namespace plotix
