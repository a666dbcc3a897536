#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/document/SiteSchema.h"
#include "storage/Database.h"
#include "tests/e2e/ProgramTest.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QThread>

#include <algorithm>
#include <csignal>
#include <random>

namespace plotix {

namespace {

/// Runs `plotix record` and ends it the hard way. What the program printed as stored must be there afterwards.
class KilledRecordingTest : public ProgramTest {
protected:
    QString site() const { return path(QStringLiteral("folder/computer.plotix")); }
    QStringList recordArguments() const
    {
        return {QStringLiteral("record"), site(), QStringLiteral("--interval"), QStringLiteral("0.02"),
                QStringLiteral("--print-times")};
    }

    void SetUp() override
    {
        ProgramTest::SetUp();
        ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("folder"))));
    }

    std::unique_ptr<QProcess> startRecording()
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(qEnvironmentVariable("PLOTIX_TEST_BINARY_DIR") + QStringLiteral("/bin/plotix"),
                       recordArguments());
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    /// Waits until so many lines "stored …" have come.
    void waitForStored(QProcess& process, int count)
    {
        while (m_heard.count("stored ") < count && process.state() == QProcess::Running)
            if (process.waitForReadyRead(10'000))
                m_heard += process.readAllStandardOutput();
            else
                break;
    }
    void kill(QProcess& process)
    {
        process.kill();
        ASSERT_TRUE(process.waitForFinished());
        m_heard += process.readAllStandardOutput();
        // A line that broke off does not count.
        QList<QByteArray> lines = m_heard.split('\n');
        lines.removeLast();
        for (const QByteArray& line : lines)
            if (line.startsWith("stored "))
                m_acknowledged.push_back(line.mid(7).toDouble());
        m_heard.clear();
    }

    std::vector<double> storedTimes()
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agentNamed(QStringLiteral("This Computer"));
        if (!agent)
            return {};
        const auto block = recordsOfSite(site())->read(agent->id(), {}, {}, {});
        return {block->times.span().begin(), block->times.span().end()};
    }

    void expectSound()
    {
        Database database(site(), siteSchema(), Database::Access::ReadWrite);
        Statement check(database, "PRAGMA integrity_check");
        ASSERT_TRUE(check.step());
        EXPECT_EQ(check.text(0), "ok");
    }

    /// Everything acknowledged is there, and what was there before is still there, with nothing in between.
    void expectNothingLost()
    {
        const std::vector<double> now = storedTimes();
        ASSERT_GE(now.size(), m_before.size());
        EXPECT_TRUE(std::equal(m_before.begin(), m_before.end(), now.begin()));
        EXPECT_TRUE(std::includes(now.begin(), now.end(), m_acknowledged.begin(), m_acknowledged.end()));
        m_before = now;
    }

    std::vector<double> m_acknowledged, m_before;
    QByteArray m_heard;
};

TEST_F(KilledRecordingTest, FiftyKillsLoseNothingThatWasStored)
{
    ASSERT_EQ(run({QStringLiteral("record"), site(), QStringLiteral("--for"), QStringLiteral("0.1")}), 0)
        << error().toStdString();
    std::mt19937 random(20'240'229);
    constexpr int kKills = 50;
    for (int round = 0; round < kKills; ++round) {
        const auto process = startRecording();
        // Every third is killed while it starts, the others between, or in the middle of, two records.
        if (round % 3 == 0)
            QThread::msleep(random() % 150);
        else
            waitForStored(*process, static_cast<int>(random() % 8));
        QThread::usleep(random() % 20'000);
        kill(*process);
        // Not after every kill: opening the file here recovers the log, which the program itself must also be able to
        // do.
        if (round % 4 == 3)
            expectNothingLost();
    }
    expectNothingLost();
    expectSound();
    EXPECT_GT(m_acknowledged.size(), 50U);
}

TEST_F(KilledRecordingTest, AfterAnOrderlyEndTheSiteIsOneFile)
{
    const auto process = startRecording();
    waitForStored(*process, 3);
    ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGTERM), 0);
    ASSERT_TRUE(process->waitForFinished());
    EXPECT_EQ(process->exitCode(), 0);
    const QByteArray output = m_heard + process->readAllStandardOutput();
    EXPECT_TRUE(output.contains("Recorded ")) << output.toStdString();
    EXPECT_EQ(QDir(path(QStringLiteral("folder"))).entryList(QDir::Files), QStringList{"computer.plotix"});
    const std::size_t stored = storedTimes().size();
    EXPECT_GE(stored, static_cast<std::size_t>(output.count("stored ")));
    EXPECT_TRUE(output.contains("Recorded " + QByteArray::number(qulonglong(stored)) + " records"))
        << output.toStdString();
}

TEST_F(KilledRecordingTest, ACopyOfTheFileIsTheWholeSite)
{
    ASSERT_EQ(run({QStringLiteral("record"), site(), QStringLiteral("--interval"), QStringLiteral("0.05"),
                   QStringLiteral("--for"), QStringLiteral("0.4")}),
              0);
    const std::size_t records = storedTimes().size();
    ASSERT_GT(records, 0U);
    const QString copy = path(QStringLiteral("copy.plotix"));
    ASSERT_TRUE(QFile::copy(site(), copy));
    const QJsonObject info = runForJson({QStringLiteral("info"), copy, QStringLiteral("--json")});
    EXPECT_FALSE(info.isEmpty());
    const auto agent = SiteDocument::open(copy)->agentNamed(QStringLiteral("This Computer"));
    ASSERT_TRUE(agent);
    EXPECT_EQ(recordsOfSite(copy)->overview(agent->id(), {}).records(), records);
    EXPECT_EQ(SiteDocument::open(copy)->archivedPlugIns().size(), 1U);  // the first trend came along
}

}  // namespace

}  // namespace plotix
