#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"

#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <algorithm>
#include <cmath>

namespace plotix {

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

QString FigureTexts::moment(double seconds) const
{
    if (!std::isfinite(seconds))
        return none();
    const double step = std::fmod(seconds, 60) == 0 ? 60 : std::floor(seconds) == seconds ? 1 : 0.001;
    return m_moments.stringForTick(seconds, step);
}

QString FigureTexts::duration(double seconds) const
{
    return std::isfinite(seconds) ? durationText(seconds) : none();
}

}  // namespace plotix
