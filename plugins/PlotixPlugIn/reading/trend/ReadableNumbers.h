#pragma once

#include "base/FigureDecimals.h"
#include "plotkit/model/CPTTickFormatters.h"

#include <QtCore/QString>

/// The numbers of the statistics table as people read them: in the user's locale, with its thousands separators, and
/// as many digits as the range of the values is worth.
///
/// A value; main thread only. Whoever shows the numbers *owns* one.
namespace plotix {

class ReadableNumbers {
public:
    struct Texts {
        QString minimum, maximum, average;
    };
    /// With figureDecimals(). What is no number is written as `numberText` does.
    Texts statistics(float minimum, float maximum, float average) const;

    QString count(qint64 number) const;  ///< "12,345"

    /// With so many decimals; what is no plain number as `numberText` writes it.
    QString withDecimals(double number, int decimals) const;
    QString toFiveDigits(double number) const;  ///< as many decimals as that takes: "1,234.5", "0.012346", "1,234,567"

private:
    CPTTickNumberFormatter m_formatter;
};

}  // namespace plotix
