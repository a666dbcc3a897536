#include "hostapp/exchange/TimeWords.h"

#include <algorithm>
#include <array>
#include <span>

namespace plotix {

namespace {

struct WordRow {
    std::string_view word;  ///< in capitals; '?' is a run of letters beyond ASCII
    int value;
};

constexpr std::array<WordRow, 58> kMonths = {{
    {"JAN", 1},     {"JANUARY", 1},  {"JANUAR", 1},    {"J?N", 1},       {"J?NNER", 1},    {"JANV", 1},
    {"JANVIER", 1}, {"FEB", 2},      {"FEBRUARY", 2},  {"FEBRUAR", 2},   {"F?V", 2},       {"F?VR", 2},
    {"F?VRIER", 2}, {"FEVR", 2},     {"FEV", 2},       {"FEVRIER", 2},   {"MAR", 3},       {"MARCH", 3},
    {"M?RZ", 3},    {"M?R", 3},      {"MRZ", 3},       {"MAERZ", 3},     {"MARS", 3},      {"APR", 4},
    {"APRIL", 4},   {"AVR", 4},      {"AVRIL", 4},     {"MAY", 5},       {"MAI", 5},       {"JUN", 6},
    {"JUNE", 6},    {"JUNI", 6},     {"JUIN", 6},      {"JUL", 7},       {"JULY", 7},      {"JULI", 7},
    {"JUIL", 7},    {"JUILLET", 7},  {"AUG", 8},       {"AUGUST", 8},    {"AO?T", 8},      {"AOUT", 8},
    {"SEP", 9},     {"SEPT", 9},     {"SEPTEMBER", 9}, {"SEPTEMBRE", 9}, {"OCT", 10},      {"OCTOBER", 10},
    {"OKT", 10},    {"OKTOBER", 10}, {"OCTOBRE", 10},  {"NOV", 11},      {"NOVEMBER", 11}, {"NOVEMBRE", 11},
    {"DEC", 12},    {"DEZ", 12},     {"D?C", 12},      {"DEZEMBER", 12},
}};
constexpr std::array<WordRow, 3> kMoreMonths = {{{"DECEMBER", 12}, {"D?CEMBRE", 12}, {"DECEMBRE", 12}}};

constexpr std::array<WordRow, 44> kWeekdays = {{
    {"MON", 1},      {"MONDAY", 1},   {"MO", 1},       {"MONTAG", 1},     {"LUN", 1},  {"LUNDI", 1},
    {"TUE", 2},      {"TUES", 2},     {"TUESDAY", 2},  {"DI", 2},         {"DIE", 2},  {"DIENSTAG", 2},
    {"MAR", 2},      {"MARDI", 2},    {"WED", 3},      {"WEDNESDAY", 3},  {"MI", 3},   {"MIT", 3},
    {"MITTWOCH", 3}, {"MER", 3},      {"MERCREDI", 3}, {"THU", 4},        {"THUR", 4}, {"THURS", 4},
    {"THURSDAY", 4}, {"DO", 4},       {"DON", 4},      {"DONNERSTAG", 4}, {"JEU", 4},  {"JEUDI", 4},
    {"FRI", 5},      {"FRIDAY", 5},   {"FR", 5},       {"FREITAG", 5},    {"VEN", 5},  {"VENDREDI", 5},
    {"SAT", 6},      {"SATURDAY", 6}, {"SA", 6},       {"SAMSTAG", 6},    {"SAM", 6},  {"SUN", 7},
    {"SO", 7},       {"SONNTAG", 7},
}};
constexpr std::array<WordRow, 4> kMoreWeekdays = {{{"SUNDAY", 7}, {"DIM", 7}, {"DIMANCHE", 7}, {"SAMEDI", 6}}};

constexpr int kHour = 3600;
constexpr int kHalf = 1800;
constexpr std::array<WordRow, 41> kZones = {{
    {"Z", 0},
    {"UTC", 0},
    {"GMT", 0},
    {"UT", 0},
    {"WET", 0},
    {"WEZ", 0},
    {"WEST", kHour},
    {"WESZ", kHour},
    {"BST", kHour},
    {"CET", kHour},
    {"MEZ", kHour},
    {"CEST", 2 * kHour},
    {"MESZ", 2 * kHour},
    {"EET", 2 * kHour},
    {"OEZ", 2 * kHour},
    {"EEST", 3 * kHour},
    {"OESZ", 3 * kHour},
    {"MSK", 3 * kHour},
    {"EST", -5 * kHour},
    {"EDT", -4 * kHour},
    {"CST", -6 * kHour},
    {"CDT", -5 * kHour},
    {"MST", -7 * kHour},
    {"MDT", -6 * kHour},
    {"PST", -8 * kHour},
    {"PDT", -7 * kHour},
    {"AKST", -9 * kHour},
    {"AKDT", -8 * kHour},
    {"HST", -10 * kHour},
    {"AST", -4 * kHour},
    {"ADT", -3 * kHour},
    {"JST", 9 * kHour},
    {"KST", 9 * kHour},
    {"SGT", 8 * kHour},
    {"AWST", 8 * kHour},
    {"ACST", 9 * kHour + kHalf},
    {"ACDT", 10 * kHour + kHalf},
    {"AEST", 10 * kHour},
    {"AEDT", 11 * kHour},
    {"NZST", 12 * kHour},
    {"NZDT", 13 * kHour},
}};

bool isLetter(char character)
{
    const char lower = static_cast<char>(character | 0x20);
    return (lower >= 'a' && lower <= 'z') || static_cast<unsigned char>(character) >= 0x80;
}

/// The word at the front as the tables write words.
struct Word {
    explicit Word(std::string_view text)
    {
        while (length < text.size() && isLetter(text[length])) {
            const bool isBeyond = static_cast<unsigned char>(text[length]) >= 0x80;
            const char letter = isBeyond ? '?' : static_cast<char>(text[length] & ~0x20);
            if (!(isBeyond && size > 0 && letters[size - 1] == '?') && size < letters.size())
                letters[size++] = letter;
            ++length;
        }
    }
    std::string_view text() const { return {letters.data(), size}; }

    std::array<char, 16> letters{};
    std::size_t size = 0;
    std::size_t length = 0;  // in the text
};

std::optional<LeadingWord> find(std::string_view text, std::span<const WordRow> rows, bool mayHaveDot)
{
    const Word word(text);
    for (const WordRow& row : rows)
        if (row.word == word.text()) {
            const bool hasDot = mayHaveDot && word.length < text.size() && text[word.length] == '.';
            return LeadingWord{word.length + (hasDot ? 1 : 0), row.value};
        }
    return {};
}

}  // namespace

std::optional<LeadingWord> monthAt(std::string_view text)
{
    const std::optional<LeadingWord> month = find(text, kMonths, true);
    return month ? month : find(text, kMoreMonths, true);
}

std::optional<LeadingWord> weekdayAt(std::string_view text)
{
    const std::optional<LeadingWord> day = find(text, kWeekdays, true);
    return day ? day : find(text, kMoreWeekdays, true);
}

std::optional<LeadingWord> zoneAt(std::string_view text)
{
    return find(text, kZones, false);
}

}  // namespace plotix
