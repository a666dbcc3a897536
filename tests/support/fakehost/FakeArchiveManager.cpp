#include "tests/support/fakehost/FakeArchiveManager.h"

#include <QtCore/QStringList>

#include <cassert>
#include <utility>

namespace fakehost {
namespace {

QString describe(const std::optional<KTVPropertyList>& properties)
{
    if (!properties)
        return QStringLiteral("(null)");
    QStringList keys;
    for (const KTVPropertyPtr& property : *properties)
        keys.append(property->propertyName());
    return keys.join(u',');
}

}  // namespace

FakeArchiveManager::~FakeArchiveManager()
{
    waitForWorkers();
}

void FakeArchiveManager::waitForWorkers()
{
    for (std::thread& worker : m_workers)
        worker.join();
    m_workers.clear();
}

void FakeArchiveManager::fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties,
                                                   const plotix::OptionalDate& fromDate,
                                                   const plotix::OptionalDate& toDate, int maximumSamples,
                                                   ProgressHandler progressHandler, CompletionHandler completionHandler)
{
    m_log->note(QStringLiteral("archiveManager.fetch ") + describe(properties));
    m_fetches.push_back({{properties, fromDate, toDate, maximumSamples, std::move(progressHandler), false},
                         std::move(completionHandler)});
    if (!m_reply)
        return;
    const std::size_t index = m_fetches.size() - 1;
    const Answer reply = m_reply(m_fetches[index].fetch);
    CompletionHandler handler = takeHandler(index);
    if (m_replyFrom == Where::OnWorkerThread)
        m_workers.emplace_back(&FakeArchiveManager::complete, std::move(handler), reply);
    else
        complete(std::move(handler), reply);
}

const FakeArchiveManager::Fetch& FakeArchiveManager::fetch(std::size_t index) const
{
    assert(index < m_fetches.size());
    return m_fetches[index].fetch;
}

void FakeArchiveManager::answer(std::size_t index, const Answer& answer, Where where)
{
    CompletionHandler handler = takeHandler(index);
    if (where == Where::OnWorkerThread)
        std::thread(&FakeArchiveManager::complete, std::move(handler), answer).join();
    else
        complete(std::move(handler), answer);
}

void FakeArchiveManager::answerLast(const Answer& answer, Where where)
{
    assert(!m_fetches.empty());
    this->answer(m_fetches.size() - 1, answer, where);
}

void FakeArchiveManager::answerFetchesWith(Reply reply, Where where)
{
    m_reply = std::move(reply);
    m_replyFrom = where;
}

bool FakeArchiveManager::reportProgress(std::size_t index, double progress)
{
    bool stop = false;
    fetch(index).progressHandler(progress, &stop);
    return stop;
}

void FakeArchiveManager::complete(CompletionHandler handler, const Answer& answer)
{
    handler(answer.records, answer.number, answer.error);
}

FakeArchiveManager::CompletionHandler FakeArchiveManager::takeHandler(std::size_t index)
{
    assert(index < m_fetches.size() && !m_fetches[index].fetch.isAnswered);
    m_fetches[index].fetch.isAnswered = true;
    return std::exchange(m_fetches[index].completionHandler, {});
}

}  // namespace fakehost
