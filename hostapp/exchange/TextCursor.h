#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

namespace plotix {

/// Takes characters from the front of a text, which it borrows. One thread.
class TextCursor {
public:
    explicit TextCursor(std::string_view text) : m_text(text) {}

    bool atEnd() const { return m_text.empty(); }
    std::string_view rest() const { return m_text; }
    void skip(std::size_t count) { m_text.remove_prefix(count); }
    char peek() const { return m_text.empty() ? '\0' : m_text.front(); }

    bool take(char character)
    {
        if (peek() != character)
            return false;
        m_text.remove_prefix(1);
        return true;
    }

    void takeBlanks()
    {
        while (peek() == ' ')
            m_text.remove_prefix(1);
    }

    bool takeWord(std::string_view lowerCase)
    {
        if (m_text.size() < lowerCase.size() ||
            !std::equal(lowerCase.begin(), lowerCase.end(), m_text.begin(),
                        [](char lower, char character) { return (character | 0x20) == lower || character == lower; }))
            return false;
        m_text.remove_prefix(lowerCase.size());
        return true;
    }

    std::string_view takeDigits()
    {
        std::size_t count = 0;
        while (count < m_text.size() && m_text[count] >= '0' && m_text[count] <= '9')
            ++count;
        const std::string_view digits = m_text.substr(0, count);
        m_text.remove_prefix(count);
        return digits;
    }

    /// A number of `fewest` to `most` digits.
    std::optional<int> takeNumber(std::size_t fewest, std::size_t most)
    {
        const std::string_view digits = takeDigits();
        if (digits.size() < fewest || digits.size() > most)
            return {};
        int number = 0;
        for (const char digit : digits)
            number = number * 10 + (digit - '0');
        return number;
    }

private:
    std::string_view m_text;
};

/// The number that digits write; 0 for none.
inline int numberOf(std::string_view digits)
{
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

}  // namespace plotix
