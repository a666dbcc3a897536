#pragma once

#include "hostapp/document/RecordedAgent.h"
#include "hostapp/live/ReadingSource.h"
#include "records/store/RecordStore.h"

#include <QtCore/QStringList>

#include <deque>
#include <memory>

/// Records a source into a site document, on each call what was read since the last one: a recorder without its timer
/// and its thread. *Owns* the source.
///
/// What is stored stays stored. While the site cannot be written (another program writes it, the disk is full, the file
/// is gone) records wait in memory and every call tries again; with more than kMostWaiting of them the oldest are
/// dropped. A site on a server is waited for on this desk's disk instead, also from the beginning, and by whoever
/// records or opens the site next. Readings at or before the last record, as after the clock was set back, are left
/// out: they would replace stored records; once those that lie ahead were taken out, recording goes on. One recording
/// at a time has an agent; a second one is refused. When another file takes the site's name, the recording is over:
/// nothing is written to that file, and what was stored is kept beside it if it would be gone otherwise. One thread at
/// a time.
namespace plotix {

struct RecordingStatus {
    enum class State {
        Recording,         ///< the last record is stored
        WaitingForSite,    ///< the last record waits in memory; `message` says for what
        KeptBeside,        ///< the last record is on this disk until the site's server has it; `message` says why
        ClockSetBack,      ///< the last reading was left out; `message` says until when
        WaitingForSource,  ///< nothing can be read; `message` says why
        SiteReplaced,      ///< another file has taken the site's name: nothing is recorded any more; `message` says so
    };
    State state = State::Recording;
    QString message;          ///< one line for people; empty while all is well
    std::size_t stored = 0;   ///< records, since the recording began
    std::size_t waiting = 0;  ///< records in memory
    std::size_t onDisk = 0;   ///< records on this disk that the site's server has not got yet
    std::size_t lost = 0;     ///< records dropped
    std::size_t others = 0;   ///< records that were on this disk and left out: the server has others at their times
    std::optional<double> last{};  ///< time of the last record stored, of this recording or an earlier one
    std::optional<double> onDiskSince{}, lastKept{};  ///< times of the first and the last record on this disk
    QString file;                                     ///< where those on this disk are; empty: the site is on no server
};

class AgentLock;   // hostapp/document
class Forwarding;  // hostapp/live

class Recording {
public:
    static constexpr std::size_t kMostWaiting = 100'000;  ///< more than a day of seconds

    /// Starts the source, and makes site, agent and properties where they are missing. `interval` is how many seconds
    /// the calls will be apart. Throws ReportableError.
    Recording(const QString& site, std::unique_ptr<ReadingSource> source, double interval = 1);
    ~Recording();  ///< stops the source
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /// 0 as long as the site's server could not be told of a new agent.
    RowId agent() const { return m_found.agent; }
    const QString& agentName() const { return m_agentName; }
    const QStringList& propertyNames() const { return m_names; }

    /// Reads from the source and stores what it says. `now` is in seconds since 1970-01-01 UTC. Never throws.
    RecordingStatus record(double now);

    /// Looks whether the site is still where it was, which `record` does too; calls may be closer together.
    RecordingStatus watch();

    /// Tries to store what waits; nothing waits: nothing happens.
    RecordingStatus storeWaiting();

    /// The same at the end, with some patience for a server. What is on this disk stays there.
    RecordingStatus finish();

private:
    void beginOnServer(const QString& address);
    void beginInFile();
    void takeOverState();
    void lockAgent();
    void takeIn(std::vector<Reading> readings);
    RecordBlock waitingByPlace() const;
    void append();
    void openAppender();
    void tryToStore();
    bool isOver() const { return m_status.state == RecordingStatus::State::SiteReplaced; }
    std::optional<double> lastTime() const;
    void askForLast();
    QString placeOfLast() const;
    QString aheadMessage(double last, double now) const;

    QString m_site;
    std::unique_ptr<ReadingSource> m_source;
    QString m_agentName;
    RecordedAgent m_recorded;
    FoundAgent m_found;
    QStringList m_names;
    std::unique_ptr<AgentLock> m_lock;
    std::shared_ptr<RecordStore> m_records;
    std::unique_ptr<RecordAppender> m_appender;
    std::unique_ptr<Forwarding> m_forwarding;  // of a site on a server, instead of the appender
    std::deque<Reading> m_waiting;
    RecordingStatus m_status;
};

}  // namespace plotix
