#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"

#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/AmendedRecords.h"
#include "plugins/PlotixPlugIn/reading/values/LimitLook.h"
#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include <algorithm>
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

/// By how much the line now reads more than the one that stands beside it; empty where either has nothing to say.
QString differenceText(const std::vector<TrendLine>& lines, const TrendLine& compared, double time, double reach,
                       const ValueTexts& texts)
{
    const auto present = std::find_if(
        lines.begin(), lines.end(), [&](const TrendLine& each) { return each.line.key == compared.line.comparedKey; });
    if (present == lines.end())
        return {};
    const OptionalLineRecord now = readingAt(present->records, time, reach).record;
    const OptionalLineRecord then = readingAt(compared.records, time, reach).record;
    if (!now || !then)
        return {};
    //: Behind an earlier value: by how much the present one is more.
    return localizedText(QT_TRANSLATE_NOOP("Plotix", "now %1"))
        .arg(texts.difference(then->value, now->value, present->line.unitSymbol));
}

/// However much time a point shows: a value of another day is never passed off as that of the time asked for.
bool isFar(const LineRecords& records, double distance, double perPoint)
{
    const double length = std::abs(distance);
    return length > records.usualDistance || length > kFarInPicture * perPoint;
}

/// That the record there came late or was corrected, and when.
QString amendmentText(const TrendLine& line, double time, const ValueTexts& texts)
{
    const auto amendment = amendmentAt(line.amendments, time);
    if (!amendment)
        return {};
    const QString text = amendment->kind == KTVAmendment::Kind::Late
                             ? localizedText(QT_TRANSLATE_NOOP("Plotix", "arrived late, %1"))
                             : localizedText(QT_TRANSLATE_NOOP("Plotix", "corrected %1"));
    constexpr double kMinute = 60;
    return text.arg(texts.moment(cameAt(*amendment, time), kMinute));
}

/// What is said behind a value: that it is no valid one, what it differs by, that it came late, and how far away it is.
QString noteOf(const std::vector<TrendLine>& lines, const TrendLine& each, const LineReading& reading, double time,
               double perPoint, const ValueTexts& texts)
{
    QStringList notes;
    if (isNotValidAt(each.records, time)) {
        notes << localizedText(QT_TRANSLATE_NOOP("Plotix", "recorded, not valid")) << amendmentText(each, time, texts);
        notes.removeAll(QString());
        return notes.join(QStringLiteral(", "));
    }
    notes << differenceText(lines, each, time, kReach * perPoint, texts);
    if (reading.record)
        notes << amendmentText(each, reading.record->time, texts);
    if (reading.record && isFar(each.records, reading.distance, perPoint))
        notes << distanceText(reading.distance);
    notes.removeAll(QString());
    return notes.join(QStringLiteral(", "));
}

/// Which limit the value is beyond, before how far away it is.
void noteLimit(ReadoutRow& row, const TrendLine& line, double value, const ValueTexts& texts, bool onDark)
{
    const auto limit = limitPassed(line.limits, value);
    if (!limit)
        return;
    const QString text = (limit->side == KTVLimit::Side::Above ? localizedText(QT_TRANSLATE_NOOP("Plotix", "above %1"))
                                                               : localizedText(QT_TRANSLATE_NOOP("Plotix", "below %1")))
                             .arg(limitText(*limit, texts, line.line.unitSymbol));
    row.note = row.note.isEmpty() ? text : text + QStringLiteral(", ") + row.note;
    row.noteColor = limitColor(limit->severity, onDark);
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
        row.note = noteOf(lines, each, reading, time, perPoint, texts);
        if (reading.record)
            noteLimit(row, each, reading.record->value, texts, isDark(geometry.graph));
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
