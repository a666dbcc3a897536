#include "hostapp/document/HandingOver.h"

#include "base/ReportableError.h"

namespace plotix {

std::optional<HandingOver::Done> HandingOver::store()
{
    m_batch.reset();
    std::optional<WaitingRecords::Batch> batch = m_waiting->oldest();
    if (!batch)
        return std::nullopt;
    if (!m_appender || m_appender->agent() != batch->agent)
        m_appender = std::make_unique<AgentAppender>(m_desk, batch->agent);
    const std::size_t records = batch->byPlace.times.size();
    const Done done{records, m_appender->appendWhatIsNew(batch->byPlace), batch->byPlace.times[records - 1]};
    m_batch = std::move(batch);
    return done;
}

void HandingOver::settle()
{
    if (m_batch)
        m_waiting->remove(*m_batch);
    m_batch.reset();
}

HandingOver::Done handOverLeft(const QString& desk, const ArchiveProgress& progress)
{
    const std::vector<WaitingFile> files = waitingBeside(desk);
    std::size_t all = 0;
    for (const WaitingFile& file : files)
        all += file.records;
    HandingOver::Done done;
    const auto goOn = [&] {
        return !progress ||
               progress(all == 0 ? 1 : std::min(1.0, static_cast<double>(done.records) / static_cast<double>(all)));
    };
    for (const WaitingFile& file : files) {
        std::shared_ptr<WaitingRecords> waiting;
        try {
            waiting = std::make_shared<WaitingRecords>(desk, file.agentName);
        } catch (const ReportableError&) {  // a recorder has them, and hands them over itself
            continue;
        }
        HandingOver handing(desk, waiting);
        while (goOn()) {
            const std::optional<HandingOver::Done> step = handing.store();
            if (!step)
                break;
            handing.settle();
            done.records += step->records;
            done.others += step->others;
            done.last = step->last;
        }
    }
    return done;
}

}  // namespace plotix
