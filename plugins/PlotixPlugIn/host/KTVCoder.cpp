#include "plugins/PlotixPlugIn/host/KTVCoder.h"

KTVEncoder::~KTVEncoder() = default;
KTVDecoder::~KTVDecoder() = default;
