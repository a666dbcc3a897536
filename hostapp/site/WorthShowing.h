#pragma once

#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <vector>

/// Which of many imported properties make a first trend that is worth looking at. Pure; any thread, except that
/// properties of an agent are read on the main thread.
namespace plotix {

/// Where the values of a property lie.
struct ValueExtent {
    QString propertyName;            ///< its key
    double lowest = 0, highest = 0;  ///< in its archived unit
};

/// A handful at most, in up to three lanes of a unit each, and in each such that no line is pressed flat by another.
/// The first property with a unit leads; where none has one, the first with other values than 0 and 1, and those of its
/// order of magnitude go with it. Left out are parts of dates, numbers of rows, directions, and values that never
/// change, as long as anything else is there.
KTVPropertyList worthShowing(const KTVPropertyList& properties, const std::vector<ValueExtent>& extents);

}  // namespace plotix
