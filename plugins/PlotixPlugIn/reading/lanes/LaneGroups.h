#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>
#include <optional>
#include <vector>

/// Which lines share a lane. Values and free functions; any thread.
namespace plotix {

enum class ArrangementKind { OneScale, LanePerUnit, LanePerProperty, Automatic };

/// "one-scale", "lane-per-unit", "lane-per-property", "automatic". Stored, and typed on the command line: never change.
QString textOf(ArrangementKind kind);
std::optional<ArrangementKind> arrangementNamed(const QString& text);

/// A line as arranging sees it. `lowest` > `highest`: it has no values.
struct ArrangedLine {
    QString key;
    QString name;
    QString unitSymbol;
    double lowest = 0, highest = 0;
    QString besideKey = {};  ///< of a line that goes wherever another one goes: that one's key
};

struct LaneGroup {
    QString key;                     ///< names the lane where its settings are kept
    std::vector<std::size_t> lines;  ///< in the order of the lines
};

/// The lanes from top to bottom, in the order in which their first lines come; none for one scale. Lanes by unit hold
/// the lines of one unit symbol. Automatic: none while one scale serves, else lanes by unit, in which a line stands by
/// itself, with those of its own magnitude, where the others would press it flat. A line that stands beside another one
/// comes after it in its lane, and widens its range where lanes are chosen by ranges.
std::vector<LaneGroup> laneGroups(const std::vector<ArrangedLine>& lines, ArrangementKind kind);

/// The lines that stand beside no other, with the range of all that stand beside them.
std::vector<ArrangedLine> leadingLines(const std::vector<ArrangedLine>& lines);

/// Whether one scale shows all lines: they have one unit, their magnitudes lie within a factor of ten, and the limits
/// of the one scale, a span of 0.1 … 5,000, let all values be seen.
bool doesOneScaleServe(const std::vector<ArrangedLine>& lines);

/// What the lines of a lane are called together: the name of the only one, the words at the end or the beginning that
/// all names share ("temperature" of "Supply temperature" and "Return temperature"), with a capital; empty when they
/// share none.
QString commonName(const QStringList& names);

}  // namespace plotix
