#pragma once

#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

/// A handful of units, enough for every kind of conversion:
///   degC, degF, K          linear with an offset; symbols °C, °F, K
///   hPa, mbar, Pa          identity between hPa and mbar, a pure factor to Pa
///   bel, ratio             not linear: ratio = 10^bel
/// Other units convert into nothing and are their own symbol. Stateless; any thread.
namespace fakehost {

class FakeUnitModel : public KTVUnitModel {
public:
    Map mapBetween(const QString& fromUnit, const QString& toUnit) const override;
    void convertValues(const QString& fromUnit, const QString& toUnit, const double* from, double* to,
                       std::size_t count) const override;
    QString symbolForUnit(const QString& unit) const override;

    double convert(double value, const QString& fromUnit, const QString& toUnit) const;
};

}  // namespace fakehost
