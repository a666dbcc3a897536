#pragma once

#include "hostapp/live/ReadingSource.h"
#include "hostapp/live/sources/computer/MachineSource.h"

/// This computer as a live source: what `MachineReadings` makes of one look at it a reading.
namespace plotix {

/// The agent's name in a site. Stored: never change.
inline constexpr const char* kMachineAgentName = "This Computer";

/// A sensor that was not there at the start has no property; one that went has no value.
std::unique_ptr<ReadingSource> makeComputerSource(std::unique_ptr<MachineSource> machine = makeSystemMachineSource());

}  // namespace plotix
