#pragma once

#include "plotkit/raster/LineInput.h"
#include "plotkit/raster/StrokeOutline.h"

/// An area given by columns, as the outline that becomes pixels. Pure; any thread.
namespace plotkit {

/// The outline of the area's columns within `within`; its colour is the caller's.
void outlineArea(StrokeOutline& outline, const AreaColumns& area, const StrokeArea& within);

}  // namespace plotkit
