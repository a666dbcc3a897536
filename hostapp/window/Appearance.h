#pragma once

#include <QtCore/QString>

class QApplication;
class QPalette;

/// How the program's own windows look: the Fusion style in quiet greys, dark ones that let the graph stand out or light
/// ones. Main thread only.
namespace plotix {

enum class ColourScheme { LikeDesktop, Light, Dark };

/// Sets style, palette and the few rules the palette cannot express, for the whole application, in the scheme the user
/// chose. A desktop that changes between light and dark is followed; without one the look is dark.
void applyAppearance(QApplication& application);

ColourScheme chosenColourScheme();  ///< `LikeDesktop` unless chosen

/// Stores the choice in the user's settings and shows it in all windows at once.
void chooseColourScheme(ColourScheme scheme);

/// The look of graphs, by name, that suits the program's windows as they are now.
QString lookOfGraphs();

/// Whether texts are lighter than what they stand on.
bool isDark(const QPalette& palette);

}  // namespace plotix
