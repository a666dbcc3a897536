#include "hostapp/live/sources/computer/ComputerSource.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace plotix {

namespace {

/// Seconds; shorter gaps happen on a busy machine, and rates over them are still useful.
constexpr double kShortestSleep = 10;

class ComputerSource : public ReadingSource {
public:
    explicit ComputerSource(std::unique_ptr<MachineSource> machine) : m_machine(std::move(machine)) {}

    QString agentName() const override { return QLatin1String(kMachineAgentName); }

    std::vector<SourceProperty> start(double interval) override
    {
        m_readings = MachineReadings(std::max(kShortestSleep, 5 * interval));
        m_names.clear();
        std::vector<SourceProperty> properties;
        for (const MachineReading& reading : m_readings.read(m_machine->look())) {
            m_names << reading.name;
            properties.push_back({reading.name, reading.unit});
        }
        return properties;
    }

    std::vector<Reading> read(double now) override
    {
        Reading reading{now, std::vector<std::optional<double>>(static_cast<std::size_t>(m_names.size()))};
        for (const MachineReading& one : m_readings.read(m_machine->look())) {
            const qsizetype place = m_names.indexOf(one.name);
            if (place >= 0)
                reading.values[static_cast<std::size_t>(place)] = one.value;
        }
        return {reading};
    }

private:
    std::unique_ptr<MachineSource> m_machine;
    MachineReadings m_readings;
    QStringList m_names;  // of the properties, in their order
};

}  // namespace

std::unique_ptr<ReadingSource> makeComputerSource(std::unique_ptr<MachineSource> machine)
{
    return std::make_unique<ComputerSource>(std::move(machine));
}

}  // namespace plotix
