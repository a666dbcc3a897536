#pragma once

#include <QtCore/QByteArray>

#include <optional>

/// Texts inside a PNG file, beside its picture. Pure; any thread.
namespace plotix {

/// The file with a text (UTF-8) under a keyword, stored as it is. What is no PNG file comes back unchanged.
/// Requires: a keyword of 1 to 79 Latin letters.
QByteArray pngWithText(const QByteArray& png, const QByteArray& keyword, const QByteArray& text);

/// The text under this keyword; nothing where there is none, or no PNG file.
std::optional<QByteArray> textInPng(const QByteArray& png, const QByteArray& keyword);

}  // namespace plotix
