#pragma once

#include <QtCore/QSizeF>

/// The paper sizes for reports. Free functions; any thread.
namespace plotix {

inline constexpr double kPointsPerInch = 72;

enum class Paper { A4, Letter };

/// Points, in portrait orientation.
QSizeF paperSize(Paper paper);

/// The usual paper in the user's country.
Paper usualPaper();

}  // namespace plotix
