#include "plugins/PlotixPlugIn/reading/statistics/ComparedColumns.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"
#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

using Cell = TableFigures::Cell;

constexpr int kWidth = 90;                           // points; grows with what it holds
const QString kAverage = QStringLiteral("average");  // stored, as the next: never change
const QString kDifference = QStringLiteral("difference");

QString identifierOf(const QString& figure, const QString& comparison)
{
    return figure + QLatin1Char(':') + comparison;
}

/// As many as the line's range is worth, and more where that would leave less than two digits of the difference.
int decimalsOfDifference(double difference, const LineFigures& line)
{
    constexpr int kMostDecimals = 9;
    const int ofRange = decimalsForStatistics(static_cast<float>(line.minimum), static_cast<float>(line.maximum));
    if (difference == 0)
        return ofRange;
    return std::clamp(1 - static_cast<int>(std::floor(std::log10(std::abs(difference)))), ofRange,
                      std::max(ofRange, kMostDecimals));
}

}  // namespace

QStringList ComparedColumns::comparisons() const
{
    QStringList comparisons;
    for (const ReadLine& line : m_trend.lines())
        if (line.isCompared())
            comparisons << line.comparison;
    comparisons.removeDuplicates();
    return comparisons;
}

std::vector<TableFigures::Column> ComparedColumns::columns(const StatisticsChoices& choices) const
{
    std::vector<TableFigures::Column> columns;
    const std::vector<ReadLine> lines = m_trend.lines();
    for (const QString& comparison : comparisons()) {
        const QString name = std::find_if(lines.begin(), lines.end(), [&](const ReadLine& line) {
                                 return line.comparison == comparison;
                             })->comparisonName;
        const auto add = [&](const QString& figure, const QString& title, TableFigures::Kind kind) {
            columns.push_back({identifierOf(figure, comparison), title, kind, kWidth, true});
        };
        const auto titled = [&](const QString& title) {
            return localizedText(QT_TRANSLATE_NOOP("Plotix", "%1, %2")).arg(title, name);
        };
        add(kAverage, titled(localizedText(QT_TRANSLATE_NOOP("Plotix", "Average"))), TableFigures::Kind::Number);
        add(kDifference, titled(localizedText(QT_TRANSLATE_NOOP("Plotix", "Difference"))), TableFigures::Kind::Number);
        for (const QString& identifier : choices.columns)
            if (const FigureColumn* column = figureColumn(identifier))
                add(identifier, titled(titleOf(*column)), column->kind);
    }
    return columns;
}

std::optional<ComparedColumns::Meant> ComparedColumns::meant(const QString& key, const QString& identifier) const
{
    const qsizetype colon = identifier.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return std::nullopt;
    for (const ReadLine& line : m_trend.lines())
        if (line.comparedKey == key && line.comparison == identifier.mid(colon + 1))
            return Meant{line.key, identifier.left(colon)};
    return Meant{{}, identifier.left(colon)};
}

std::optional<Cell> ComparedColumns::cell(const QString& key, const QString& identifier) const
{
    const auto meant = this->meant(key, identifier);
    if (!meant)
        return std::nullopt;
    if (meant->line.isEmpty())
        return Cell{FigureTexts::none()};
    if (meant->figure == kAverage)
        return averageCell(key, meant->line);
    if (meant->figure == kDifference)
        return differenceCell(key, meant->line);
    const FigureColumn* column = figureColumn(meant->figure);
    return column ? m_table.cell(meant->line, *column) : Cell();
}

/// How much of the span either average is about, where that differs enough to mislead: less than a day recorded beside
/// a whole one.
std::optional<ComparedColumns::Shares> ComparedColumns::unequalShares(const LineFigures& now,
                                                                      const LineFigures& then) const
{
    constexpr double kAlike = 0.05;
    if (!(std::abs(now.coverage - then.coverage) > kAlike))
        return std::nullopt;
    const QString hint = localizedText(QT_TRANSLATE_NOOP("Plotix", "Recorded now: %1 of the time, then: %2"));
    const Shares shares{m_texts.share(now.coverage), m_texts.share(then.coverage), {}};
    return Shares{shares.now, shares.then, hint.arg(shares.now, shares.then)};
}

Cell ComparedColumns::averageCell(const QString& key, const QString& comparedKey) const
{
    const auto then = m_table.figures(comparedKey);
    if (!then)
        return {m_table.missing()};
    if (std::isnan(then->mean))
        return {localizedText(QT_TRANSLATE_NOOP("Plotix", "nothing recorded"))};
    const QString average = m_texts.value(then->mean, *then);
    const auto now = m_table.figures(key);
    const auto shares = now ? unequalShares(*now, *then) : std::nullopt;
    if (!shares)
        return {average, {}, then->mean, {}};
    //: An average and of how much of the time it is: "20.4 (29 % recorded)".
    const QString text = localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 (%2 recorded)")).arg(average, shares->then);
    return {text, shares->hint, then->mean, {}};
}

/// The difference, and what share of the earlier average it is, where that has a meaning: nothing is a share of 0 °C.
Cell ComparedColumns::differenceCell(const QString& key, const QString& comparedKey) const
{
    const auto now = m_table.figures(key);
    const auto then = m_table.figures(comparedKey);
    const auto line = m_table.line(key);
    if (!now || !then || !line)
        return {m_table.missing()};
    if (std::isnan(now->mean) || std::isnan(then->mean))
        return {FigureTexts::none()};
    const double more = now->mean - then->mean;
    const QString number = m_numbers.withDecimals(more, decimalsOfDifference(more, *now));
    const QString symbol = differenceSymbol(line->unitSymbol);
    QString text = more > 0 ? QLatin1Char('+') + number : number;
    if (!symbol.isEmpty())
        text += QChar(QChar::Nbsp) + symbol;
    constexpr double kPercent = 100;
    const bool hasShare = symbol == line->unitSymbol && then->mean != 0;
    QString hint = hasShare ? QStringLiteral("%1 %").arg(kPercent * more / std::abs(then->mean), 0, 'f', 1) : QString();
    if (const auto shares = unequalShares(*now, *then)) {
        //: A difference of averages, and of how much of the time each is: "+1.5 K (100 % against 29 %)".
        text = localizedText(QT_TRANSLATE_NOOP("Plotix", "%1 (%2 against %3)")).arg(text, shares->now, shares->then);
        hint = hint.isEmpty() ? shares->hint : hint + QLatin1Char('\n') + shares->hint;
    }
    return {text, hint, more, {}};
}

}  // namespace plotix
