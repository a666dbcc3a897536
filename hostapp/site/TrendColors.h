#pragma once

#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <vector>

/// Colours by which the lines of a trend can be told apart. Free functions; main thread only.
namespace plotix {

/// Gives each property whose colour one before it has a colour of its own, as long as there are free ones: of the
/// palette, that no other of these has. The new colour is the property's everywhere.
void tellLinesApart(const KTVPropertyList& properties);

}  // namespace plotix
