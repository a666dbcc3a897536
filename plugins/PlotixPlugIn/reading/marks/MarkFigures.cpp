#include "plugins/PlotixPlugIn/reading/marks/MarkFigures.h"

#include "plotkit/model/CPTSeriesIndex.h"
#include "plugins/PlotixPlugIn/reading/trend/ClockTexts.h"

namespace plotix {

namespace {

std::optional<double> valueAt(const LineRecords& records, double time)
{
    const LineReading reading = readingAt(records, time);
    return reading.record ? std::optional(reading.record->value) : std::nullopt;
}

QString isoText(double seconds, const CPTClock& clock)
{
    const QDateTime local = momentBy(clock, seconds);
    const bool isWhole = local.time().msec() == 0;
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(isWhole ? Qt::ISODate : Qt::ISODateWithMs);
}

}  // namespace

std::vector<MarkedLine> markedLines(const std::vector<TrendLine>& lines, const MarkTimes& marks)
{
    std::vector<MarkedLine> marked;
    for (const TrendLine& each : lines)
        marked.push_back({each.line.name, each.line.color, each.line.unitSymbol, valueAt(each.records, *marks.a),
                          valueAt(each.records, *marks.b)});
    return marked;
}

QStringList markHeading(const std::vector<MarkedLine>& lines, const MarkTimes& marks, const ValueTexts& texts)
{
    QStringList heading{QStringLiteral("A – B"), durationText(marks.distance())};
    for (const MarkedLine& line : lines)
        if (line.hasDifference())
            heading << QStringLiteral("Δ %1 %2").arg(line.name,
                                                     texts.difference(*line.atA, *line.atB, line.unitSymbol));
    return heading;
}

LineFigures StretchFigures::of(const TrendLine& line, const KTVRecordDictionary& records, const TimeSpan& span)
{
    const auto& column = line.records.column;
    if (!column || !records.time() || !line.records.series->isXSorted())
        return {};
    Kept& kept = m_kept[line.line.key];
    const bool isKnown = kept.summary && kept.column.lock() == column && kept.unit == column->unit() &&
                         kept.summary->longestJoin() == line.records.longestJoin;
    if (!column->isResident())
        return ofPart(kept, isKnown, line, records, span);
    if (!isKnown)
        kept = {column, column->unit(),
                LineSummary::make(FigureRecords(*records.time(), *column), line.records.longestJoin)};
    return kept.summary->figures(span.from, span.to);
}

/// Of a paged line no more is read than the span, and the records before and after it.
LineFigures StretchFigures::ofPart(Kept& kept, bool isKnown, const TrendLine& line, const KTVRecordDictionary& records,
                                   const TimeSpan& span)
{
    const CPTPointSeries& series = *line.records.series;
    const std::size_t count = series.elementCount();
    const std::size_t before = series.index().lastPointBefore(series.elementFrom(span.from));
    const std::size_t after = series.index().firstPointFrom(series.elementAfter(span.to));
    const LineSummary::Elements wanted{before < count ? before : 0, std::min(count, after + 1)};
    if (!isKnown || !kept.summary->hasRead(wanted))
        kept = {line.records.column, line.records.column->unit(),
                LineSummary::makePart(FigureRecords(*records.time(), *line.records.column), line.records.longestJoin,
                                      wanted, isKnown ? kept.summary.get() : nullptr)};
    return kept.summary->figures(span.from, span.to);
}

QString rangeText(const TimeSpan& span, const CPTClock& clock)
{
    return isoText(span.from, clock) + QLatin1Char('/') + isoText(span.to, clock);
}

}  // namespace plotix
