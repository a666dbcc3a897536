#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

KTVUnitModel::~KTVUnitModel() = default;
