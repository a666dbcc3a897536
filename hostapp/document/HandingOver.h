#pragma once

#include "hostapp/document/WaitingRecords.h"

#include <memory>

/// Bringing the records that wait on a desk to the server they belong to: in order, a batch at a time, each taken from
/// the desk only when the server has it. Nothing comes to be stored twice, and nothing that the server has is changed,
/// wherever it is interrupted: what has a time that is taken there is left out.
namespace plotix {

/// Of one agent. *Shares* what waits; one thread at a time.
class HandingOver {
public:
    HandingOver(QString desk, std::shared_ptr<WaitingRecords> waiting)
        : m_desk(std::move(desk)), m_waiting(std::move(waiting))
    {
    }

    struct Done {
        std::size_t records = 0;  ///< that wait no more
        std::size_t others = 0;   ///< of those, left out as the server has something else at their times
        double last = 0;          ///< time of the last of them
    };
    /// Stores the oldest batch there. Nothing: nothing waits. Throws ReportableError; everything waits on then.
    std::optional<Done> store();
    /// Takes that batch from this desk; does not wait for the server. Throws ReportableError; it is stored there again
    /// then, which changes nothing.
    void settle();

private:
    const QString m_desk;
    const std::shared_ptr<WaitingRecords> m_waiting;
    std::unique_ptr<AgentAppender> m_appender;
    std::optional<WaitingRecords::Batch> m_batch;  // on the server, and not taken from here yet
};

/// Hands over what waits beside a desk's file and no recorder has. Stops between two batches where `progress` says so.
/// Throws ReportableError. Any one thread.
HandingOver::Done handOverLeft(const QString& desk, const ArchiveProgress& progress = {});

}  // namespace plotix
