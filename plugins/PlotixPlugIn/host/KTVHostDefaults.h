#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

/// The services used where a host has installed none: those of a program without a desktop.
///
/// Alerts are written to stderr and count as dismissed; save panels are cancelled; the sharing picker offers nothing;
/// no modifier key is held down; texts are their keys; no quick range can be given; help stays closed. Numbers are
/// rounded as described at KTVConverter, the paper is A4, and messages really are shown: a plain label, centred over
/// its view. The objects live as long as the process. Main thread only.
const KTVHostServices& defaultHostServices();
