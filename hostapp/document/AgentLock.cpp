#include "hostapp/document/AgentLock.h"

#include "base/ReportableError.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>

namespace plotix {

AgentLock::AgentLock(const QString& site, RowId agent, const QString& agentName)
{
    const QFileInfo info(site);
    const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    m_file = std::make_unique<QLockFile>(QStringLiteral("%1-agent%2.lock").arg(path).arg(agent));
    m_file->setStaleLockTime(0);  // however long it is held
    if (m_file->tryLock() || m_file->error() != QLockFile::LockFailedError)
        return;
    qint64 process = 0;
    QString host, program;
    m_file->getLockInfo(&process, &host, &program);
    throw AgentIsRecorded(
        QStringLiteral("“%1” is being recorded into “%2” by another program (%3, process %4): end that "
                       "recording first.")
            .arg(agentName, info.fileName(), program.isEmpty() ? QStringLiteral("unknown") : program)
            .arg(process));
}

AgentLock::~AgentLock() = default;

bool AgentLock::isHeld() const
{
    return m_file->isLocked();
}

}  // namespace plotix
