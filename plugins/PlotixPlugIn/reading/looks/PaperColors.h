#pragma once

#include <QtGui/QColor>

/// Colours on a light ground. Pure; any thread.
namespace plotix {

/// A line's colour, darkened as far as white paper needs; a colour that is dark enough stays, and a faint one stays
/// faint.
QColor colorOnPaper(const QColor& color);

/// How much light a channel of a colour (0…1, as it is written) gives: 0…1.
double linearLight(float channel);

/// Of texts and axes on white.
QColor inkColor();
QColor gridColorOnPaper();

}  // namespace plotix
