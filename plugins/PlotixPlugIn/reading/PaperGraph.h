#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/looks/PaperColors.h"

/// A graph as it looks on paper: dark on white, thin lines, texts of ten points.
///
/// Free functions; main thread only. The graph is as it was when they return, and is drawn anew on screen.
namespace plotix {

enum class PaperTitles { LeftOut, Kept };  ///< those of the axes; the graph's own is always left out

/// Paints the graph into `rect` (points). Hidden plots are left out. On a page of vectors lines stay
/// vectors.
void paintOnPaper(QPainter& painter, CPTXYGraph& graph, const QRectF& rect, PaperTitles titles = PaperTitles::LeftOut);

}  // namespace plotix
