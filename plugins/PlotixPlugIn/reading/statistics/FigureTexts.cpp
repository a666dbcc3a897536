#include "plugins/PlotixPlugIn/reading/statistics/FigureTexts.h"

#include "plugins/PlotixPlugIn/reading/values/ValueTexts.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

/// How far apart times stand of which this one is told: minutes, unless it has seconds or parts of them.
double finestStep(double seconds)
{
    constexpr double kMinute = 60, kSecond = 1, kMillisecond = 0.001;
    if (std::floor(seconds) != seconds)
        return kMillisecond;
    return std::fmod(seconds, kMinute) == 0 ? kMinute : kSecond;
}

}  // namespace

void FigureTexts::setClock(const CPTClock& clock)
{
    m_moments = std::make_unique<const CPTMomentFormatter>(clock);
    m_times = std::make_unique<const CPTTickTimeFormatter>(clock);
}

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

QString FigureTexts::shortMoment(double seconds, double span) const
{
    constexpr double kManyMonths = 300 * 86'400.0;  // from here on a day without its year may be another one
    if (!std::isfinite(seconds) || span > kManyMonths)
        return moment(seconds);
    QStringList lines = m_times->stringForTick(seconds, finestStep(seconds)).split(u'\n');
    std::reverse(lines.begin(), lines.end());  // an axis has the time above its date
    return lines.join(u' ');
}

QString FigureTexts::moment(double seconds) const
{
    return std::isfinite(seconds) ? m_moments->stringForTick(seconds, finestStep(seconds)) : none();
}

QString FigureTexts::duration(double seconds) const
{
    if (!std::isfinite(seconds))
        return none();
    constexpr qint64 kMinutesADay = 1440, kMinutesAnHour = 60;
    constexpr double kMinute = 60;  // seconds
    const qint64 minutes = qRound64(seconds / kMinute);
    if (minutes < kMinutesADay)
        return durationText(seconds);
    return QStringLiteral("%1 d %2 h %3 min")
        .arg(minutes / kMinutesADay)
        .arg(minutes % kMinutesADay / kMinutesAnHour)
        .arg(minutes % kMinutesAnHour);
}

}  // namespace plotix
