#include "hostapp/exchange/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace plotix {

namespace {

constexpr std::size_t kLongestNumber = 1100;  // the longest double written out in full has fewer characters

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
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

/// The length of the blank or apostrophe that may stand between groups of digits; 0 for anything else.
std::size_t groupMarkAt(std::string_view text)
{
    constexpr std::array<std::string_view, 8> kMarks = {
        " ", "'", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x89", "\xE2\x80\x99", "\xA0", "\x92"};
    for (const std::string_view mark : kMarks)
        if (text.starts_with(mark))
            return mark.size();
    return 0;
}

/// A number's characters put in one form: '-' in front, '_' between groups that blanks or apostrophes part.
class PlainForm {
public:
    explicit PlainForm(std::string_view field)
    {
        if (field.size() > 3 && field.starts_with("=\"") && field.back() == '"')
            field = field.substr(2, field.size() - 3);
        if (field.starts_with('\''))
            field.remove_prefix(1);
        if (field.size() > 2 && field.front() == '(' && field.back() == ')') {
            put('-');
            field = field.substr(1, field.size() - 2);
        } else if (field.size() > 1 && field.back() == '-') {
            put('-');
            field.remove_suffix(1);
        }
        fill(field);
    }

    std::string_view text() const { return m_fits ? std::string_view(m_text.data(), m_size) : std::string_view(); }

private:
    static constexpr std::size_t kLongest = 64;

    void fill(std::string_view field)
    {
        while (!field.empty()) {
            if (field.starts_with("\xE2\x88\x92")) {
                put('-');
                field.remove_prefix(3);
            } else if (const std::size_t length = groupMarkAt(field)) {
                if (m_size > 0 && isDigit(m_text[m_size - 1]))
                    put('_');
                field.remove_prefix(length);
            } else {
                put(field.front());
                field.remove_prefix(1);
            }
        }
    }
    void put(char character)
    {
        m_fits = m_fits && m_size < kLongest;
        if (m_fits)
            m_text[m_size++] = character;
    }

    std::array<char, kLongest> m_text{};
    std::size_t m_size = 0;
    bool m_fits = true;
};

/// A number in its parts: sign, digits with their marks, and what follows them.
struct Parts {
    std::string_view body;  ///< digits and marks
    std::string_view tail;  ///< the exponent
    std::size_t points = 0, commas = 0, blanks = 0;
    bool isNegative = false;
};

bool cut(std::string_view text, Parts& parts)
{
    parts.isNegative = text.starts_with('-');
    if (parts.isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    const std::size_t end = std::min(text.find_first_not_of("0123456789.,_"), text.size());
    parts.body = text.substr(0, end);
    parts.tail = text.substr(end);
    if (parts.body.empty() || !std::any_of(parts.body.begin(), parts.body.end(), isDigit))
        return false;
    parts.points = static_cast<std::size_t>(std::count(parts.body.begin(), parts.body.end(), '.'));
    parts.commas = static_cast<std::size_t>(std::count(parts.body.begin(), parts.body.end(), ','));
    parts.blanks = static_cast<std::size_t>(std::count(parts.body.begin(), parts.body.end(), '_'));
    const bool isExponent =
        parts.tail.empty() || ((parts.tail.front() | 0x20) == 'e' && parts.tail.size() > 1 &&
                               parts.tail.find_first_not_of("+-0123456789", 1) == std::string_view::npos);
    return isExponent;
}

/// "1.234.567" in groups that `mark` parts: one to three digits first, then always three.
bool isGrouped(std::string_view digits, char mark)
{
    const std::size_t first = digits.find(mark);
    if (first == 0 || first > 3 || first == std::string_view::npos)
        return false;
    for (std::size_t at = first; at < digits.size(); at += 4)
        if (digits[at] != mark || at + 4 > digits.size() || !std::all_of(&digits[at + 1], &digits[at] + 4, isDigit))
            return false;
    return std::all_of(digits.begin(), digits.begin() + static_cast<std::ptrdiff_t>(first), isDigit);
}

/// Whether "1.234" could be in groups: a number that begins with 0 has none.
bool mayBeGrouped(std::string_view digits, char mark)
{
    return isGrouped(digits, mark) && digits.front() != '0';
}

MarkIn markOf(const Parts& parts)
{
    if (parts.points > 0 && parts.commas > 0)
        return parts.body.rfind('.') > parts.body.rfind(',') ? MarkIn::Point : MarkIn::Comma;
    if (parts.points == 0 && parts.commas == 0)
        return MarkIn::Nothing;
    const bool hasPoint = parts.points > 0;
    const bool isPlain = parts.blanks > 0 || !parts.tail.empty();
    if (parts.points + parts.commas > 1)
        return hasPoint ? MarkIn::Comma : MarkIn::Point;
    if (!isPlain && mayBeGrouped(parts.body, hasPoint ? '.' : ','))
        return hasPoint ? MarkIn::EitherPoint : MarkIn::EitherComma;
    return hasPoint ? MarkIn::Point : MarkIn::Comma;
}

/// Reads the digits, with `decimal` as the decimal mark and groups, if any, parted by `group`.
bool readGrouped(const Parts& parts, char decimal, double& value)
{
    const char other = decimal == '.' ? ',' : '.';
    const std::size_t at = std::min(parts.body.find(decimal), parts.body.size());
    const std::string_view whole = parts.body.substr(0, at);
    const std::string_view fraction = at == parts.body.size() ? std::string_view() : parts.body.substr(at + 1);
    const bool isOther = whole.find(other) != std::string_view::npos;
    const char group = isOther ? other : '_';
    const bool hasGroups = whole.find(group) != std::string_view::npos;
    if ((hasGroups && !isGrouped(whole, group)) || !std::all_of(fraction.begin(), fraction.end(), isDigit))
        return false;
    std::string text(parts.isNegative ? "-" : "");
    for (const char character : whole) {
        if (character != group && !isDigit(character))
            return false;
        if (character != group)
            text += character;
    }
    if (!fraction.empty())
        (text += '.') += fraction;
    std::string_view tail = parts.tail;
    text += tail;
    return readWithPoint(text.data(), text.data() + text.size(), value);
}

/// A number in any form but the plainest.
FieldKind readDressed(std::string_view field, DecimalMark& mark, double& value)
{
    const PlainForm form(field);
    Parts parts;
    if (!cut(form.text(), parts))
        return FieldKind::Text;
    const MarkIn said = markOf(parts);
    DecimalMark needed = mark;
    if (said == MarkIn::Point || (said == MarkIn::EitherPoint && mark == DecimalMark::Unknown))
        needed = DecimalMark::Point;
    else if (said == MarkIn::Comma || (said == MarkIn::EitherComma && mark == DecimalMark::Unknown))
        needed = DecimalMark::Comma;
    if (mark != DecimalMark::Unknown && needed != mark)
        return FieldKind::Text;
    if (!readGrouped(parts, needed == DecimalMark::Comma ? ',' : '.', value))
        return FieldKind::Text;
    mark = needed;
    return FieldKind::Number;
}

}  // namespace

FieldKind readNumber(std::string_view field, DecimalMark& mark, double& value)
{
    std::string_view digits = field;
    if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-')
        digits.remove_prefix(1);  // from_chars knows no plus sign
    double read = 0;
    if (readWithPoint(digits.data(), digits.data() + digits.size(), read) && read == read) {
        const bool hasPoint = mark != DecimalMark::Point && digits.find('.') != std::string_view::npos;
        if (hasPoint && mark == DecimalMark::Comma)
            return readDressed(field, mark, value);
        if (hasPoint)
            mark = DecimalMark::Point;
        value = read;
        return FieldKind::Number;
    }
    if (isMissing(field))
        return FieldKind::Missing;
    const std::size_t comma = digits.find(',');
    if (mark == DecimalMark::Point || comma == std::string_view::npos || !readWithComma(digits, comma, value))
        return readDressed(field, mark, value);
    mark = DecimalMark::Comma;
    return FieldKind::Number;
}

MarkIn markIn(std::string_view field)
{
    const PlainForm form(field);
    Parts parts;
    double value = 0;
    if (!cut(form.text(), parts))
        return MarkIn::Nothing;
    const MarkIn said = markOf(parts);
    const bool isComma = said == MarkIn::Comma || said == MarkIn::EitherComma;
    return said != MarkIn::Nothing && readGrouped(parts, isComma ? ',' : '.', value) ? said : MarkIn::Nothing;
}

void DecimalEvidence::add(std::string_view field)
{
    switch (markIn(field)) {
    case MarkIn::Nothing: break;
    case MarkIn::Point: ++points; break;
    case MarkIn::Comma: ++commas; break;
    case MarkIn::EitherPoint: ++eitherPoints; break;
    case MarkIn::EitherComma: ++eitherCommas; break;
    }
}

void DecimalEvidence::add(const DecimalEvidence& other)
{
    points += other.points;
    commas += other.commas;
    eitherPoints += other.eitherPoints;
    eitherCommas += other.eitherCommas;
}

DecimalMark DecimalEvidence::proven() const
{
    if (points == commas)
        return points == 0                   ? DecimalMark::Unknown
               : eitherCommas > eitherPoints ? DecimalMark::Comma
                                             : DecimalMark::Point;
    return points > commas ? DecimalMark::Point : DecimalMark::Comma;
}

NumberWithUnit splitUnitOff(std::string_view field)
{
    std::size_t end = field.find_first_not_of("+-");
    while (end < field.size()) {
        const std::size_t blank = groupMarkAt(field.substr(end));
        if (isDigit(field[end]) || field[end] == '.' || field[end] == ',')
            ++end;
        else if (blank > 0 && end + blank < field.size() && isDigit(field[end + blank]))
            end += blank;
        else
            break;
    }
    if (end >= field.size() || !isDigit(field[end == 0 ? 0 : end - 1]))
        return {field, {}};
    std::string_view unit = field.substr(end);
    while (groupMarkAt(unit) > 0)
        unit.remove_prefix(groupMarkAt(unit));
    return {field.substr(0, end), unit};
}

bool isWholeNumber(std::string_view field)
{
    return !field.empty() && std::all_of(field.begin(), field.end(), isDigit);
}

}  // namespace plotix
