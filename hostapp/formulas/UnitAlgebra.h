#pragma once

#include "hostapp/core/Units.h"

#include <QtCore/QString>

#include <optional>

/// What becomes of units under arithmetic. Texts are those that Units knows; any other text is a word of its own, which
/// fits itself alone; the empty text is a plain number. Free functions; any thread.
namespace plotix {

/// A unit, and by what a value has to be multiplied to be in it.
struct ScaledUnit {
    QString unit;
    double factor = 1;

    friend bool operator==(const ScaledUnit&, const ScaledUnit&) = default;
};

/// Units with a zero of their own choice, such as °C.
bool hasArbitraryZero(const QString& unit);

/// From one unit to another that it can be converted into; equal words too. Nothing: they do not fit.
std::optional<KTVUnitModel::Map> conversionBetween(const QString& from, const QString& to);

/// one^power × other^otherPower, by the name people have for it: kW·h is kWh, kWh/h is kW, kW/MW a plain 0.001, % a
/// plain 0.01. Nothing: a power that no unit has. Requires: neither has an arbitrary zero.
ScaledUnit productOf(const QString& one, const QString& other, int otherPower = 1);
ScaledUnit powerOf(const QString& unit, int power);

/// The plain number that one of a unit is, such as 0.01 of %; nothing for a unit that is a quantity.
std::optional<double> plainNumberOf(const QString& unit);

/// The unit whose square it is; nothing: there is none with a name.
std::optional<ScaledUnit> rootOf(const QString& unit);

/// The unit of an integral over time and of a change in time. The unit of time is the one that gives a result with a
/// name, hours if none does; values per second are to be multiplied by the factor.
ScaledUnit integralOf(const QString& unit);
ScaledUnit derivativeOf(const QString& unit);

}  // namespace plotix
