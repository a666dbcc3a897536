#pragma once

#include <QtGui/QColor>

#include <cstddef>

/// The colours new properties get, in turn: bright enough for a dark grey background, neighbours in the order far apart
/// also for people who see red and green alike. Pure; any thread.
namespace plotix {

inline constexpr std::size_t kPaletteSize = 10;

/// Starts over after kPaletteSize.
QColor paletteColor(std::size_t position);

}  // namespace plotix
