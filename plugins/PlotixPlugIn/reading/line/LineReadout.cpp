#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include <cmath>

namespace plotix {

namespace {

constexpr double kReach = 2;          // points: a record so near counts as being there
constexpr double kFarInPicture = 24;  // points

QString distanceText(double distance)
{
    const QString text = distance > 0 ? localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 before"))
                                      : localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 later"));
    return text.arg(durationText(distance));
}

bool isFar(const LineRecords& records, double distance, double perPoint)
{
    const double length = std::abs(distance);
    return length > kReach * perPoint && (length > records.usualDistance || length > kFarInPicture * perPoint);
}

}  // namespace

double secondsPerPoint(const plotkit::GraphGeometry& geometry)
{
    return plotkit::valuePerUnit(geometry.xMappingOf(geometry.graph.plotSpace()));
}

ReadAt readAt(const std::vector<TrendLine>& lines, double time, const plotkit::GraphGeometry& geometry,
              const ValueTexts& texts, const QString& chosen)
{
    const double perPoint = secondsPerPoint(geometry);
    ReadAt read;
    read.readout.title = texts.moment(time, perPoint);
    for (const TrendLine& each : lines) {
        const LineReading reading = readingAt(each.records, time, kReach * perPoint);
        ReadoutRow row{.color = each.line.color, .name = each.line.name, .value = {}, .note = {}};
        row.isChosen = each.line.key == chosen;
        row.isFaint = !reading.record;
        row.value = reading.record ? texts.value(reading.record->value, each.line.unitSymbol)
                                   : localizedText(QT_TRANSLATE_NOOP("Plotix", "not recorded"));
        if (isNotValidAt(each.records, time))
            row.note = localizedText(QT_TRANSLATE_NOOP("Plotix", "recorded, not valid"));
        else if (reading.record && isFar(each.records, reading.distance, perPoint))
            row.note = distanceText(reading.distance);
        read.readout.rows.push_back(std::move(row));
        if (!reading.record)
            continue;
        const CPTXYPlotSpace& space = geometry.graph.plotSpaceOf(*each.plot);
        const QPointF place =
            geometry.pointForValue(space, {reading.record->time, space.yOfValue(reading.record->value)});
        if (geometry.areaOf(space).adjusted(-1, -1, 1, 1).contains(place))
            read.dots.push_back({each.line.color, place});
    }
    return read;
}

double timeNear(const std::vector<TrendLine>& lines, double x, const plotkit::GraphGeometry& geometry)
{
    const double time = plotkit::valueForCoordinate(geometry.xMappingOf(geometry.graph.plotSpace()), x);
    return timeOfRecordNear(lines, time, kReach * secondsPerPoint(geometry));
}

}  // namespace plotix
