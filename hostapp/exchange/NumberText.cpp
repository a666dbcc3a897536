#include "hostapp/exchange/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace plotix {

namespace {

constexpr std::array<std::string_view, 5> kMissing = {"na", "n/a", "nan", "null", "-"};
constexpr std::size_t kLongestNumber = 1100;  // the longest double written out in full has fewer characters

bool equalsLowerCase(std::string_view field, std::string_view lower)
{
    return std::equal(field.begin(), field.end(), lower.begin(), lower.end(), [](char one, char other) {
        return (one >= 'A' && one <= 'Z' ? static_cast<char>(one - 'A' + 'a') : one) == other;
    });
}

bool readWithPoint(const char* begin, const char* end, double& value)
{
    double read = 0;
    const auto [stopped, error] = std::from_chars(begin, end, read);
    if (error != std::errc() || stopped != end)
        return false;
    value = read;
    return true;
}

bool readWithComma(std::string_view field, std::size_t comma, double& value)
{
    std::array<char, kLongestNumber> text;
    if (field.size() > text.size())
        return false;
    std::memcpy(text.data(), field.data(), field.size());
    text[comma] = '.';
    return readWithPoint(text.data(), text.data() + field.size(), value);
}

}  // namespace

bool isMissing(std::string_view field)
{
    return field.empty() || (field.size() <= 4 && std::any_of(kMissing.begin(), kMissing.end(), [&](auto missing) {
                                 return equalsLowerCase(field, missing);
                             }));
}

FieldKind readNumber(std::string_view field, DecimalMark& mark, double& value)
{
    std::string_view digits = field;
    if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-')
        digits.remove_prefix(1);  // from_chars knows no plus sign
    double read = 0;
    if (readWithPoint(digits.data(), digits.data() + digits.size(), read) && read == read) {
        const bool hasPoint = mark != DecimalMark::Point && digits.find('.') != std::string_view::npos;
        if (hasPoint && mark == DecimalMark::Comma)
            return FieldKind::Text;
        if (hasPoint)
            mark = DecimalMark::Point;
        value = read;
        return FieldKind::Number;
    }
    if (isMissing(field))
        return FieldKind::Missing;
    const std::size_t comma = digits.find(',');
    if (mark == DecimalMark::Point || comma == std::string_view::npos || !readWithComma(digits, comma, value))
        return FieldKind::Text;
    mark = DecimalMark::Comma;
    return FieldKind::Number;
}

bool isWholeNumber(std::string_view field)
{
    return !field.empty() &&
           std::all_of(field.begin(), field.end(), [](char character) { return character >= '0' && character <= '9'; });
}

}  // namespace plotix
