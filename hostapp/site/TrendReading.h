#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

/// What our host turns on to make trends easier to read. Free functions; main thread only.
namespace plotix {

/// Turns on every option of reading that we recommend, but for those that were chosen for this trend already. A plug-in
/// without such options, or null: nothing. Calling it again changes nothing.
void chooseReading(KTVPlugIn* plugIn);

}  // namespace plotix
