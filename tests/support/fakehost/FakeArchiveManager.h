#pragma once

#include "plugins/PlotixPlugIn/host/KTVArchiveManager.h"
#include "tests/support/fakehost/CallLog.h"

#include <deque>
#include <thread>
#include <vector>

/// An archive manager that answers when, where and what a test wants.
///
/// Every fetch is kept with its arguments and stays open until it is answered: by hand with `answer` in any order, or
/// by a reply set beforehand, which is given inside the fetch call or from a worker thread. A completion handler is
/// called once, and destroyed on the thread that called it. Fetches still open at the end are dropped unanswered. Calls
/// of the tests and of the plug-in come on the main thread; only handlers run on workers.
namespace fakehost {

class FakeArchiveManager : public KTVArchiveManager {
public:
    enum class Where { OnThisThread, OnWorkerThread };

    /// As the completion handler gets it: nothing, a dictionary, an error, or both.
    struct Answer {
        KTVRecordDictionaryPtr records = {};
        std::optional<KTVError> error = {};
        double number = 0;
    };

    struct Fetch {
        std::optional<KTVPropertyList> properties;
        plotix::OptionalDate fromDate, toDate;
        int maximumSamples = 0;
        ProgressHandler progressHandler;
        bool isAnswered = false;
    };

    using Reply = std::function<Answer(const Fetch& fetch)>;

    explicit FakeArchiveManager(CallLog* log) : m_log(log) {}
    ~FakeArchiveManager() override;  ///< waits for its workers

    void fetchRecordsForProperties(const std::optional<KTVPropertyList>& properties,
                                   const plotix::OptionalDate& fromDate, const plotix::OptionalDate& toDate,
                                   int maximumSamples, ProgressHandler progressHandler,
                                   CompletionHandler completionHandler) override;

    /// What it tells of all its records; nothing at first.
    std::optional<Span> recordedSpan() const override { return m_recordedSpan; }
    void setRecordedSpan(const std::optional<Span>& span) { m_recordedSpan = span; }

    std::size_t fetchCount() const { return m_fetches.size(); }
    /// Requires: index < fetchCount().
    const Fetch& fetch(std::size_t index) const;
    /// Requires: there was a fetch.
    const Fetch& lastFetch() const { return fetch(fetchCount() - 1); }

    /// Answers one fetch. From a worker thread: the handler has run, and is gone, when this returns.
    /// Requires: index < fetchCount(), not answered yet.
    void answer(std::size_t index, const Answer& answer, Where where = Where::OnThisThread);
    void answerLast(const Answer& answer, Where where = Where::OnThisThread);

    /// Every later fetch is answered by `reply`: inside the fetch call, or from a worker that runs beside the caller.
    /// `reply` itself runs on the main thread. An empty one: fetches stay open again.
    void answerFetchesWith(Reply reply, Where where = Where::OnThisThread);

    /// Returns when every worker has called its handler.
    void waitForWorkers();

    /// Calls the fetch's progress handler; true when it asked to stop.
    bool reportProgress(std::size_t index, double progress);

private:
    struct OpenFetch {
        Fetch fetch;
        CompletionHandler completionHandler;
    };
    static void complete(CompletionHandler handler, const Answer& answer);
    CompletionHandler takeHandler(std::size_t index);

    CallLog* m_log;  // borrowed
    std::deque<OpenFetch> m_fetches;
    Reply m_reply;
    std::optional<Span> m_recordedSpan;
    Where m_replyFrom = Where::OnThisThread;
    std::vector<std::thread> m_workers;
};

}  // namespace fakehost
