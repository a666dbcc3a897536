#pragma once

#include "plotkit/model/CPTTickFormatters.h"

#include <QtCore/QString>

#include <memory>

/// Values, differences, slopes and stretches of time as people say them, in the user's locale and by a clock.
///
/// Numbers are written with seven digits that count, without zeros at their end: as much as any recorder delivers, and
/// none of the dust that converting and subtracting leave. What is not finite is written as it is called ("inf"). Keeps
/// formatters, which are costly to make. Main thread only.
namespace plotix {

class ValueTexts {
public:
    explicit ValueTexts(const CPTClock& clock = {}) { setClock(clock); }
    void setClock(const CPTClock& clock) { m_moments = std::make_unique<const CPTMomentFormatter>(clock); }

    /// "Fri, 8 Feb 2013, 18:00"; `step` (seconds, such as what a pixel shows) decides whether seconds and milliseconds
    /// are written.
    QString moment(double time, double step) const;

    QString value(double number, const QString& unitSymbol) const;  ///< "1,013.25 hPa"
    /// `later` less `earlier`, with its sign, to the digits that the two have: "+4.4 K".
    QString difference(double earlier, double later, const QString& unitSymbol) const;
    /// The difference by time: "−0.25 K/h", for stretches of days by the day, for seconds by the second. Nothing where
    /// no time passes.
    QString slope(double earlier, double later, double seconds, const QString& unitSymbol) const;

private:
    QString number(double number, int decimals) const;
    QString signedNumber(double number, int decimals) const;
    QString withUnit(const QString& text, const QString& unitSymbol) const;

    std::unique_ptr<const CPTMomentFormatter> m_moments;
    CPTTickNumberFormatter m_numbers;
};

/// The two largest parts that say it: "4 d 1 h", "3 h 20 min", "45 s", "1.25 s", "12 ms". Days are of 24 hours. A sign
/// is left out; nothing for what is not finite.
QString durationText(double seconds);

/// What a difference of two values in a unit is measured in: kelvins for degrees Celsius, else the unit itself.
QString differenceSymbol(const QString& unitSymbol);

/// The decimals it takes to write seven digits that count of a number: 3 for 1,013.25. Between 0 and 15.
int decimalsOf(double number);

}  // namespace plotix
