#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QLatin1String>

/// What the host knows of its plug-in module by name: the file, and the classes it instantiates.
///
/// The class names are stored beside the state of every archived plug-in: never change.
namespace plotix {

inline constexpr auto kModuleName = "PlotixPlugIn";
inline constexpr auto kTrendClass = "KTVPlotixPlugIn";           ///< a view in the list of trends
inline constexpr auto kToolbarClass = "KTVPlotixToolbarPlugIn";  ///< stands in the toolbar instead

inline bool isToolbarPlugIn(const KTVPlugIn& plugIn)
{
    return QLatin1String(plugIn.metaObject()->className()) == QLatin1String(kToolbarClass);
}

}  // namespace plotix
