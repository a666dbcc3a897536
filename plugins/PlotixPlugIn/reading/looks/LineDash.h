#pragma once

#include <QtCore/QString>

#include <optional>
#include <vector>

/// The ten patterns that a line may be dashed by. Values; any thread.
namespace plotix {

enum class LineDash {
    Solid,
    Dashed,
    Dotted,
    DashDot,
    LongDashes,
    DashDotDot,
    ShortDashes,
    LongShort,
    WideDots,
    TwoDashesDot
};
inline constexpr int kLineDashCount = 10;

/// Lengths that are drawn and left out in turn along a line of this width, both in points; none for a solid one.
std::vector<double> dashLengths(LineDash dash, double width);

/// The name a pattern is archived by. Stored: never changes.
QString nameOfDash(LineDash dash);
std::optional<LineDash> dashNamed(const QString& name);

/// What people call it, translated.
QString titleOfDash(LineDash dash);

}  // namespace plotix
