#pragma once

class QApplication;

/// How the program's own windows look: the Fusion style in quiet dark greys that let the graph stand out.
namespace plotix {

/// Sets style, palette and the few rules the palette cannot express, for the whole application.
void applyAppearance(QApplication& application);

}  // namespace plotix
