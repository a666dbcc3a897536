#include "plugins/PlotixPlugIn/host/KTVWindowController.h"

KTVWindowController::~KTVWindowController() = default;
