#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteSchema.h"
#include "storage/Database.h"
#include "tests/e2e/ProgramTest.h"
#include "tests/e2e/writer/WrittenValues.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QThread>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iostream>
#include <memory>
#include <random>

namespace plotix {

namespace {

constexpr int kKillsAFile = 25;   // then a new one, so that looking at it stays fast
constexpr int kLongestRun = 250;  // milliseconds
constexpr int kFirstInOrder = 50'000;

/// Ends archive_writer the hard way, at any instant, while archive_reader keeps columns that are not unpacked yet.
/// PLOTIX_KILLS says how often; 30 without it.
class KilledArchiveTest : public ProgramTest {
protected:
    KilledArchiveTest() : m_random(std::random_device{}()) {}

    static int kills()
    {
        bool isNumber = false;
        const int number = qEnvironmentVariableIntValue("PLOTIX_KILLS", &isNumber);
        return isNumber ? number : 30;
    }

    void TearDown() override { endReader(); }

    void beginFile()
    {
        m_file = path(QStringLiteral("site%1.plotix").arg(++m_files));
        createSiteFile(m_file, QStringLiteral("Site"));
        {
            Database database(m_file, siteSchema(), Database::Access::ReadWrite);
            for (const WrittenAgent& agent : {kInOrder, kLate})
                addAgent(database, agent);
        }
        const auto transaction = recordsOfSite(m_file)->begin();
        transaction->store(kInOrder.agent, writtenRecords(kInOrder, writtenTimes(0, kFirstInOrder)));
        transaction->store(kLate.agent, writtenRecords(kLate, writtenTimes(0, kPlacesOfLate, 2)));
        transaction->commit();
        m_acknowledged = {kFirstInOrder - 1, 0};
        m_inOrder = m_ofLate = 0;
        tell(m_acknowledged);
    }

    void runAndKill()
    {
        QProcess writer;
        writer.setProcessChannelMode(QProcess::MergedChannels);
        QStringList arguments{m_file, acknowledgedFile()};
        for (const char* beside : {"compact", "merge", "late"})
            if (m_random() % 2 == 0)
                arguments << QString::fromLatin1(beside);
        writer.start(program("archive_writer"), arguments);
        ASSERT_TRUE(writer.waitForStarted());
        const auto run = m_random() % (1000 * kLongestRun);
        QThread::usleep(run / 2);
        if (!m_reader)
            startReader();
        QThread::usleep(run - run / 2);
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished());
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(writer.readAll().toStdString(), "");
        QFile said(acknowledgedFile());
        ASSERT_TRUE(said.open(QIODevice::ReadOnly));
        const QByteArray bytes = said.readAll();
        ASSERT_EQ(bytes.size(), static_cast<qsizetype>(sizeof m_acknowledged));
        std::memcpy(&m_acknowledged, bytes.constData(), sizeof m_acknowledged);
    }

    void startReader()
    {
        m_reader = std::make_unique<QProcess>();
        m_reader->start(program("archive_reader"), {m_file});
        ASSERT_TRUE(m_reader->waitForStarted());
    }
    /// What it keeps since some kill before this one, or since somewhen in this run.
    void expectReaderSeesWhatItKept()
    {
        m_reader->write("again\n");
        while ((m_heard == "kept\n" || !m_heard.endsWith('\n')) && m_reader->waitForReadyRead(20'000))
            m_heard += m_reader->readAllStandardOutput();
        EXPECT_TRUE(m_heard == "kept\nsame\n" || m_heard == "same\n") << m_heard.toStdString();
        m_heard.clear();
        ++m_looks;
    }
    /// It ends as it should, or the hard way.
    void endReader()
    {
        if (!m_reader)
            return;
        if (m_random() % 2 == 0)
            m_reader->closeWriteChannel();
        else
            m_reader->kill();
        EXPECT_TRUE(m_reader->waitForFinished());
        m_reader.reset();
    }
    void perhapsEndReader()
    {
        if (m_random() % 4 == 0)
            endReader();
    }

    void expectNothingLost()
    {
        expectUnbrokenPrefix();
        expectLateOnes();
    }
    void expectSound()
    {
        const VerificationResult result = recordsOfSite(m_file)->verify();
        EXPECT_TRUE(result.isSound()) << result.findings.join(QLatin1Char('\n')).toStdString();
        EXPECT_EQ(result.records, stored());
    }
    /// What somebody read while it was replaced does not stay when nobody does.
    void expectNothingIsKeptForNobody()
    {
        endReader();
        recordsOfSite(m_file)->compact({});
        Database database(m_file, siteSchema(), Database::Access::ReadOnly);
        Statement retired(database, "SELECT count(*) FROM retired");
        ASSERT_TRUE(retired.step());
        EXPECT_EQ(retired.integer(0), 0);
    }

    std::size_t stored() const { return m_inOrder + m_ofLate; }
    std::size_t late() const { return static_cast<std::size_t>(m_acknowledged.late); }
    int looks() const { return m_looks; }
    void removeFile() { QFile::remove(m_file); }

private:
    static void addAgent(Database& database, const WrittenAgent& agent)
    {
        const QString name = QString::number(agent.agent);
        Statement(database, "INSERT INTO agent(identifier, name) VALUES(?1, ?1)").bind(1, name).run();
        for (const RowId property : agent.properties())
            Statement(database, "INSERT INTO property(id, agent, name, key, unit, archived_unit, color, type, visible) "
                                "VALUES(?1, ?2, ?1, ?1, '', '', 0, 0, 1)")
                .bind(1, property)
                .bind(2, agent.agent)
                .run();
    }
    static QString program(const char* name)
    {
        return qEnvironmentVariable("PLOTIX_TEST_BINARY_DIR") + QStringLiteral("/bin/") + QString::fromLatin1(name);
    }

    /// All that was acknowledged and all that was there before is there, without a gap, every value as it was written.
    void expectUnbrokenPrefix()
    {
        const RecordBlock block = *recordsOfSite(m_file)->read(kInOrder.agent, kInOrder.properties(), {}, {});
        const std::size_t count = block.times.size();
        EXPECT_GE(static_cast<double>(count), m_acknowledged.inOrder + 1);
        EXPECT_GE(count, m_inOrder);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < count; ++i)
            wrong += block.times[i] == static_cast<double>(i) ? 0 : 1;
        EXPECT_EQ(wrong, 0U);
        expectAsWritten(block);
        m_inOrder = count;
    }
    /// Those that were there at first, and the late ones up to some number, no other.
    void expectLateOnes()
    {
        const RecordBlock block = *recordsOfSite(m_file)->read(kLate.agent, kLate.properties(), {}, {});
        std::vector<double> wanted = writtenTimes(0, kPlacesOfLate, 2);
        ASSERT_GE(block.times.size(), wanted.size() + late());
        EXPECT_GE(block.times.size(), m_ofLate);
        for (int number = 0; wanted.size() < block.times.size(); ++number)
            wanted.push_back(lateTime(number));
        std::sort(wanted.begin(), wanted.end());
        EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), block.times.span().begin()));
        expectAsWritten(block);
        m_ofLate = block.times.size();
    }
    static void expectAsWritten(const RecordBlock& block)
    {
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < block.times.size(); ++i) {
            const double time = block.times[i];
            wrong += sameBits(block.columns[0].values[i], evenValue(time)) &&
                             sameBits(block.columns[1].values[i], oddValue(time))
                         ? 0
                         : 1;
        }
        EXPECT_EQ(wrong, 0U);
        for (const RecordBlock::Column& column : block.columns)
            EXPECT_TRUE(column.validity.isAllValid());
    }
    static bool sameBits(double a, double b)
    {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    }
    QString acknowledgedFile() const { return path(QStringLiteral("acknowledged")); }
    void tell(const Acknowledged& numbers) const
    {
        QFile file(acknowledgedFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(&numbers), sizeof numbers);
    }

    std::mt19937 m_random;
    int m_files = 0, m_looks = 0;
    QString m_file;
    Acknowledged m_acknowledged;
    std::size_t m_inOrder = 0, m_ofLate = 0;  // records after the last kill
    std::unique_ptr<QProcess> m_reader;
    QByteArray m_heard;
};

TEST_F(KilledArchiveTest, WhateverItWasDoingNothingAcknowledgedIsLostAndWhoReadsReadsOn)
{
    std::size_t records = 0, lateRecords = 0;
    for (int kill = 0; kill < kills() && !HasFailure(); ++kill) {
        if (kill % kKillsAFile == 0)
            beginFile();
        SCOPED_TRACE(testing::Message() << "kill " << kill);
        runAndKill();
        expectReaderSeesWhatItKept();
        expectNothingLost();
        expectSound();
        perhapsEndReader();
        if (kill % kKillsAFile == kKillsAFile - 1 || kill == kills() - 1) {
            records += stored() - kFirstInOrder - kPlacesOfLate;
            lateRecords += late();
            expectNothingIsKeptForNobody();
            removeFile();
        }
    }
    EXPECT_GT(records, static_cast<std::size_t>(kills()) * 100);
    // Which programs write late ones is chance, and whether they live to: on a slow machine none of a few may.
    constexpr int kEnoughToExpectLate = 300;
    if (kills() >= kEnoughToExpectLate) {
        EXPECT_GT(lateRecords, static_cast<std::size_t>(kills()));
    }
    std::cout << kills() << " kills, " << records << " records, " << lateRecords << " of them late, " << looks()
              << " looks at what was kept\n";
}

}  // namespace

}  // namespace plotix
