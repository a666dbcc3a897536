#include "plugins/PlotixPlugIn/reading/lanes/LaneGroups.h"

#include "plugins/PlotixPlugIn/logic/RangePolicy.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace plotix {

namespace {

constexpr double kOneMagnitude = 10;  // lines within this factor are read on one scale
constexpr double kPressedFlat = 30;   // beyond this factor the smaller line is a flat one
constexpr std::array<std::pair<ArrangementKind, const char*>, 4> kKinds{
    std::pair{ArrangementKind::OneScale, "one-scale"}, std::pair{ArrangementKind::LanePerUnit, "lane-per-unit"},
    std::pair{ArrangementKind::LanePerProperty, "lane-per-property"},
    std::pair{ArrangementKind::Automatic, "automatic"}};

/// The greatest distance from zero; 0 for a line of zeros or without values.
double magnitudeOf(const ArrangedLine& line)
{
    return line.lowest <= line.highest ? std::max(std::abs(line.lowest), std::abs(line.highest)) : 0;
}

bool areAlike(double one, double other, double factor)
{
    return one == 0 || other == 0 || std::max(one, other) <= factor * std::min(one, other);
}

/// Whether neither of two lines presses the other flat. Lines without a unit are mostly of different things: these must
/// be of one magnitude, and move by as much.
bool standBesideEachOther(const ArrangedLine& one, const ArrangedLine& other)
{
    const auto range = [](const ArrangedLine& line) { return std::max(0.0, line.highest - line.lowest); };
    const double factor = one.unitSymbol.isEmpty() ? kOneMagnitude : kPressedFlat;
    return areAlike(magnitudeOf(one), magnitudeOf(other), factor) &&
           (!one.unitSymbol.isEmpty() || areAlike(range(one), range(other), kPressedFlat));
}

/// Lines of one unit go together; `mayShare` says of two of them whether they may stand beside each other.
template <class MayShare>
std::vector<LaneGroup> groupedByUnit(const std::vector<ArrangedLine>& lines, const MayShare& mayShare)
{
    std::vector<LaneGroup> groups;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const ArrangedLine& line = lines[index];
        const auto found = std::find_if(groups.begin(), groups.end(), [&](const LaneGroup& group) {
            return lines[group.lines.front()].unitSymbol == line.unitSymbol &&
                   std::all_of(group.lines.begin(), group.lines.end(),
                               [&](std::size_t member) { return mayShare(lines[member], line); });
        });
        if (found != groups.end()) {
            found->lines.push_back(index);
            continue;
        }
        const bool isFirstOfUnit = std::none_of(groups.begin(), groups.end(), [&](const LaneGroup& group) {
            return lines[group.lines.front()].unitSymbol == line.unitSymbol;
        });
        const QString unit = QStringLiteral("unit:") + line.unitSymbol;
        groups.push_back({isFirstOfUnit ? unit : unit + QStringLiteral("/") + line.key, {index}});
    }
    return groups;
}

std::vector<LaneGroup> groupsOf(const std::vector<ArrangedLine>& lines, ArrangementKind kind)
{
    std::vector<LaneGroup> groups;
    switch (kind) {
    case ArrangementKind::OneScale: break;
    case ArrangementKind::LanePerProperty:
        for (std::size_t index = 0; index < lines.size(); ++index)
            groups.push_back({QStringLiteral("line:") + lines[index].key, {index}});
        break;
    case ArrangementKind::LanePerUnit:
        groups = groupedByUnit(lines, [](const ArrangedLine&, const ArrangedLine&) { return true; });
        break;
    case ArrangementKind::Automatic:
        if (!doesOneScaleServe(lines))
            groups = groupedByUnit(lines, standBesideEachOther);
        break;
    }
    return groups;
}

QStringList wordsOf(const QString& name)
{
    static const QRegularExpression gaps(QStringLiteral("[\\s_]+"));
    return name.split(gaps, Qt::SkipEmptyParts);
}

/// How many words two names share, counted from their ends (or beginnings).
qsizetype sharedWords(const QStringList& one, const QStringList& other, bool fromEnd)
{
    const qsizetype most = std::min(one.size(), other.size());
    qsizetype shared = 0;
    const auto word = [&](const QStringList& words) {
        return fromEnd ? words[words.size() - 1 - shared] : words[shared];
    };
    while (shared < most && word(one).compare(word(other), Qt::CaseInsensitive) == 0)
        ++shared;
    return shared;
}

}  // namespace

QString textOf(ArrangementKind kind)
{
    for (const auto& [each, text] : kKinds)
        if (each == kind)
            return QString::fromLatin1(text);
    return {};
}

std::optional<ArrangementKind> arrangementNamed(const QString& text)
{
    for (const auto& [kind, name] : kKinds)
        if (text == QLatin1String(name))
            return kind;
    return std::nullopt;
}

std::vector<LaneGroup> laneGroups(const std::vector<ArrangedLine>& lines, ArrangementKind kind)
{
    const std::vector<ArrangedLine> leaders = leadingLines(lines);
    std::vector<LaneGroup> groups = groupsOf(leaders, kind);
    for (LaneGroup& group : groups) {
        std::vector<std::size_t> all;
        for (const std::size_t leader : group.lines)
            for (std::size_t index = 0; index < lines.size(); ++index)
                if (lines[index].key == leaders[leader].key || lines[index].besideKey == leaders[leader].key)
                    all.push_back(index);
        group.lines = std::move(all);
    }
    return groups;
}

std::vector<ArrangedLine> leadingLines(const std::vector<ArrangedLine>& lines)
{
    std::vector<ArrangedLine> leaders;
    for (const ArrangedLine& line : lines) {
        const auto leader = std::find_if(leaders.begin(), leaders.end(),
                                         [&](const ArrangedLine& each) { return each.key == line.besideKey; });
        if (leader == leaders.end()) {
            leaders.push_back(line);
        } else if (line.lowest <= line.highest) {
            const bool hasRange = leader->lowest <= leader->highest;
            leader->lowest = hasRange ? std::min(leader->lowest, line.lowest) : line.lowest;
            leader->highest = hasRange ? std::max(leader->highest, line.highest) : line.highest;
        }
    }
    return leaders;
}

bool doesOneScaleServe(const std::vector<ArrangedLine>& lines)
{
    double least = 0, greatest = 0, lowest = 0, highest = 0;
    bool hasValues = false;
    for (const ArrangedLine& line : lines) {
        if (line.unitSymbol != lines.front().unitSymbol)
            return false;
        if (!(line.lowest <= line.highest))
            continue;
        lowest = hasValues ? std::min(lowest, line.lowest) : line.lowest;
        highest = hasValues ? std::max(highest, line.highest) : line.highest;
        hasValues = true;
        const double magnitude = magnitudeOf(line);
        greatest = std::max(greatest, magnitude);
        if (magnitude > 0)
            least = least > 0 ? std::min(least, magnitude) : magnitude;
    }
    const double span = highest - lowest;
    const bool isSeen = span == 0 || (span >= kShortestSpan && span <= kLongestValueSpan);
    return areAlike(least, greatest, kOneMagnitude) && isSeen;
}

QString commonName(const QStringList& names)
{
    if (names.isEmpty())
        return {};
    if (names.size() == 1)
        return names.front();
    const QStringList first = wordsOf(names.front());
    for (const bool fromEnd : {true, false}) {
        qsizetype shared = first.size();
        for (const QString& name : names)
            shared = std::min(shared, sharedWords(first, wordsOf(name), fromEnd));
        if (shared == 0)
            continue;
        QString common = (fromEnd ? first.last(shared) : first.first(shared)).join(u' ');
        common[0] = common[0].toUpper();
        return common;
    }
    return {};
}

}  // namespace plotix
