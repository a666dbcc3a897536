#pragma once

#include <QtGui/QColor>

#include <cstddef>
#include <vector>

/// The colours new properties get, in turn: bright enough for a dark grey background; successive ones are easy to tell
/// apart, also for colour-blind people. Pure; any thread.
namespace plotix {

inline constexpr std::size_t kPaletteSize = 20;

/// Starts over after kPaletteSize.
QColor paletteColor(std::size_t position);

/// The first of these colours that is not taken; where all are, the first of those taken least often.
QColor freeColor(const std::vector<QColor>& taken);

}  // namespace plotix
