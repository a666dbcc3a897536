#include "plugins/PlotixPlugIn/FiguredRow.h"

#include "base/SinglePrecision.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <limits>

namespace {

constexpr int kAverageRounding = 10;  // as in a row of everything fetched

}  // namespace

InfoTableRow figuredRow(const InfoTableRow& row, const plotix::TableFigures* figures)
{
    InfoTableRow shown = row;
    const auto own = figures ? figures->own(row.propertyName) : std::nullopt;
    if (!own)
        return shown;
    constexpr qint64 kMostPoints = std::numeric_limits<qint32>::max();
    shown.minimum = plotix::singlePrecision(own->minimum);
    shown.maximum = plotix::singlePrecision(own->maximum);
    shown.average = plotix::singlePrecision(KTVConverter::roundValue(own->average, kAverageRounding));
    shown.points = static_cast<qint32>(std::min(own->points, kMostPoints));
    return shown;
}
