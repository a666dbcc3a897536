#include "hostapp/document/ArchiveManager.h"

#include "base/MainQueue.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/core/Units.h"
#include "records/store/MemoryRecordStore.h"
#include "tests/records/sqlite/ArchiveFixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>

#include <atomic>

namespace {

using plotix::ArchiveManager;
using plotix::MainQueue;
using plotix::SiteProperty;

class ArchiveManagerTest : public ArchiveFixture {
protected:
    ArchiveManagerTest()
    {
        own = {property(air, "air", "degC"), property(wind, "wind", "m/s")};
        makeManager(1'000'000'000);
    }

    void makeManager(std::uint64_t budget)
    {
        manager = std::make_unique<ArchiveManager>(
            opened(), agent, [this] { return own; }, plotix::Units::shared(), budget, pages);
    }
    /// Over a store that keeps its records, and reads them, in memory.
    void makeManagerElsewhere(std::uint64_t budget, const plotix::RecordBlock& kept)
    {
        const auto elsewhere = std::make_shared<plotix::MemoryRecordStore>();
        elsewhere->addProperty(agent, air);
        elsewhere->appender()->append(agent, kept);
        manager = std::make_unique<ArchiveManager>(
            elsewhere, agent, [this] { return own; }, plotix::Units::shared(), budget);
    }

    static std::shared_ptr<SiteProperty> property(plotix::RowId row, const QString& key, const QString& unit)
    {
        SiteProperty::Description description;
        description.id = row;
        description.name = key.toUpper();
        description.propertyName = key;
        description.unit = description.archivedUnit = unit;
        description.color = QColor("orange");
        return std::make_shared<SiteProperty>(description, plotix::Units::shared());
    }

    void fetch(const std::optional<KTVPropertyList>& properties, plotix::OptionalDate from = {},
               plotix::OptionalDate to = {}, KTVArchiveManager::ProgressHandler progress = {})
    {
        manager->fetchRecordsForProperties(
            properties, from, to, kMaximumSamplesUnlimited, std::move(progress),
            [this](KTVRecordDictionaryPtr read, double number, const std::optional<KTVError>& what) {
                ++answers;
                records = std::move(read);
                count = number;
                error = what;
                onMainThread = MainQueue::isMainThread();
            });
    }
    void waitForAnswers()
    {
        while (manager->pendingFetches() > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void fetchAndWait(const std::optional<KTVPropertyList>& properties, plotix::OptionalDate from = {},
                      plotix::OptionalDate to = {}, KTVArchiveManager::ProgressHandler progress = {})
    {
        fetch(properties, from, to, std::move(progress));
        waitForAnswers();
    }

    static constexpr std::uint64_t kFewBytes = 100'000;

    KTVPropertyList own;
    std::shared_ptr<plotix::PageCache> pages = std::make_shared<plotix::PageCache>();
    std::unique_ptr<ArchiveManager> manager;
    KTVRecordDictionaryPtr records;
    std::optional<KTVError> error;
    double count = -1;
    std::atomic<int> answers = 0;
    bool onMainThread = true;
};

TEST_F(ArchiveManagerTest, AnswersEveryRecordOfTheRange)
{
    store(ramp(air, 0, 40000));
    fetchAndWait(own, plotix::Date{100}, plotix::Date{39000});
    ASSERT_TRUE(records && records->time());
    EXPECT_EQ(records->time()->size(), 38901U);
    EXPECT_EQ(count, 38901);
    EXPECT_FALSE(error);
    EXPECT_EQ(records->columnForKey("air")->unitValue(5), 105);
    EXPECT_FALSE(records->columnForKey("wind")->isValid(5));
}

TEST_F(ArchiveManagerTest, TellsHowFarItsRecordsReach)
{
    EXPECT_FALSE(manager->recordedSpan());
    store(ramp(air, 100, 40));
    const auto span = manager->recordedSpan();
    ASSERT_TRUE(span);
    EXPECT_EQ(span->first.seconds, 100);
    EXPECT_EQ(span->last.seconds, 139);
}

TEST_F(ArchiveManagerTest, AnswersFromWhicheverStoreItIsGiven)
{
    makeManagerElsewhere(1'000'000, ramp(air, 7, 3));
    fetchAndWait(own);
    EXPECT_EQ(records->time()->size(), 3U);
    EXPECT_EQ(records->columnForKey("air")->unitValue(2), 9);
    EXPECT_FALSE(records->columnForKey("wind")->isValid(2));
}

TEST_F(ArchiveManagerTest, ColumnsStandInTheOrderAskedFor)
{
    store(ramp(air, 0, 3));
    fetchAndWait(KTVPropertyList{own[1], own[0], own[1]});
    ASSERT_EQ(records->columns().size(), 2U);
    EXPECT_EQ(records->columns()[0].first, "wind");
    EXPECT_EQ(records->columns()[1].first, "air");
}

TEST_F(ArchiveManagerTest, ValuesLeaveInTheCurrentUnit)
{
    store(block({1}, {column(air, {100})}));
    own[0]->setUnit("°F");
    fetchAndWait(own);
    const auto column = records->columnForKey("air");
    EXPECT_EQ(column->unitValue(0), 212);
    EXPECT_EQ(column->archivedValues()[0], 100);
    EXPECT_EQ(column->unitSymbol(), "°F");
    column->setUnit("K");
    EXPECT_EQ(column->unitValue(0), 373.15);
}

TEST_F(ArchiveManagerTest, SnapshotsCarryWhatThePropertyShows)
{
    store(ramp(air, 0, 2));
    fetchAndWait(own);
    const KTVPropertyPtr snapshot = records->columnForKey("air")->snapshotAt(1);
    EXPECT_EQ(snapshot->name(), "AIR");
    EXPECT_EQ(snapshot->color(), QColor("orange"));
    EXPECT_EQ(snapshot->unitValue(), 1);
}

TEST_F(ArchiveManagerTest, AUnitChangedDuringAFetchIsThatOfItsAnswer)
{
    store(block({1}, {column(air, {100})}));
    fetch(own);
    own[0]->setUnit("°F");
    waitForAnswers();
    EXPECT_EQ(records->columnForKey("air")->unit(), "°F");
    EXPECT_EQ(records->columnForKey("air")->unitValue(0), 212);
}

TEST_F(ArchiveManagerTest, AColourChangedDuringAFetchIsThatOfItsAnswer)
{
    store(ramp(air, 0, 2));
    fetch(own);
    std::static_pointer_cast<SiteProperty>(own[0])->setColor(QColor("teal"));
    waitForAnswers();
    EXPECT_EQ(records->columnForKey("air")->snapshotAt(1)->color(), QColor("teal"));
}

TEST_F(ArchiveManagerTest, AUnitChangedWhileTheAnswerWaitsIsStillTaken)
{
    store(block({1}, {column(air, {100})}));
    QString taken;
    manager->fetchRecordsForProperties(
        own, {}, {}, kMaximumSamplesUnlimited, {}, [&](const KTVRecordDictionaryPtr& read, auto&&...) {
            MainQueue::main().async([&] { own[0]->setUnit("°F"); });
            MainQueue::main().async([&, read] { taken = read->columnForKey("air")->unit(); });
        });
    waitForAnswers();
    EXPECT_EQ(taken, "°F");
}

TEST_F(ArchiveManagerTest, AnAnswerTakenUpIsTheAskersToConvert)
{
    store(block({1}, {column(air, {100})}));
    fetchAndWait(own);
    own[0]->setUnit("°F");
    EXPECT_EQ(records->columnForKey("air")->unit(), "degC");
}

TEST_F(ArchiveManagerTest, NothingToFetchIsADictionaryWithoutTime)
{
    store(ramp(air, 0, 3));
    for (const std::optional<KTVPropertyList>& properties :
         {std::optional<KTVPropertyList>(), std::optional(KTVPropertyList{}),
          std::optional(KTVPropertyList{property(0, "gone", "m")})}) {
        fetchAndWait(properties);
        ASSERT_TRUE(records);
        EXPECT_FALSE(records->time());
        EXPECT_TRUE(records->columns().empty());
        EXPECT_FALSE(error);
    }
    EXPECT_EQ(answers, 3);
}

TEST_F(ArchiveManagerTest, APropertyThatIsNotTheAgentsGetsNoKey)
{
    store(ramp(air, 0, 3));
    fetchAndWait(KTVPropertyList{own[0], property(0, "gone", "m"), property(wind, "wind", "m/s"), nullptr});
    EXPECT_EQ(records->columns().size(), 1U);
    EXPECT_EQ(records->time()->size(), 3U);
}

TEST_F(ArchiveManagerTest, ARangeWithoutRecordsHasAnEmptyTime)
{
    fetchAndWait(own);
    EXPECT_EQ(records->time()->size(), 0U);
    EXPECT_EQ(records->columns().size(), 2U);
}

TEST_F(ArchiveManagerTest, TheCallReturnsAtOnceAndAnswersOnAWorker)
{
    store(ramp(air, 0, 3));
    QThread* progressThread = nullptr;
    fetchAndWait(own, {}, {}, [&](double, bool*) { progressThread = QThread::currentThread(); });
    EXPECT_FALSE(onMainThread);
    EXPECT_NE(progressThread, QThread::currentThread());
}

TEST_F(ArchiveManagerTest, TheStopFlagEndsTheFetchWithoutTime)
{
    store(ramp(air, 0, 40000));
    fetchAndWait(own, {}, {}, [](double progress, bool* stop) { *stop = progress > 0.3; });
    ASSERT_TRUE(records);
    EXPECT_FALSE(records->time());
    EXPECT_FALSE(error);
    EXPECT_EQ(answers, 1);
}

TEST_F(ArchiveManagerTest, ADamagedArchiveIsAnErrorWithoutDictionary)
{
    store(ramp(air, 0, 2000));
    run("DELETE FROM segment");
    fetchAndWait(own);
    EXPECT_FALSE(records);
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->message.contains("damaged"));
}

TEST_F(ArchiveManagerTest, AFailureSaysWhetherItCameWithADictionary)
{
    store(ramp(air, 0, 2000));
    std::vector<plotix::RecordFailure> failures;
    const auto note = [&](const QString&, plotix::RecordFailure failure) { failures.push_back(failure); };
    makeManagerElsewhere(1, ramp(air, 0, 2000));
    QObject::connect(manager.get(), &ArchiveManager::fetchFailed, note);
    fetchAndWait(own);
    makeManager(1'000'000'000);
    QObject::connect(manager.get(), &ArchiveManager::fetchFailed, note);
    run("DELETE FROM segment");
    fetchAndWait(own);
    EXPECT_EQ(failures, (std::vector{plotix::RecordFailure::TooMany, plotix::RecordFailure::Unreadable}));
}

TEST_F(ArchiveManagerTest, MoreThanTheBudgetIsAnErrorWithoutTime)
{
    makeManagerElsewhere(100 * plotix::bytesPerRecord(2), ramp(air, 0, 1000));
    fetchAndWait(own);
    ASSERT_TRUE(records && error);
    EXPECT_FALSE(records->time());
    EXPECT_TRUE(records->columns().empty());
    EXPECT_TRUE(error->message.contains("choose a range of at most 99 seconds")) << error->message.toStdString();
    fetchAndWait(own, plotix::Date{901});
    EXPECT_FALSE(error);
    EXPECT_EQ(records->time()->size(), 99U);
}

TEST_F(ArchiveManagerTest, LongRecordsAreUnpackedWhereSomebodyLooks)
{
    store(ramp(air, 0, 50'000));
    makeManager(kFewBytes);
    fetchAndWait(own);
    EXPECT_EQ(pages->inUse(), 0U);
    EXPECT_EQ(records->columnForKey("air")->unitValue(49'999), 49'999);
    EXPECT_GT(pages->inUse(), 0U);
}

TEST_F(ArchiveManagerTest, TheMemoryBudgetRefusesNothingThatIsUnpackedWhereSomebodyLooks)
{
    store(ramp(air, 0, 50'000));
    makeManager(1);
    fetchAndWait(own);
    EXPECT_FALSE(error);
    EXPECT_EQ(records->time()->size(), 50'000U);
}

TEST_F(ArchiveManagerTest, WhatIsKnownOfLongRecordsComesWithThem)
{
    store(ramp(air, 0, 50'000));
    makeManager(kFewBytes);
    fetchAndWait(own);
    EXPECT_EQ(records->columnForKey("air")->known().count, 50'000);
    EXPECT_EQ(records->columnForKey("air")->known().sum, 49'999.0 * 25'000);
    EXPECT_EQ(records->columnForKey("wind")->known().count, 0);
}

TEST_F(ArchiveManagerTest, RecordsThatFitEasilyAreReadAtOnce)
{
    store(ramp(air, 0, 50'000));
    makeManager(4 * 50'000 * plotix::bytesPerRecord(2));
    fetchAndWait(own);
    EXPECT_TRUE(records->columnForKey("air")->isResident());
    makeManager(4 * 50'000 * plotix::bytesPerRecord(2) - 4);
    fetchAndWait(own);
    EXPECT_FALSE(records->columnForKey("air")->isResident());
}

TEST_F(ArchiveManagerTest, RecordsThatCannotBeUnpackedAreNoValuesAndToldOnce)
{
    store(ramp(air, 0, 50'000));
    makeManager(kFewBytes);
    std::vector<plotix::RecordFailure> failures;
    QObject::connect(manager.get(), &ArchiveManager::fetchFailed,
                     [&](const QString&, plotix::RecordFailure failure) { failures.push_back(failure); });
    fetchAndWait(own);
    run("UPDATE segment SET data = zeroblob(length(data))");
    EXPECT_FALSE(manager->unpackingFailure());
    EXPECT_FALSE(records->columnForKey("air")->isValid(40'000));
    EXPECT_TRUE(manager->unpackingFailure());
    EXPECT_FALSE(records->columnForKey("air")->isValid(3));
    QCoreApplication::processEvents();
    EXPECT_EQ(failures, std::vector{plotix::RecordFailure::NotUnpacked});
}

TEST_F(ArchiveManagerTest, AFailedFetchIsToldOnTheMainThreadBeforeItsAnswer)
{
    makeManagerElsewhere(1, ramp(air, 0, 1000));
    QStringList order;
    QObject::connect(manager.get(), &ArchiveManager::fetchFailed, [&](const QString& message) { order << message; });
    QObject::connect(manager.get(), &ArchiveManager::fetchAnswered, [&] { order << "answered"; });
    fetchAndWait(own);
    ASSERT_EQ(order.size(), 2);
    EXPECT_EQ(order[0], error->message);
    EXPECT_EQ(order[1], "answered");
}

TEST_F(ArchiveManagerTest, FetchAnsweredComesAfterWhatTheCompletionPosted)
{
    QStringList order;
    QObject::connect(manager.get(), &ArchiveManager::fetchAnswered, [&] { order.append("answered"); });
    manager->fetchRecordsForProperties({}, {}, {}, kMaximumSamplesUnlimited, {},
                                       [&](auto&&...) { MainQueue::main().async([&] { order.append("task"); }); });
    waitForAnswers();
    EXPECT_EQ(order, (QStringList{"task", "answered"}));
}

TEST_F(ArchiveManagerTest, HandlersEndOnTheMainThread)
{
    bool endedOnMainThread = false;
    auto token = std::shared_ptr<int>(new int, [&](int* pointer) {
        endedOnMainThread = MainQueue::isMainThread();
        delete pointer;
    });
    manager->fetchRecordsForProperties({}, {}, {}, kMaximumSamplesUnlimited, {}, [token](auto&&...) {});
    token.reset();
    waitForAnswers();
    EXPECT_TRUE(endedOnMainThread);
}

TEST_F(ArchiveManagerTest, SeveralFetchesAreEachAnsweredOnce)
{
    store(ramp(air, 0, 1000));
    QSignalSpy answered(manager.get(), &ArchiveManager::fetchAnswered);
    std::atomic<int> each = 0;
    for (int i = 0; i < 20; ++i)
        manager->fetchRecordsForProperties(
            own, {}, {}, kMaximumSamplesUnlimited, {},
            [&](const KTVRecordDictionaryPtr& read, auto&&...) { each += read && read->time()->size() == 1000; });
    EXPECT_EQ(manager->pendingFetches(), 20);
    waitForAnswers();
    EXPECT_EQ(each, 20);
    EXPECT_EQ(answered.count(), 20);
}

TEST_F(ArchiveManagerTest, ItsEndWaitsForTheAnswers)
{
    store(ramp(air, 0, 40000));
    for (int i = 0; i < 10; ++i)
        fetch(own);
    manager.reset();
    EXPECT_EQ(answers, 10);
    QCoreApplication::processEvents();
}

TEST_F(ArchiveManagerTest, ReadsRunBesideAnOpenWriter)
{
    store(ramp(air, 0, 5));
    const auto writer = opened()->begin();
    writer->store(agent, ramp(air, 0, 40000));
    fetchAndWait(own);
    EXPECT_EQ(records->time()->size(), 5U);
}

}  // namespace
