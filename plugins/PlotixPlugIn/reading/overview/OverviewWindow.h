#pragma once

#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QRectF>

/// The window of an overview: which of its parts a point grabs, and which times a drag shows. A value; any thread.
namespace plotix {

struct OverviewWindow {
    enum class Grip {
        Inside,    ///< moves it
        From,      ///< moves its beginning
        To,        ///< moves its end
        Elsewhere  ///< draws another one
    };

    QRectF strip;    ///< points; `whole` is spread over its width, which is not 0
    TimeSpan whole;  ///< with a length
    TimeSpan shown;  ///< may reach beyond

    double xOf(double time) const;
    double timeAt(double x) const;
    QRectF window() const;  ///< within the strip; at least a few points wide

    /// What a press there means. A window that is the whole strip can only be narrowed.
    Grip gripAt(double x) const;
    /// What is shown once a drag that grabbed `grip` at `fromX` has come to `toX`.
    TimeSpan dragged(Grip grip, double fromX, double toX) const;
    /// The same length of time about the time at x.
    TimeSpan centredAt(double x) const;
};

}  // namespace plotix
