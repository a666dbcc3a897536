#include "hostapp/cli/JsonText.h"

#include "hostapp/exchange/ExactText.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace plotix {

std::string jsonNumber(double value)
{
    if (std::isnan(value))
        return "null";
    if (std::isinf(value))
        return value > 0 ? "1e999" : "-1e999";
    return exactNumber(value);
}

std::string jsonText(const QString& text)
{
    std::string result = "\"";
    for (const char character : text.toStdString()) {
        if (character == '"' || character == '\\') {
            result += '\\';
            result += character;
        } else if (static_cast<unsigned char>(character) < 0x20) {
            std::array<char, 8> escape;
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
            result += escape.data();
        } else {
            result += character;
        }
    }
    return result + '"';
}

}  // namespace plotix
