#pragma once

/// Whether windows can be shown. Checked before the toolkit starts, because without a display that ends the program.
/// Free function; main thread, before the QApplication.
namespace plotix {

/// QT_QPA_PLATFORM decides if it is set: false for offscreen and minimal, true for any other. Else true when a Wayland
/// socket or an X server answers.
bool isDisplayReachable();

}  // namespace plotix
