#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QString>

#include <cstddef>

/// What units mean to the host. Conversions are prepared once, so that a column is converted at memory speed.
///
/// Implementations must be usable from any thread.
class KTVHOST_EXPORT KTVUnitModel {
public:
    virtual ~KTVUnitModel();

    /// A map from archived values to shown ones: linear, or by `convertValues`.
    struct Map {
        bool isIdentity = true;
        bool isLinear = true;  ///< value × scale + offset; else call convertValues
        double scale = 1;
        double offset = 0;
    };

    /// The map between two units. Units that cannot be converted into each other answer the identity.
    virtual Map mapBetween(const QString& fromUnit, const QString& toUnit) const = 0;

    /// Converts `count` values one by one, for maps that are not linear.
    virtual void convertValues(const QString& fromUnit, const QString& toUnit, const double* from, double* to,
                               std::size_t count) const = 0;

    virtual QString symbolForUnit(const QString& unit) const = 0;

    /// What values of a unit come to over time, such as kW to kWh.
    struct Integral {
        QString symbol;    ///< how its unit is written for people
        double scale = 1;  ///< value × seconds × scale is in that unit
    };
    /// A model that knows no unit for it writes hours behind the unit: "kW·h".
    virtual Integral integralOf(const QString& unit) const;
    static Integral integralInHours(const QString& symbol);
};
