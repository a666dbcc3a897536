#include "plugins/PlotixPlugIn/reading/OutsideLines.h"

#include "plugins/PlotixPlugIn/logic/RangePolicy.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr double kRounding = 1e-6;  // of a length, as ranges are narrowed on their way

}  // namespace

OutsideLines outsideLines(const std::vector<LineReach>& lines, const CPTPlotRange& values)
{
    const bool isLongest = values.length >= kLongestValueSpan * (1 - kRounding);
    const bool isShortest = values.length <= kShortestSpan * (1 + kRounding);
    const double tolerance = values.length * kRounding;
    const auto isOutside = [&](const LineReach& line) {
        return line.lowest < values.minLimit() - tolerance || line.highest > values.maxLimit() + tolerance;
    };
    const auto isFlat = [&](const LineReach& line) {
        return line.highest > line.lowest && line.highest - line.lowest < kShortestSpan * (1 - kRounding);
    };
    OutsideLines told;
    for (const LineReach& line : lines)
        if ((isLongest && isOutside(line)) || (isShortest && isFlat(line)))
            told.names << line.name;
    if (!told.names.isEmpty())
        told.kind = isLongest ? OutsideLines::Kind::Outside : OutsideLines::Kind::Flat;
    return told;
}

QString shortList(const QStringList& names)
{
    constexpr qsizetype kMost = 3;
    const QString list = names.mid(0, kMost).join(QStringLiteral(", "));
    return names.size() > kMost ? list + QStringLiteral(" +%1").arg(names.size() - kMost) : list;
}

}  // namespace plotix
