#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

struct DurationUnit {
    qint64 seconds;
    const char* symbol;
};
constexpr DurationUnit kUnits[] = {{86'400, "d"}, {3'600, "h"}, {60, "min"}, {1, "s"}};

}  // namespace

QString FigureTexts::value(double value, const LineFigures& line, int moreDecimals) const
{
    if (std::isnan(value))
        return none();
    const bool hasRange = std::isfinite(line.minimum) && std::isfinite(line.maximum);
    const int decimals =
        hasRange ? decimalsForStatistics(static_cast<float>(line.minimum), static_cast<float>(line.maximum)) : 2;
    return m_numbers.withDecimals(value, decimals + moreDecimals);
}

QString FigureTexts::amount(double amount, const QString& unit) const
{
    if (std::isnan(amount))
        return none();
    const QString number = m_numbers.toFiveDigits(amount);
    return unit.isEmpty() ? number : number + QChar(QChar::Nbsp) + unit;
}

QString FigureTexts::count(qint64 number) const
{
    return m_numbers.count(number);
}

QString FigureTexts::share(double share) const
{
    if (std::isnan(share))
        return none();
    double percent = std::round(share * 100);
    if (share < 1)
        percent = std::min(percent, 99.0);
    if (share > 0)
        percent = std::max(percent, 1.0);
    return m_numbers.count(static_cast<qint64>(percent)) + QChar(QChar::Nbsp) + u'%';
}

QString FigureTexts::time(double seconds) const
{
    if (!std::isfinite(seconds))
        return none();
    const double step = std::fmod(seconds, 60) == 0 ? 60 : std::floor(seconds) == seconds ? 1 : 0.001;
    QStringList lines = m_times.stringForTick(seconds, step).split(u'\n');
    std::reverse(lines.begin(), lines.end());  // an axis has the time above its date
    return lines.join(u' ');
}

QString durationText(double seconds)
{
    if (std::isnan(seconds))
        return FigureTexts::none();
    constexpr double kLongest = 1e15;
    if (seconds < 60) {
        const double tenths = std::round(seconds * 10) / 10;
        return QString::number(tenths, 'f', tenths == std::floor(tenths) ? 0 : 1) + QStringLiteral(" s");
    }
    auto left = static_cast<qint64>(std::llround(std::min(seconds, kLongest)));
    QStringList parts;
    for (const DurationUnit& unit : kUnits) {
        const qint64 count = left / unit.seconds;
        left -= count * unit.seconds;
        if (count > 0)
            parts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(unit.symbol));
        else if (!parts.isEmpty())
            break;
        if (parts.size() == 2)
            break;
    }
    return parts.join(u' ');
}

}  // namespace plotix
