#pragma once

#include "hostapp/document/RecordedAgent.h"

#include <QtCore/QString>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/// Records of a site on a server that wait on this desk until the server has them: a file an agent beside the desk's
/// file, which is there only while something waits. It is a site document, so that everything that reads those shows
/// what waits, also where the server never comes back.
namespace plotix {

class AgentLock;

/// *Owns* the right to the agent's file: whoever has one is the only one, by whatever program. Any thread; calls wait
/// for each other. Throws ReportableError.
class WaitingRecords {
public:
    /// Throws where another program has them, and where nobody could tell whether one has.
    WaitingRecords(const QString& desk, const QString& agentName);
    ~WaitingRecords();
    WaitingRecords(const WaitingRecords&) = delete;
    WaitingRecords& operator=(const WaitingRecords&) = delete;

    const QString& path() const { return m_path; }

    /// On the disk when it returns, whatever happens to the process or the machine afterwards. Columns are numbered by
    /// the places of the agent's properties. Throws where the file is as large as it may be: `PLOTIX_WAITING_LIMIT`, or
    /// 1 GB. Requires: all times are behind those that wait, and ascend.
    void keep(const RecordedAgent& agent, const RecordBlock& byPlace);

    struct Batch {
        RecordedAgent agent;
        RecordBlock byPlace;
    };
    /// The oldest records, few enough to be sent at once. Nothing waits: nothing.
    std::optional<Batch> oldest();
    /// When they are stored where they belong. With the last ones goes the file.
    void remove(const Batch& batch);

    std::size_t count() const;
    std::optional<RecordExtent> extent() const;

private:
    struct File;
    void open();
    void make(const RecordedAgent& agent);
    void requireRoom() const;
    void discard();

    const QString m_path;
    const std::unique_ptr<AgentLock> m_lock;
    mutable std::mutex m_mutex;
    std::unique_ptr<File> m_file;  // under the mutex; null: nothing waits
};

/// What waits beside a desk's file, also of recorders that are at work.
struct WaitingFile {
    QString path, agentName;
    std::size_t records = 0;
    std::optional<RecordExtent> extent{};
    QString problem{};  ///< why nothing of it can be read; empty: all can
};
std::vector<WaitingFile> waitingBeside(const QString& desk);

}  // namespace plotix
