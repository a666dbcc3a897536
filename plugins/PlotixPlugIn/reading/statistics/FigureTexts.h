#pragma once

#include "plotkit/model/CPTTickFormatters.h"
#include "plugins/PlotixPlugIn/reading/figures/LineFigures.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadableNumbers.h"

#include <QtCore/QString>

#include <memory>

/// Figures as people read them, in the user's locale and by a clock. Main thread only.
namespace plotix {

class FigureTexts {
public:
    FigureTexts() { setClock({}); }
    void setClock(const CPTClock& clock);

    /// With the digits that the line's range is worth; a NaN is a dash.
    QString value(double value, const LineFigures& line, int moreDecimals = 0) const;
    QString amount(double amount, const QString& unit) const;  ///< to five digits; a NaN is a dash
    QString count(qint64 number) const;
    QString share(double share) const;  ///< "77 %"; only all of it is 100 %, only nothing 0 %
    /// The day and the time, with the year only in a span of many months; a NaN is a dash.
    QString shortMoment(double seconds, double span) const;
    QString moment(double seconds) const;  ///< the date and the time, to what tells it apart; a NaN is a dash

    /// Its two largest parts; of a day and more days, hours and minutes. A NaN is a dash.
    QString duration(double seconds) const;

    static QString none() { return QStringLiteral("–"); }
    static QString pending() { return QStringLiteral("…"); }

private:
    ReadableNumbers m_numbers;
    std::unique_ptr<const CPTMomentFormatter> m_moments;
    std::unique_ptr<const CPTTickTimeFormatter> m_times;
};

}  // namespace plotix
