#include "hostapp/site/WorthShowing.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <optional>

namespace plotix {

namespace {

constexpr std::size_t kMostShown = 5;
constexpr std::size_t kMostLanes = 3;
constexpr double kLeastShare = 0.1;       // of the height of all lines that a line must take
constexpr double kOrderOfMagnitude = 10;  // between the largest values of two lines

struct Candidate {
    KTVPropertyPtr property;
    double lowest = 0, highest = 0;

    bool isState() const { return lowest >= 0 && highest <= 1 && property->unit().isEmpty(); }
    bool isFlat() const { return !(highest > lowest); }
};
using Candidates = std::vector<Candidate>;

/// By its name: exports often have the parts of the time in columns of their own.
bool countsTimeOrRows(const KTVProperty& property)
{
    static const QRegularExpression words(
        QStringLiteral("^(?:year|month|day|hour|minute|second|week|weekday|day of (?:week|month|year)|quarter|doy|"
                       "yy|yyyy|mm|dd|hh|yr|mo|hr|jahr|monat|tag|stunde|woche|wochentag|kw nr|ann.e|mois|jour|heure|"
                       "#|no|nr|number|nummer|index|idx|row|row ?(?:no|nr|number|id)|record|recno|rn|id|lfd\\.? ?nr|"
                       "station|station[_ ]?id|.*[_ ]id)\\.?$"),
        QRegularExpression::CaseInsensitiveOption);
    return property.unit().isEmpty() && words.match(property.name()).hasMatch();
}

/// By its name: an angle jumps between 0 and 360, and its line covers all others.
bool isDirection(const KTVProperty& property)
{
    static const QRegularExpression words(
        QStringLiteral("(?:^|[ _.-])(?:dir|wdir|wd|direction|heading|bearing|azimuth|richtung|azimut)(?:$|[ _.-])|"
                       "windrichtung"),
        QRegularExpression::CaseInsensitiveOption);
    return words.match(property.name()).hasMatch();
}

Candidates candidatesOf(const KTVPropertyList& properties, const std::vector<ValueExtent>& extents)
{
    QHash<QString, const ValueExtent*> byKey;
    for (const ValueExtent& extent : extents)
        if (!byKey.contains(extent.propertyName))
            byKey.insert(extent.propertyName, &extent);
    Candidates candidates;
    for (const KTVPropertyPtr& property : properties)
        if (const ValueExtent* extent = byKey.value(property->propertyName()))
            candidates.push_back({property, extent->lowest, extent->highest});
    return candidates;
}

/// Without those of which that is true, unless it is true of all.
template <class Test>
Candidates without(const Candidates& all, Test isUnwanted)
{
    Candidates wanted;
    std::remove_copy_if(all.begin(), all.end(), std::back_inserter(wanted), isUnwanted);
    return wanted.empty() ? all : wanted;
}

const Candidate& leaderOf(const Candidates& candidates)
{
    for (const bool mustHaveUnit : {true, false})
        for (const Candidate& candidate : candidates)
            if (mustHaveUnit ? !candidate.property->unit().isEmpty() : !candidate.isState())
                return candidate;
    return candidates.front();
}

double largestOf(const Candidate& candidate)
{
    return std::max(std::abs(candidate.lowest), std::abs(candidate.highest));
}

bool areOfOneMagnitude(const Candidate& one, const Candidate& other)
{
    const auto [smaller, larger] = std::minmax({largestOf(one), largestOf(other)});
    return larger < kOrderOfMagnitude * smaller || larger == smaller;
}

bool goesWith(const Candidate& leader, const Candidate& other)
{
    if (!leader.property->unit().isEmpty() || !other.property->unit().isEmpty())
        return leader.property->unit() == other.property->unit();
    return leader.isState() == other.isState() && (leader.isState() || areOfOneMagnitude(leader, other));
}

/// Whether every line keeps its share of the height when the other one joins.
bool leavesRoom(const Candidates& shown, const Candidate& other)
{
    Candidates all = shown;
    all.push_back(other);
    double lowest = other.lowest, highest = other.highest;
    for (const Candidate& candidate : shown) {
        lowest = std::min(lowest, candidate.lowest);
        highest = std::max(highest, candidate.highest);
    }
    return std::all_of(all.begin(), all.end(), [&](const Candidate& candidate) {
        return candidate.isFlat() || candidate.highest - candidate.lowest >= kLeastShare * (highest - lowest);
    });
}

/// The leader and, up to `most`, those that go with it.
Candidates laneOf(const Candidate& leader, const Candidates& candidates, std::size_t most)
{
    Candidates lane{leader};
    for (const Candidate& candidate : candidates)
        if (candidate.property != leader.property && lane.size() < most && goesWith(leader, candidate) &&
            leavesRoom(lane, candidate))
            lane.push_back(candidate);
    return lane;
}

/// Lanes of other units come after the first one's lines, as far as there are lanes and lines left.
Candidates inLanes(const Candidates& candidates)
{
    Candidates shown = laneOf(leaderOf(candidates), candidates, kMostShown);
    QStringList units{shown.front().property->unit()};
    for (const Candidate& candidate : candidates) {
        const QString unit = candidate.property->unit();
        if (unit.isEmpty() || units.contains(unit) || units.size() >= static_cast<qsizetype>(kMostLanes) ||
            shown.size() >= kMostShown)
            continue;
        units << unit;
        const Candidates lane = laneOf(candidate, candidates, kMostShown - shown.size());
        shown.insert(shown.end(), lane.begin(), lane.end());
    }
    return shown;
}

}  // namespace

KTVPropertyList worthShowing(const KTVPropertyList& properties, const std::vector<ValueExtent>& extents)
{
    Candidates candidates = candidatesOf(properties, extents);
    if (candidates.empty())
        return properties;
    candidates = without(candidates, [](const Candidate& candidate) { return countsTimeOrRows(*candidate.property); });
    candidates = without(candidates, [](const Candidate& candidate) { return isDirection(*candidate.property); });
    candidates = without(candidates, [](const Candidate& candidate) { return candidate.isFlat(); });
    const Candidates shown = inLanes(candidates);
    KTVPropertyList chosen;
    for (const KTVPropertyPtr& property : properties)  // in the agent's order
        if (std::any_of(shown.begin(), shown.end(),
                        [&property](const Candidate& candidate) { return candidate.property == property; }))
            chosen.push_back(property);
    return chosen;
}

}  // namespace plotix
