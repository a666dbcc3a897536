#pragma once

#include "plotkit/model/CPTFormatter.h"

#include <map>
#include <vector>

/// Formatters whose labels depend on how far apart the ticks stand: as many digits, and as much of a date, as it takes
/// to tell neighbours apart. Immutable; axes *share* them. Main thread only.

/// Numbers in the user's locale with its thousands separators: by steps of 0.02 "1.80", "1.82"; by steps of 500
/// "1,234,500". Magnitudes from 1e15 on are written with an exponent, a NaN as nothing.
class CPTTickNumberFormatter : public CPTFormatter {
public:
    CPTTickNumberFormatter();
    ~CPTTickNumberFormatter() override;
    QString stringForNumber(double number) const override;  ///< as many digits as it takes, six decimals at most
    QString stringForTick(double number, double step) const override;
    QString pattern() const override { return QStringLiteral("#,##0.###"); }

private:
    struct Icu;
    std::unique_ptr<Icu> m_icu;
};

/// Moments in the user's locale by a clock, the local one unless told otherwise; a number is seconds since 1970-01-01
/// UTC. Steps of less than a day read as the time above the date, longer ones as the date above the year, whole years
/// as the year alone.
class CPTTickTimeFormatter : public CPTFormatter {
public:
    explicit CPTTickTimeFormatter(const CPTClock& clock = {});
    ~CPTTickTimeFormatter() override;
    QString stringForNumber(double number) const override;  ///< to the second
    QString stringForTick(double number, double step) const override;
    QString pattern() const override;  ///< of minutes
    const CPTClock& clock() const { return m_clock; }

private:
    struct Icu;
    const CPTTimeFormatter& formatterFor(double step) const;
    CPTClock m_clock;
    std::unique_ptr<Icu> m_icu;
};

/// A label's pattern with the hours of a clock: "h:mm:ssa" is "HH:mm:ss" by twenty-four hours, and
/// every line of it as the user's locale has it where that is asked for. Usual: the pattern itself.
QString patternByClock(const QString& pattern, CPTHourForm hours);

/// Moments in one line, with their weekday, in the user's locale by a clock: "Fri, 8 Feb 2013, 18:00". A number is
/// seconds since 1970-01-01 UTC. Steps below a minute add the seconds, below a second their fraction. Where clocks are
/// put back a time comes twice: it is then told with its distance from UTC, "Sun, 27 Oct 2013, 02:30 UTC+1".
class CPTMomentFormatter : public CPTFormatter {
public:
    explicit CPTMomentFormatter(const CPTClock& clock = {});
    ~CPTMomentFormatter() override;
    QString stringForNumber(double number) const override;  ///< to the second
    QString stringForTick(double number, double step) const override;
    QString pattern() const override;  ///< of minutes

private:
    CPTClock m_clock;
    std::vector<std::unique_ptr<const CPTTimeFormatter>> m_formatters;  // from the finest step to the coarsest
};

/// The decimals it takes to write multiples of a step apart and, where three more do it, exactly: 0.5 takes 1, 0.25
/// takes 2, 20 none. Never more than 15; a step that is not positive and finite takes none.
int fractionDigitsForStep(double step);
