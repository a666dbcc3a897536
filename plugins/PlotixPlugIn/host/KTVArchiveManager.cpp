#include "plugins/PlotixPlugIn/host/KTVArchiveManager.h"

KTVArchiveManager::~KTVArchiveManager() = default;

std::optional<KTVArchiveManager::Span> KTVArchiveManager::recordedSpan() const
{
    return std::nullopt;
}
