#pragma once

#include "hostapp/live/ReadingSource.h"
#include "hostapp/live/sources/computer/MachineSource.h"

/// This computer as a live source: a reading is what `MachineReadings` makes of one snapshot of it.
namespace plotix {

/// The agent's name in a site. Stored: never change.
inline constexpr const char* kMachineAgentName = "This Computer";

/// A sensor that appears after the start has no property; one that disappears has no value.
std::unique_ptr<ReadingSource> makeComputerSource(std::unique_ptr<MachineSource> machine = makeSystemMachineSource());

}  // namespace plotix
