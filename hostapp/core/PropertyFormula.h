#pragma once

#include <QtCore/QString>

/// What a computed property is worked out from, as the user wrote it and as the site keeps it. A value; any thread.
namespace plotix {

struct PropertyFormula {
    /// What stands for a property at a time that only another one has: its last value, or the one on the straight line
    /// between its neighbours. Stored: never change the numbers.
    enum class Join { HoldLast = 0, Straight = 1 };

    QString text = {};
    QString unit = {};  ///< of the result, chosen by the user; empty: what follows from the formula
    Join join = Join::HoldLast;
    double longestGap = 3600;  ///< seconds without a value that are bridged, at most; > 0

    friend bool operator==(const PropertyFormula&, const PropertyFormula&) = default;
};

}  // namespace plotix
