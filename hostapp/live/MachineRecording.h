#pragma once

#include "hostapp/live/sources/computer/MachineSource.h"
#include "records/store/RecordStore.h"

#include <deque>

/// Records a machine into a site document, one record a call: what a recorder does, without its clock and its thread.
///
/// What is stored stays stored. While the site cannot be written (another program writes it, the disk is full, the file
/// is gone) records wait in memory and every call tries again; after kMostWaiting of them the oldest are given up.
/// While the clock stands at or before the last record, which happens after it was set back, nothing is recorded: a
/// record there would take the place of one that is stored. One thread at a time.
namespace plotix {

/// The agent's name in a site. Stored: never change.
inline constexpr const char* kMachineAgentName = "This Computer";

struct RecordingStatus {
    enum class State {
        Recording,       ///< the last record is stored
        WaitingForSite,  ///< it waits in memory; `message` says for what
        ClockSetBack,    ///< it was left out; `message` says until when
    };
    State state = State::Recording;
    QString message;               ///< one line for people; empty while all is well
    std::size_t stored = 0;        ///< records, since the recording began
    std::size_t waiting = 0;       ///< records in memory
    std::size_t lost = 0;          ///< records given up
    std::optional<double> last{};  ///< time of the last record stored, of this recording or an earlier one
};

class MachineRecording {
public:
    static constexpr std::size_t kMostWaiting = 100'000;  ///< more than a day of seconds

    /// Makes site, agent and properties where they are missing. `interval` is how many seconds the calls will be apart.
    /// Throws ReportableError.
    MachineRecording(const QString& site, std::unique_ptr<MachineSource> source, double interval = 1);

    RowId agent() const { return m_agent; }
    const QStringList& propertyNames() const { return m_names; }

    /// Looks at the machine and stores what it says under the time `now`, seconds since 1970-01-01 UTC. Never throws.
    RecordingStatus record(double now);

    /// Tries to store what waits; without anything waiting nothing happens.
    RecordingStatus storeWaiting();

private:
    struct Waiting {
        double time = 0;
        std::vector<std::optional<double>> values;  ///< by property
    };
    void makeProperties(const QString& site, const std::vector<MachineReading>& readings);
    RecordBlock waitingAsBlock() const;
    void append();
    void openAppender();
    std::optional<double> lastTime() const;

    QString m_site;
    std::unique_ptr<MachineSource> m_source;
    MachineReadings m_readings;
    RowId m_agent = 0;
    QStringList m_names;
    std::vector<RowId> m_properties;  // in the order of the names
    std::unique_ptr<RecordAppender> m_appender;
    std::deque<Waiting> m_waiting;
    RecordingStatus m_status;
};

}  // namespace plotix
