#include "hostapp/exchange/CellWords.h"

#include "hostapp/exchange/FoldedWord.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

// Both tables in lower case and in order, so that they can be searched. Letters beyond ASCII are one '?' a run of
// them: a cell may be UTF-8 or Latin-1.
constexpr std::array<std::string_view, 57> kGaps = {
    "-",
    "--",
    "---",
    "----",
    "-----",
    "bad",
    "bad input",
    "bad value",
    "calc fail",
    "comm fail",
    "defekt",
    "err",
    "error",
    "fail",
    "failed",
    "failure",
    "fault",
    "fehler",
    "fehlt",
    "inv",
    "invalid",
    "k. a.",
    "k.a.",
    "keine daten",
    "manquant",
    "missing",
    "mm",
    "n.a.",
    "n.d.",
    "n.v.",
    "n/a",
    "n/d",
    "n/v",
    "na",
    "nan",
    "nan()",
    "nd",
    "nil",
    "no data",
    "nodata",
    "none",
    "not available",
    "not connected",
    "null",
    "off-line",
    "offline",
    "ol",
    "out of range",
    "out of serv",
    "ovl",
    "st?rung",
    "stale",
    "unavailable",
    "undefined",
    "ung?ltig",
    "unknown",
    "unreliable",
};

struct StateRow {
    std::string_view word;
    double value;
};

constexpr std::array<StateRow, 54> kStates = {{
    {"activ?", 1},  {"active", 1},   {"actif", 1},       {"aktiv", 1},   {"alarm", 1},    {"an", 1},
    {"arr?t", 0},   {"auf", 1},      {"aus", 0},         {"belegt", 1},  {"closed", 0},   {"disabled", 0},
    {"ein", 1},     {"enabled", 1},  {"false", 0},       {"falsch", 0},  {"faux", 0},     {"ferm?", 0},
    {"ferm?e", 0},  {"frei", 0},     {"geschlossen", 0}, {"inactif", 0}, {"inactive", 0}, {"inaktiv", 0},
    {"ja", 1},      {"l?uft", 1},    {"marche", 1},      {"nein", 0},    {"no", 0},       {"non", 0},
    {"normal", 0},  {"occupied", 1}, {"off", 0},         {"offen", 1},   {"on", 1},       {"open", 1},
    {"oui", 1},     {"ouvert", 1},   {"ouverte", 1},     {"run", 1},     {"running", 1},  {"start", 1},
    {"started", 1}, {"steht", 0},    {"stop", 0},        {"stopped", 0}, {"true", 1},     {"unoccupied", 0},
    {"vacant", 0},  {"vrai", 1},     {"wahr", 1},        {"yes", 1},     {"zu", 0},       {"opened", 1},
}};

/// "#NV", "#N/A", "#DIV/0!", "#####": a spreadsheet's error, or a number too wide for its column.
bool isSpreadsheetError(std::string_view field)
{
    return field.size() > 1 && field[0] == '#' && (field[1] == '#' || (field[1] >= 'A' && field[1] <= 'Z'));
}

/// "---", "***", "–", "?", "-.-": marks only.
bool isMarksOnly(std::string_view field)
{
    const FoldedWord folded(field);
    const std::string_view text = folded.text();
    return !text.empty() && text.find_first_not_of("-*?_.: ") == std::string_view::npos;
}

}  // namespace

bool isMissing(std::string_view field)
{
    if (field.empty() || isSpreadsheetError(field))
        return true;
    if (field.front() >= '0' && field.front() <= '9')
        return false;
    return isMarksOnly(field) || std::binary_search(kGaps.begin(), kGaps.end(), FoldedWord(field).text());
}

std::optional<double> stateOf(std::string_view field)
{
    const FoldedWord folded(field);
    const std::string_view word = folded.text();
    const auto row =
        std::find_if(kStates.begin(), kStates.end(), [word](const StateRow& state) { return state.word == word; });
    return row == kStates.end() ? std::nullopt : std::optional(row->value);
}

}  // namespace plotix
