#include "plugins/PlotixPlugIn/reading/line/LineReadout.h"

#include "plugins/PlotixPlugIn/reading/trend/OverlayLook.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/LimitLook.h"
#include "plugins/PlotixPlugIn/reading/values/MissingRecords.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr double kReach = 2;          // points: a record so near counts as being there
constexpr double kFarInPicture = 24;  // points
constexpr double kNear = 60;          // seconds: times are told to the minute

QString distanceText(double distance)
{
    const QString text = distance > 0 ? localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 before"))
                                      : localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 later"));
    return text.arg(durationText(distance));
}

/// By how much a line reads more than one that it is compared with; empty where either has nothing to say.
QString differenceText(const TrendLine& present, const TrendLine& compared, double time, double reach,
                       const ValueTexts& texts)
{
    const OptionalLineRecord now = readingAt(present.records, time, reach).record;
    const OptionalLineRecord then = readingAt(compared.records, time, reach).record;
    return now && then ? texts.difference(then->value, now->value, present.line.unitSymbol) : QString();
}

/// The same of all that it is compared with.
QStringList differenceTexts(const std::vector<TrendLine>& lines, const TrendLine& present, double time, double reach,
                            const ValueTexts& texts)
{
    QStringList differences;
    for (const TrendLine& compared : lines) {
        if (!compared.line.isCompared() || compared.line.comparedKey != present.line.key)
            continue;
        const QString difference = differenceText(present, compared, time, reach, texts);
        if (!difference.isEmpty())
            //: Behind a value: %1 is by how much it is more, such as "+3.3 K", %2 than when: "a week earlier".
            differences << localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 against %2"))
                               .arg(difference, compared.line.comparisonName);
    }
    return differences;
}

/// What the rows say of lines that stand beside each other.
void compare(ReadoutRow& row, const std::vector<TrendLine>& lines, const TrendLine& each, double time, double reach,
             const ValueTexts& texts)
{
    row.besideName = each.line.comparisonName;
    row.hasValues = each.line.hasValues;
    const auto own = std::find_if(lines.begin(), lines.end(), [&](const TrendLine& line) {
        return each.line.isCompared() && line.line.key == each.line.comparedKey;
    });
    if (own != lines.end())
        row.lessBy = differenceText(*own, each, time, reach, texts);
    else if (!isNotValidAt(each.records, time))
        row.differences = differenceTexts(lines, each, time, reach, texts).join(QStringLiteral(", "));
}

/// However much time a point shows: a value of another hour is never passed off as that of the time asked for.
bool isFar(const LineRecords& records, double distance, double perPoint)
{
    const double length = std::abs(distance);
    return length > std::max(kNear, records.usualDistance / 4) || length > kFarInPicture * perPoint;
}

/// That the record there came late or was corrected, and when.
QString amendmentText(const TrendLine& line, double time, const ValueTexts& texts)
{
    const auto amendment = line.amendments.at(time);
    if (!amendment)
        return {};
    const QString text = amendment->kind == KTVAmendment::Kind::Late
                             ? localizedText(QT_TRANSLATE_NOOP("Plotix", "arrived late, %1"))
                             : localizedText(QT_TRANSLATE_NOOP("Plotix", "corrected %1"));
    constexpr double kMinute = 60;
    return text.arg(texts.moment(cameAt(*amendment, time), kMinute));
}

/// What is said behind a value: that it is no valid one, that it came late, and how far away it is.
QString noteOf(const TrendLine& each, const LineReading& reading, double time, double perPoint, const ValueTexts& texts)
{
    QStringList notes;
    if (isNotValidAt(each.records, time)) {
        notes << localizedText(QT_TRANSLATE_NOOP("Plotix", "recorded, not valid")) << amendmentText(each, time, texts);
        notes.removeAll(QString());
        return notes.join(QStringLiteral(", "));
    }
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
        row.note = noteOf(each, reading, time, perPoint, texts);
        compare(row, lines, each, time, kReach * perPoint, texts);
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
