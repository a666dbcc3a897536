#pragma once

#include "hostapp/live/sources/computer/MachineReadings.h"

#include <memory>

/// Where snapshots of a machine come from: this computer, or a test.
///
/// Used from one thread at a time, which need not be the one that made it. Never throws: what cannot be read is empty.
namespace plotix {

class MachineSource {
public:
    virtual ~MachineSource() = default;
    virtual MachineTexts look() = 0;
};

/// This computer, by the files its kernel keeps under `root`.
std::unique_ptr<MachineSource> makeSystemMachineSource(const QString& root = QStringLiteral("/"));

}  // namespace plotix
