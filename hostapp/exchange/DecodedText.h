#pragma once

#include <QtCore/QString>

#include <string_view>

namespace plotix {

/// The text of bytes: UTF-8, or Windows-1252, which includes Latin-1, where they are not. Pure; any thread.
QString decodedText(std::string_view bytes);

}  // namespace plotix
