#pragma once

#include "plotkit/model/CPTStyles.h"

#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <algorithm>

namespace plotkit {

/// Text measured by a rule instead of a font, six points a letter and fourteen a line at size 12, so that boxes are
/// known to the point.
inline QSizeF sizeOfText(const QString& text, const CPTTextStyle& style)
{
    qsizetype longest = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        longest = std::max(longest, line.size());
    return QSizeF(static_cast<double>(longest) * 0.5, static_cast<double>(lines.size()) * 7 / 6) * style.fontSize;
}

}  // namespace plotkit
