#pragma once

#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

#include <QtCore/QStringList>

#include <memory>
#include <optional>

/// The host's unit model: UDUNITS-2, plus units and spellings people use that it lacks.
///
/// A unit's text is what people read: "°C", "hPa", "m/s", "%", "lux". Other spellings ("degC", "C", "percent", "mph")
/// are understood everywhere and mean the same. An unknown text is kept as it is and cannot be converted.
/// Any thread.
namespace plotix {

class Units : public KTVUnitModel {
public:
    Units();
    ~Units() override;
    Units(const Units&) = delete;
    Units& operator=(const Units&) = delete;

    /// The instance of the process, *shared*; made on first use.
    static std::shared_ptr<const Units> shared();

    Map mapBetween(const QString& fromUnit, const QString& toUnit) const override;
    void convertValues(const QString& fromUnit, const QString& toUnit, const double* from, double* to,
                       std::size_t count) const override;
    QString symbolForUnit(const QString& unit) const override;  ///< an unknown unit answers its own text

    Integral integralOf(const QString& unit) const override;

    /// The canonical text of a unit, or nothing when the text is no unit. Empty text and bare numbers are none.
    std::optional<QString> normalise(const QString& text) const;

    /// False for equal unknown texts too: only what can be converted counts. A known unit is compatible with itself.
    bool areCompatible(const QString& oneUnit, const QString& otherUnit) const;

    /// The usual units of the same quantity, for a menu, including `unit`. For an unknown unit only that one, for the
    /// empty text none.
    QStringList compatibleUnits(const QString& unit) const;

    /// One value; units that cannot be converted into each other answer the value itself.
    double convert(double value, const QString& fromUnit, const QString& toUnit) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace plotix
