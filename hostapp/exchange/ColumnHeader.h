#pragma once

#include <QtCore/QString>

/// The header of a table's column: a name, mostly with a unit. Pure; any thread.
namespace plotix {

struct ColumnHeader {
    QString name;
    QString unit;  ///< as `Units` writes it; empty: none
};

/// Reads "Pressure [hPa]", "Pressure (hPa)", "Pressure, hPa" (also with the sensor's number in parentheses behind it)
/// "Pressure / hPa" and "Pressure hPa"; after a mere blank only units that nobody takes for a part of the name.
/// Brackets around anything but a unit belong to the name; empty ones say that there is no unit.
ColumnHeader splitHeader(const QString& header);

/// The header that `splitHeader` reads back. Empty brackets keep the last word of a name without a unit from being
/// taken for one.
QString joinedHeader(const ColumnHeader& header);

}  // namespace plotix
