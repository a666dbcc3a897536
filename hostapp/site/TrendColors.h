#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <vector>

/// Colours by which the lines of a trend can be told apart. Free functions; main thread only.
namespace plotix {

/// Gives each property whose colour one before it has a colour of its own, as long as there are free ones: of the
/// palette, that no other of these has, and none of `others` where that can be. The new colour is the property's
/// everywhere. The first `kept` keep theirs.
void tellLinesApart(const KTVPropertyList& properties, std::size_t kept = 0, const KTVPropertyList& others = {});

/// The same for all properties of a trend. One that does not tell its properties, or null: nothing.
void tellLinesApart(const KTVPlugIn* plugIn);

/// The same for each property that comes to the trend, from now on as long as it lives; those that were there before
/// keep their colours.
void keepLinesApart(const KTVPlugInPtr& plugIn);

}  // namespace plotix
