#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

KTVUserInterface::~KTVUserInterface() = default;
