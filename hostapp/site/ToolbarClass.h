#pragma once

#include "hostapp/site/PlugInStore.h"

/// Which plug-ins stand in the toolbar instead of the source list. Free functions; main thread only.
namespace plotix {

/// The class the module makes them by. Stored with them: never change.
inline constexpr auto kToolbarClass = "KTVPlotixToolbarPlugIn";

inline bool isToolbarPlugIn(const KTVPlugIn& plugIn)
{
    return classNameOf(plugIn) == QLatin1String(kToolbarClass);
}

}  // namespace plotix
