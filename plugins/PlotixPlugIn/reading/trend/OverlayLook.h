#pragma once

#include "plotkit/model/CPTXYGraph.h"

#include <QtGui/QFont>

class QPainter;

/// How what is drawn above a graph suits the graph: whether it is dark or light, and how large its texts are. Main
/// thread only.
namespace plotix {

/// By the graph's own labels: light writing means a dark graph.
bool isDark(const CPTXYGraph& graph);

/// How large texts, flags and boxes above a graph are, where they are 1 in one of the usual text size: smaller and
/// larger as its labels are, within 0.5 … 2.
double textScale(const CPTXYGraph& graph);

/// Whether pixels are drawn, rather than lines and letters of a page: also where a widget is painted onto a page.
bool drawsPixels(const QPainter& painter);

/// Whether what is drawn is seen while it is worked with: a picture and a page have no pointer, and nothing to grab.
bool isOnScreen(const QPainter& painter);

enum class TextWeight { Regular, Bold };

/// For a text above a graph that has `usualSize` points in a graph of the usual text size.
QFont textFont(const CPTXYGraph& graph, TextWeight weight, double usualSize);

}  // namespace plotix
