#include "plugins/PlotixPlugIn/host/KTVSourceListItem.h"

KTVSourceListItem::~KTVSourceListItem() = default;
