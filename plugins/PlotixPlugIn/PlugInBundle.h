#pragma once

#include <QtCore/QString>
#include <QtGui/QIcon>

/// The bundle that holds the module's classes: what it is called, its version, its resources. Free functions; main
/// thread only.
namespace plugInBundle {

inline constexpr auto kIdentifier = "org.plotix.PlotixPlugIn";  // stored by hosts with their toolbars: never change
inline constexpr auto kShortVersion = "1.0";
inline constexpr int kVersion = 1;

/// What both plug-in classes tell the host of themselves.
QString name();
QString textDescription();
QIcon icon();

/// Makes the resources under ":/PlotixPlugIn" available; every plug-in class calls it when it is made.
void registerResources();

}  // namespace plugInBundle
