#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a computer measures of itself, from the texts of its kernel.
///
/// Pure: no file, no clock. Rates come from counters, so they need two snapshots: they are absent in the first one,
/// after a gap as long as a sleep, and when a counter fell (it wrapped, or its device was plugged in again). A missing
/// or unexpected text leaves its readings absent; nothing throws. Any one thread.
namespace plotix {

/// One snapshot of the machine. An empty text: this machine does not have it.
struct MachineTexts {
    struct Sensor {
        QString name;       ///< for people, the same in every snapshot
        std::string value;  ///< thousandths of a degree Celsius
    };
    double seconds = 0;     ///< by a clock that is never set and goes on while the machine sleeps
    std::string load;       ///< /proc/loadavg
    std::string processor;  ///< /proc/stat
    std::string memory;     ///< /proc/meminfo
    std::string disks;      ///< /proc/diskstats
    std::string network;    ///< /proc/net/dev
    std::vector<Sensor> sensors;
};

struct MachineReading {
    QString name, unit;  ///< of the property. Stored: never change
    std::optional<double> value;
};

/// Bytes or sectors counted since the machine started, in and out, by device.
struct MachineCounter {
    std::uint64_t in = 0, out = 0;
};
using MachineCounters = std::map<std::string, MachineCounter, std::less<>>;

/// Whole disks only: what a partition or a layer above moves is counted by the disk below it. Sectors of 512 bytes.
MachineCounters diskCounters(std::string_view text);

/// Adapters that lead out of the machine: neither the loop to itself nor bridges between its own containers. Bytes.
MachineCounters networkCounters(std::string_view text);

class MachineReadings {
public:
    /// Two snapshots further apart than `longestGap` seconds give no rates.
    explicit MachineReadings(double longestGap = 10) : m_longestGap(longestGap) {}

    /// The readings of this snapshot, always the same ones in the same order while the sensors are the same.
    std::vector<MachineReading> read(const MachineTexts& texts);

private:
    struct Processor {
        std::uint64_t busy = 0, total = 0;
    };
    struct Counted {
        double seconds = 0;
        std::optional<Processor> processor;
        MachineCounters disks, network;
    };
    static std::optional<Processor> processorOf(std::string_view text);

    double m_longestGap;
    std::optional<Counted> m_before;
};

}  // namespace plotix
