#pragma once

class QMenu;

namespace plotix {

/// Fills the menu with the choices of `ColourScheme`, of which one is on, also after another window has changed it.
/// Main thread only.
void fillAppearanceMenu(QMenu* menu);

}  // namespace plotix
