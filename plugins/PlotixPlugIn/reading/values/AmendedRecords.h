#pragma once

#include "plugins/PlotixPlugIn/host/KTVAmendments.h"

#include <optional>
#include <vector>

/// Which records of a line came late or were corrected. Pure; any thread.
namespace plotix {

/// When the record at a time of the stretch came: between its ends as the time is.
double cameAt(const KTVAmendment& amendment, double time);

/// Without what came late by no more than `delay` seconds; corrections stay. Of a stretch that is late by more only in
/// part, that part.
std::vector<KTVAmendment> lateByMoreThan(double delay, const std::vector<KTVAmendment>& amendments);

/// What happened last to the record at a time; nothing where nothing did.
std::optional<KTVAmendment> amendmentAt(const std::vector<KTVAmendment>& amendments, double time);

}  // namespace plotix
