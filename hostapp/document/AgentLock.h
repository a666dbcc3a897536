#pragma once

#include "base/ReportableError.h"
#include "records/store/RecordBlock.h"

#include <QtCore/QString>

#include <memory>

class QLockFile;

/// The right to record into one agent of a site, for one program at a time: a small file beside the site's while it is
/// held, which names the process. One whose process has died counts no more.
///
/// *Owned* by who records; any one thread.
namespace plotix {

/// Somebody else records into the agent.
class AgentIsRecorded : public ReportableError {
public:
    using ReportableError::ReportableError;
};

class AgentLock {
public:
    /// Throws ReportableError when somebody else records into the agent. Where no such file can be made, nothing is
    /// locked.
    AgentLock(const QString& site, RowId agent, const QString& agentName);
    bool isHeld() const;  ///< false: no such file can be made
    ~AgentLock();
    AgentLock(const AgentLock&) = delete;
    AgentLock& operator=(const AgentLock&) = delete;

private:
    std::unique_ptr<QLockFile> m_file;
};

}  // namespace plotix
