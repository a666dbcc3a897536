#pragma once

#include "hostapp/site/FigureRecipe.h"

class QWidget;

/// Finds the site of a view that a figure or a link tells. Main thread only.
namespace plotix {

/// In the folder, or among the sites opened last; else the user is asked. Empty: the user gave up.
QString siteToShow(const ShownView& view, const QString& folder, QWidget* parent);

/// Whether a file is a picture of a kind that Plotix draws, by its first bytes.
bool isFigure(const QString& path);

/// What a file shows that Plotix drew; nothing for any other file, and for one that does not tell.
std::optional<ShownView> viewInFile(const QString& path);

}  // namespace plotix
