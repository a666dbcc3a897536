#include "hostapp/document/PropertyPalette.h"

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
};

}  // namespace

QColor paletteColor(std::size_t position)
{
    return QColor::fromRgb(kPalette[position % kPalette.size()]);
}

}  // namespace plotix
