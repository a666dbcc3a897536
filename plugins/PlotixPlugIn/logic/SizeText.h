#pragma once

#include <QtCore/QSizeF>
#include <QtCore/QString>

/// Sizes in their text form: "{640, 480}" (width and height in braces, a comma and a blank between).
///
/// Free functions over values; any thread.
namespace plotix {

/// The shortest text that reads back to the same size.
QString stringFromSize(const QSizeF& size);

/// Reads the text form back. Unreadable text answers the size (0, 0).
QSizeF sizeFromString(const QString& text);

}  // namespace plotix
