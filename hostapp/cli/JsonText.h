#pragma once

#include <QtCore/QString>

#include <string>

/// Numbers and texts as JSON writes them. Pure; any thread.
namespace plotix {

/// As exactNumber, for JSON, which has no word for infinities and NaN: ±1e999, which readers take for an infinity, and
/// null.
std::string jsonNumber(double value);

/// In quotation marks, escaped; UTF-8.
std::string jsonText(const QString& text);

}  // namespace plotix
