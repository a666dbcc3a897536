#pragma once

#include "plugins/PlotixPlugIn/reading/trend/TableFigures.h"

#include <QtCore/QString>

#include <span>

/// The columns that the table of statistics can have beyond its own, as data.
namespace plotix {

enum class Figure {
    MinimumTime,
    MaximumTime,
    First,
    Last,
    Range,
    Sum,
    Deviation,
    Percentile,
    TimeWeightedMean,
    Integral,
    Coverage,
    Gaps,
    AboveHigh,
    BelowLow,
    Crossings,
    Now,
    Age
};

struct FigureColumn {
    Figure figure;
    const char* identifier;  ///< stored: never change
    const char* item;        ///< of a menu: key of a localised text
    TableFigures::Kind kind;
    int width;         ///< points
    double share = 0;  ///< of a percentile, 0 to 1
};

/// In the order of the table.
std::span<const FigureColumn> figureColumns();
QString titleOf(const FigureColumn& column);                  ///< for people
const FigureColumn* figureColumn(const QString& identifier);  ///< null when there is none

}  // namespace plotix
