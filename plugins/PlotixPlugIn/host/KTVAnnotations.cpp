#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"

KTVAnnotations::~KTVAnnotations() = default;

KTVAnnotatedAgent::~KTVAnnotatedAgent() = default;
