#pragma once

#include "plugins/PlotixPlugIn/reading/looks/LineDash.h"

#include <QtGui/QColor>

#include <cstddef>
#include <vector>

/// Which colours and dashes tell the lines of a trend apart. Pure; any thread.
namespace plotix {

struct LineMark {
    QColor color;
    LineDash dash = LineDash::Solid;
};

/// The mark of the `number`-th line, counted from 0: ten colours that colour-blind eyes tell apart, each with a pattern
/// of its own. From the eleventh line on the colours come again with other patterns; a hundred lines are all different.
/// Of the first twenty, two of one pattern differ in lightness, so that black and white tell them apart too.
LineMark distinctLine(std::size_t number);

/// Whether two colours would be taken for one another.
bool lookAlike(const QColor& one, const QColor& other);

/// A pattern for each line, in order: solid, but where lines of like colour come before, the first pattern that none of
/// them has. Beyond ten lines of like colour patterns come again. An invalid colour is alike no other.
std::vector<LineDash> dashesWhereAlike(const std::vector<QColor>& colors);

}  // namespace plotix
