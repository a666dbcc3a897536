#pragma once

/// Whether there is a display to show windows on, found out before the toolkit starts, which would end the program when
/// there is none. Free function; main thread, before the QApplication.
namespace plotix {

/// False for platforms that show nothing (QT_QPA_PLATFORM is offscreen or minimal); with another one named, true. With
/// none named: true when a Wayland socket or an X server answers.
bool isDisplayReachable();

}  // namespace plotix
