#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>

/// How a colour reads as text. A free function over values; any thread.
namespace plotix {

/// "rgb(RED, GREEN, BLUE)" with channels from 0 to 255, or "rgba(RED, GREEN, BLUE, ALPHA)" with the alpha from 0 to 1
/// at two decimals when it is not opaque: "rgb(255, 128, 0)", "rgba(255, 128, 0, 0.50)". An absent colour: "(null)".
QString colorText(const QColor& color);

}  // namespace plotix
