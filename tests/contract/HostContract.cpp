#include "tests/contract/HostUnderTest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>

#include <mutex>

namespace contract {

HostContract::Answer HostContract::fetch(const std::optional<KTVPropertyList>& properties, plotix::OptionalDate from,
                                         plotix::OptionalDate to)
{
    struct Shared {
        std::mutex lock;
        Answer answer;
    };
    const auto shared = std::make_shared<Shared>();
    host->agent()->archiveManager()->fetchRecordsForProperties(
        properties, from, to, kMaximumSamplesUnlimited, [](double, bool*) {},
        [shared](KTVRecordDictionaryPtr records, double, std::optional<KTVError> error) {
            const std::lock_guard guard(shared->lock);
            shared->answer = {std::move(records), std::move(error), shared->answer.completions + 1};
        });
    const auto seen = [&] {
        const std::lock_guard guard(shared->lock);
        return shared->answer;
    };
    const QDeadlineTimer deadline(20'000);
    while (seen().completions == 0 && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    QCoreApplication::processEvents();
    return seen();
}

KTVRecordDictionaryPtr HostContract::fetchEverything()
{
    const Answer answer =
        fetch(host->agent()->properties().objects(), plotix::Date{kTimes.front()}, plotix::Date{kTimes.back()});
    EXPECT_NE(answer.records, nullptr);
    return answer.records ? answer.records : std::make_shared<KTVRecordDictionary>();
}

INSTANTIATE_TEST_SUITE_P(Hosts, HostContract,
                         testing::Values(HostRow{"Fake", makeFakeHost}, HostRow{"Site", makeSiteHost}),
                         [](const auto& row) { return row.param.name; });

}  // namespace contract
