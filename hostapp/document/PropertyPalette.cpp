#include "hostapp/document/PropertyPalette.h"

#include <algorithm>
#include <array>

namespace plotix {

namespace {

constexpr std::array<QRgb, kPaletteSize> kPalette{
    0xFF56B4E9,  // sky blue
    0xFFE69F00,  // orange
    0xFF2FCB9A,  // bluish green
    0xFFF0E442,  // yellow
    0xFFFF6F4C,  // vermilion
    0xFFE58BC6,  // pink
    0xFF8C9EFF,  // periwinkle
    0xFFB5DE6A,  // lime
    0xFFDDBB92,  // sand
    0xFFE4E7EB,  // near white
    0xFF6BA6FF,  // blue
    0xFFC77DFF,  // violet
    0xFF63D471,  // green
    0xFFA8A81E,  // olive
    0xFF7FE7E0,  // turquoise
    0xFFFFB3A7,  // salmon
    0xFFE98484,  // coral
    0xFF9FB3C8,  // steel
    0xFFFFD59E,  // peach
    0xFF00B8D4,  // teal
};

}  // namespace

QColor paletteColor(std::size_t position)
{
    return QColor::fromRgb(kPalette[position % kPalette.size()]);
}

QColor freeColor(const std::vector<QColor>& taken)
{
    std::array<std::size_t, kPaletteSize> timesTaken{};
    for (const QColor& color : taken) {
        const auto* const found = std::find(kPalette.begin(), kPalette.end(), color.rgb());
        if (found != kPalette.end())
            ++timesTaken[static_cast<std::size_t>(found - kPalette.begin())];
    }
    return paletteColor(
        static_cast<std::size_t>(std::min_element(timesTaken.begin(), timesTaken.end()) - timesTaken.begin()));
}

}  // namespace plotix
