#pragma once

#include <QtCore/QSizeF>

/// The sheets a report is printed on. Free functions; any thread.
namespace plotix {

enum class Paper { A4, Letter };

/// Points, standing upright.
QSizeF paperSize(Paper paper);

/// What is usual in the user's country.
Paper usualPaper();

}  // namespace plotix
