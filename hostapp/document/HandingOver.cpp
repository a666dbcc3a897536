#include "hostapp/document/HandingOver.h"

#include "base/ReportableError.h"
#include "hostapp/document/AgentLock.h"

#include <chrono>
#include <functional>
#include <thread>

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

namespace {

/// So long a recorder that begins just now waits for its file at most, and then so long it has the time to take it.
constexpr auto kAtOnce = std::chrono::milliseconds(500);
constexpr auto kPause = std::chrono::milliseconds(100);

/// False: nothing of the agent is left, somebody else hands it over, or it is not to go on.
bool handOverSome(const QString& desk, const QString& agentName, const std::function<bool()>& goOn,
                  HandingOver::Done& done)
{
    std::shared_ptr<WaitingRecords> waiting;
    try {
        waiting = std::make_shared<WaitingRecords>(desk, agentName);
    } catch (const AgentIsRecorded&) {  // whoever records hands over what waits
        return false;
    }
    HandingOver handing(desk, waiting);
    const auto until = std::chrono::steady_clock::now() + kAtOnce;
    while (goOn()) {
        const std::optional<HandingOver::Done> step = handing.store();
        if (!step)
            return false;
        handing.settle();
        done.records += step->records;
        done.others += step->others;
        done.last = step->last;
        if (std::chrono::steady_clock::now() >= until)
            return waiting->count() > 0;
    }
    return false;
}

}  // namespace

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
    QString problem;  // the first one; the other files go all the same
    const auto note = [&](const QString& why) { problem = problem.isEmpty() ? why : problem; };
    for (const WaitingFile& file : files) {
        if (!file.problem.isEmpty()) {
            note(file.problem);
            continue;
        }
        try {
            while (handOverSome(desk, file.agentName, goOn, done))
                std::this_thread::sleep_for(kPause);
        } catch (const ReportableError& error) {
            note(error.message());
        }
    }
    if (!problem.isEmpty())
        throw ReportableError(problem);
    return done;
}

}  // namespace plotix
