#pragma once

#include <QtGui/QColor>

#include <cstddef>

/// The colours new properties get, in turn: bright enough for a dark grey background; successive ones are easy to tell
/// apart, also for colour-blind people. Pure; any thread.
namespace plotix {

inline constexpr std::size_t kPaletteSize = 10;

/// Starts over after kPaletteSize.
QColor paletteColor(std::size_t position);

}  // namespace plotix
