#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/window/RecordingIndicator.h"
#include "hostapp/window/SiteRecording.h"
#include "tests/records/clickhouse/ServerForTests.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace plotix {

namespace {

/// The window's sign of a recording into a site on a server.
class ForwardingIndicatorOnServerTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!ServerForTests::running().isOwn())
            GTEST_SKIP() << "the server is somebody else's";
        qputenv("PLOTIX_DATA_HOME", folder.path().toUtf8());
        storeServer(address)->create();
        document = SiteDocument::open(deskFileOf(address));
        recording = std::make_unique<SiteRecording>(document);
        indicator = std::make_unique<RecordingIndicator>(recording.get());
    }
    void TearDown() override
    {
        recording.reset();
        document.reset();
        qunsetenv("PLOTIX_DATA_HOME");
    }
    bool saysThatRecordsWait() const
    {
        return indicator->text().contains(QStringLiteral("on this disk for the server"));
    }

    QTemporaryDir folder;
    const QString address = ServerForTests::running().newSite().text();
    std::shared_ptr<SiteDocument> document;
    std::unique_ptr<SiteRecording> recording;
    std::unique_ptr<RecordingIndicator> indicator;
};

TEST_F(ForwardingIndicatorOnServerTest, SaysHowManyWaitWhileTheServerIsAway)
{
    recording->switchOn();
    EXPECT_TRUE(QTest::qWaitFor([&] { return recording->stored() > 0; }, 20'000));
    EXPECT_FALSE(saysThatRecordsWait()) << indicator->text().toStdString();
    ServerForTests::running().kill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return saysThatRecordsWait(); }, 20'000)) << indicator->text().toStdString();
    ServerForTests::running().restart();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !saysThatRecordsWait(); }, 20'000)) << indicator->text().toStdString();
    EXPECT_EQ(recording->onDisk(), 0U);
}

}  // namespace

}  // namespace plotix
