#include "plugins/PlotixPlugIn/host/KTVArchiveManager.h"

KTVArchiveManager::~KTVArchiveManager() = default;
