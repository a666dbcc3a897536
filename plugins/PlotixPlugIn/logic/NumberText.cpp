#include "plugins/PlotixPlugIn/logic/NumberText.h"

#include <charconv>
#include <cmath>

namespace plotix {

QString numberText(float number)
{
    const float magnitude = std::abs(number);
    const bool isPlain = magnitude == 0.0F || (magnitude >= 1e-5F && magnitude < 1e15F);
    const auto format = isPlain ? std::chars_format::fixed : std::chars_format::general;
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, number, format);
    return QString::fromLatin1(text, static_cast<qsizetype>(result.ptr - text));
}

}  // namespace plotix
