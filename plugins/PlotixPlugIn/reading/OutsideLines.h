#pragma once

#include "plotkit/model/CPTPlotRange.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// Which lines the limits of the value range keep from being seen. Pure; any thread.
namespace plotix {

/// A line that is shown, and what its values reach.
struct LineReach {
    QString name;
    double lowest = 0, highest = 0;
};

struct OutsideLines {
    enum class Kind { None, Outside, Flat };
    Kind kind = Kind::None;
    QStringList names = {};  ///< in the order given

    friend bool operator==(const OutsideLines&, const OutsideLines&) = default;
};

/// At the longest permitted range: the lines that reach beyond it. At the shortest one: the lines that it draws flat
/// although they are not. Of every other range, which the user chose: none.
OutsideLines outsideLines(const std::vector<LineReach>& lines, const CPTPlotRange& values);

/// "Power, Energy", "Power, Energy, Level +2".
QString shortList(const QStringList& names);

}  // namespace plotix
