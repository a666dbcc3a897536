#include "plugins/PlotixPlugIn/host/KTVWebUIDelegate.h"

KTVWebUIDelegate::~KTVWebUIDelegate() = default;
