#pragma once

#include "base/Date.h"
#include "plotkit/model/CPTClock.h"

#include <QtCore/QString>

#include <memory>

/// Turns a tick's number into its label; line breaks make taller labels. Immutable; axes *share* it. Main thread only.
class CPTFormatter {
public:
    virtual ~CPTFormatter();
    virtual QString stringForNumber(double number) const = 0;

    /// The label of a tick whose neighbours stand `step` away. The base answers as for the number alone.
    virtual QString stringForTick(double number, double step) const;

    /// The date or number pattern it formats by, so that a styled axis can be read back.
    virtual QString pattern() const = 0;
};

using CPTFormatterPtr = std::shared_ptr<const CPTFormatter>;

/// Dates by an ICU pattern, in the user's locale and, unless told otherwise, local zone; a number is seconds after the
/// reference date.
class CPTTimeFormatter : public CPTFormatter {
public:
    explicit CPTTimeFormatter(const QString& pattern, plotix::Date referenceDate = {}, const QTimeZone& zone = {});
    ~CPTTimeFormatter() override;
    QString stringForNumber(double number) const override;
    QString pattern() const override { return m_pattern; }
    plotix::Date referenceDate() const { return m_referenceDate; }

private:
    struct Icu;
    QString m_pattern;
    plotix::Date m_referenceDate;
    std::unique_ptr<Icu> m_icu;
};

/// Numbers by an ICU decimal pattern in the user's locale, with a least number of fraction digits and always a leading
/// zero: "#.##" with 2 writes 0.50.
class CPTNumberFormatter : public CPTFormatter {
public:
    CPTNumberFormatter(const QString& pattern, int minimumFractionDigits);
    ~CPTNumberFormatter() override;
    QString stringForNumber(double number) const override;
    QString pattern() const override { return m_pattern; }
    int minimumFractionDigits() const { return m_minimumFractionDigits; }

private:
    struct Icu;
    QString m_pattern;
    int m_minimumFractionDigits;
    std::unique_ptr<Icu> m_icu;
};
