#include "plugins/PlotixPlugIn/reading/statistics/StatisticsTable.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/trend/UsualJoin.h"
#include "plugins/PlotixPlugIn/reading/values/LimitLook.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using Cell = TableFigures::Cell;

double convertedLimit(const ChosenLimit& limit, const KTVRecordColumn& column)
{
    double value = limit.value;
    if (column.unitModel() && limit.unit != column.unit())
        column.unitModel()->convertValues(limit.unit, column.unit(), &limit.value, &value, 1);
    return value;
}

double now()
{
    constexpr double millisecondsASecond = 1000;
    return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / millisecondsASecond;
}

}  // namespace

bool needsFigures(const StatisticsChoices& choices)
{
    return choices.over != StatisticsOver::Fetched || !choices.columns.isEmpty();
}

std::optional<TimeSpan> StatisticsTable::span(StatisticsOver over) const
{
    if (over == StatisticsOver::Marked)
        return m_trend.markedSpan();
    const CPTXYGraphPtr graph = m_trend.graph();
    if (over == StatisticsOver::Visible && graph) {
        const CPTPlotRange& shown = graph->defaultPlotSpace()->xRange();
        return TimeSpan{std::min(shown.location, shown.end()), std::max(shown.location, shown.end())};
    }
    const KTVRecordDictionaryPtr records = m_trend.records();
    if (over == StatisticsOver::Visible || !records || !records->time() || records->time()->isEmpty())
        return std::nullopt;
    if (const auto asked = m_trend.readSpan())
        return asked;
    const double first = records->time()->front(), last = records->time()->back();
    return TimeSpan{std::min(first, last), std::max(first, last)};
}

std::vector<FigureLine> StatisticsTable::keptLines() const
{
    std::vector<FigureLine> lines;
    const CPTXYGraphPtr graph = m_trend.graph();
    if (!graph)
        return lines;
    for (const ReadLine& line : m_trend.lines()) {
        const KTVRecordDictionaryPtr records = m_trend.recordsOf(line.key);
        const auto column = records && records->time() ? records->columnForKey(line.key) : nullptr;
        const CPTScatterPlotPtr plot = graph->plotWithIdentifier(line.key);
        if (column && plot)
            lines.push_back({line.key, *records->time(), column, longestJoinOf(*plot)});
    }
    return lines;
}

bool StatisticsTable::isPaged() const
{
    const KTVRecordDictionaryPtr records = m_trend.records();
    return records && records->time() && !records->time()->isResident();
}

std::optional<StatisticsTable::CountedLimit> StatisticsTable::limitOf(const QString& key, const KTVRecordColumn& column,
                                                                      Figure figure) const
{
    const bool isLow = figure == Figure::BelowLow;
    const QString owner = limitKey(key);
    const auto& chosen = isLow ? m_choices.lowLimits : m_choices.highLimits;
    if (const auto limit = chosen.find(owner); limit != chosen.end())
        return CountedLimit{convertedLimit(limit->second, column),
                            m_values.value(convertedLimit(limit->second, column), column.unitSymbol())};
    const KTVAnnotations* annotations = m_trend.annotations();
    const auto limit = annotations ? innermostLimit(annotations->limitsOf(owner),
                                                    isLow ? KTVLimit::Side::Below : KTVLimit::Side::Above)
                                   : std::nullopt;
    if (!limit)
        return std::nullopt;
    return CountedLimit{limit->value, limit->name + u' ' + m_values.value(limit->value, column.unitSymbol())};
}

LineLimits StatisticsTable::limitsOf(const QString& key, const KTVRecordColumn& column) const
{
    LineLimits limits;
    if (const auto high = limitOf(key, column, Figure::AboveHigh))
        limits.high = high->value;
    if (const auto low = limitOf(key, column, Figure::BelowLow))
        limits.low = low->value;
    return limits;
}

std::optional<double> StatisticsTable::limit(const QString& key, Figure figure) const
{
    const KTVRecordDictionaryPtr records = m_trend.recordsOf(key);
    const auto column = records ? records->columnForKey(key) : nullptr;
    const auto counted = column ? limitOf(key, *column, figure) : std::nullopt;
    return counted ? std::optional(counted->value) : std::nullopt;
}

/// A line that is compared asks for its own average beside the earlier one.
bool StatisticsTable::isAsked() const
{
    const std::vector<ReadLine> lines = m_trend.lines();
    return needsFigures(m_choices) ||
           std::any_of(lines.begin(), lines.end(), [](const ReadLine& line) { return line.isCompared(); });
}

/// The limits of a line are those of what it is compared with too.
QString StatisticsTable::limitKey(const QString& key) const
{
    const auto known = line(key);
    return known && known->isCompared() ? known->comparedKey : key;
}

QString StatisticsTable::missing() const
{
    return m_keeper.isWorking() ? FigureTexts::pending() : FigureTexts::none();
}

void StatisticsTable::ask(const StatisticsChoices& choices)
{
    m_choices = choices;
    if (!isAsked()) {
        m_keeper.setLines({});
        return;
    }
    const std::vector<FigureLine> lines = keptLines();
    FigureQuestion question{.span = span(choices.over), .shares = {}, .limits = {}};
    bool wantsLimits = false;
    for (const QString& identifier : choices.columns) {
        const FigureColumn* column = figureColumn(identifier);
        if (column->figure == Figure::Percentile)
            question.shares.push_back(column->share);
        wantsLimits |= column->figure == Figure::AboveHigh || column->figure == Figure::BelowLow ||
                       column->figure == Figure::Crossings;
    }
    for (const FigureLine& line : lines)
        if (const LineLimits limits = limitsOf(line.key, *line.column);
            wantsLimits && (limits.high.has_value() || limits.low.has_value()))
            question.limits[line.key] = limits;
    m_keeper.setLines(lines);
    m_keeper.ask(question);
}

std::optional<ReadLine> StatisticsTable::line(const QString& key) const
{
    return lineWithKey(m_trend, key);
}

bool StatisticsTable::isHeld(const QString& key) const
{
    const CPTXYGraphPtr graph = m_trend.graph();
    const CPTScatterPlotPtr plot = graph ? graph->plotWithIdentifier(key) : nullptr;
    return plot && plot->interpolation() == CPTScatterPlotInterpolation::HoldLast;
}

std::optional<double> StatisticsTable::timeOf(const QString& key, Figure figure) const
{
    const auto figures = m_keeper.figures(key);
    const double time = !figures                        ? LineFigures::kNone
                        : figure == Figure::MinimumTime ? figures->minimumTime
                                                        : figures->maximumTime;
    return std::isnan(time) ? std::nullopt : std::optional(time);
}

std::optional<TableFigures::Own> StatisticsTable::own(const QString& key) const
{
    if (m_choices.over == StatisticsOver::Fetched)
        return std::nullopt;
    const LineFigures figures = m_keeper.figures(key).value_or(LineFigures());
    return TableFigures::Own{figures.minimum, figures.maximum, figures.mean, figures.points};
}

Cell StatisticsTable::cell(const QString& key, const FigureColumn& column) const
{
    const auto known = m_keeper.figures(key);
    if (!known)
        return {missing()};
    const LineFigures& figures = *known;
    const auto value = [&](double number, int moreDecimals = 0) {
        return Cell{m_texts.value(number, figures, moreDecimals), {}, number, {}};
    };
    switch (column.figure) {
    case Figure::MinimumTime: return momentCell(key, figures.minimumTime);
    case Figure::MaximumTime: return momentCell(key, figures.maximumTime);
    case Figure::First: return value(figures.first);
    case Figure::Last: return value(figures.last);
    case Figure::Range: return value(figures.range());
    case Figure::Sum: return {m_texts.amount(figures.sum, {}), {}, figures.sum, {}};
    case Figure::Deviation: return value(figures.deviation, 1);
    case Figure::Percentile: return percentileCell(key, figures, column.share);
    case Figure::TimeWeightedMean: return value(isHeld(key) ? figures.heldMean : figures.straightMean);
    case Figure::Integral: return integralCell(key, figures);
    case Figure::Coverage: return coverageCell(key, figures);
    case Figure::Gaps: return {m_texts.count(figures.gaps), {}, static_cast<double>(figures.gaps), {}};
    case Figure::AboveHigh:
    case Figure::BelowLow:
    case Figure::Crossings: return limitCell(key, column.figure);
    case Figure::Now:
    case Figure::Age: return latestCell(key, figures, column.figure);
    }
    return {};
}

// A compared line is drawn at another time than it was recorded at.
Cell StatisticsTable::momentCell(const QString& key, double drawn) const
{
    const auto line = lineWithKey(m_trend, key);
    const double time = line && line->recordedAt && !std::isnan(drawn) ? line->recordedAt(drawn) : drawn;
    const auto span = this->span(m_choices.over);
    return {m_texts.shortMoment(time, span ? span->to - span->from : 0), m_texts.moment(time), time, {}};
}

Cell StatisticsTable::percentileCell(const QString& key, const LineFigures& figures, double share) const
{
    const auto found = m_keeper.percentile(key, share);
    if (found)
        return {m_texts.value(*found, figures), {}, *found, {}};
    return {m_keeper.isCancelled() ? FigureTexts::none() : FigureTexts::pending()};
}

std::optional<QString> StatisticsTable::quality(const QString& key) const
{
    if (!m_quality.areChosen())
        return std::nullopt;
    const auto span = this->span(m_choices.over);
    return span ? m_quality.text(key, *span, m_texts) : FigureTexts::none();
}

Cell StatisticsTable::coverageCell(const QString& key, const LineFigures& figures) const
{
    QString hint = m_texts.duration(figures.covered);
    if (const auto told = quality(key); told && *told != FigureTexts::none())
        hint += QLatin1Char('\n') + *told;
    return {m_texts.share(figures.coverage), hint, figures.coverage, figures.coverage};
}

Cell StatisticsTable::integralCell(const QString& key, const LineFigures& figures) const
{
    const KTVRecordDictionaryPtr records = m_trend.recordsOf(key);
    const auto column = records ? records->columnForKey(key) : nullptr;
    if (!column)
        return {FigureTexts::none()};
    const KTVUnitModel::Integral integral = column->integral();
    const double amount = (isHeld(key) ? figures.heldIntegral : figures.straightIntegral) * integral.scale;
    return {m_texts.amount(amount, integral.symbol), {}, amount, {}};
}

Cell StatisticsTable::limitCell(const QString& key, Figure figure) const
{
    const bool isLow = figure == Figure::BelowLow;
    const bool isHigh = figure == Figure::AboveHigh;
    const KTVRecordDictionaryPtr records = m_trend.recordsOf(key);
    const auto column = records ? records->columnForKey(key) : nullptr;
    const auto high = column ? limitOf(key, *column, Figure::AboveHigh) : std::nullopt;
    const auto low = column ? limitOf(key, *column, Figure::BelowLow) : std::nullopt;
    const bool hasHigh = high.has_value();
    const bool hasLow = low.has_value();
    if ((isHigh && !hasHigh) || (isLow && !hasLow) || (!hasHigh && !hasLow))
        return {FigureTexts::none(), localizedText(QT_TRANSLATE_NOOP("Plotix", "Click to set a limit"))};
    const auto found =
        isLow || (figure == Figure::Crossings && !hasHigh) ? m_keeper.belowLow(key) : m_keeper.aboveHigh(key);
    if (!found)
        return {m_keeper.isCancelled() ? FigureTexts::none() : FigureTexts::pending()};
    if (figure == Figure::Crossings)
        return {m_texts.count(found->crossings), {}, static_cast<double>(found->crossings), {}};
    const double seconds = isHeld(key) ? (isLow ? found->heldBelow : found->heldAbove)
                                       : (isLow ? found->straightBelow : found->straightAbove);
    // Each line has a limit of its own, so that the title cannot name it.
    const QString beyond =
        localizedText(isLow ? QT_TRANSLATE_NOOP("Plotix", "below %1") : QT_TRANSLATE_NOOP("Plotix", "above %1"))
            .arg(isLow ? low->text : high->text);
    return {QStringLiteral("%1: %2").arg(beyond, m_texts.duration(seconds)), {}, seconds, {}};
}

Cell StatisticsTable::latestCell(const QString& key, const LineFigures& figures, Figure figure) const
{
    const auto latest = m_keeper.latest(key);
    if (!latest)
        return {FigureTexts::none()};
    const double age = std::max(0.0, now() - latest->time);
    constexpr double kRecent = 3600;  // seconds: what is older is no present value, and says of when it is
    if (figure == Figure::Now) {
        const QString value = m_texts.value(latest->value, figures);
        const QString moment = m_texts.moment(latest->time);
        return {age <= kRecent ? value : QStringLiteral("%1, %2").arg(value, moment), moment, latest->value, {}};
    }
    return {m_texts.duration(std::floor(age)), m_texts.moment(latest->time), age, {}};
}

}  // namespace plotix
