#pragma once

#include "plotkit/model/CPTStyles.h"

#include <QtCore/QString>

#include <memory>
#include <vector>

class CPTScatterPlot;

/// The legend of a graph: which plots it names, how, and where it stands. A value; the main thread, as the plots.
///
/// It stands inside the plot area frame, beside the labels of the axes; the plot area becomes smaller by as much. Plots
/// that are hidden are left out.
enum class CPTLegendPlace { None, Below, Right };

struct CPTLegend {
    struct Entry {
        std::weak_ptr<const CPTScatterPlot> plot;  ///< whose line is shown as a sample
        QString text;                              ///< beside it
    };

    CPTLegendPlace place = CPTLegendPlace::None;
    std::vector<Entry> entries{};
    CPTTextStyle textStyle{};
};
