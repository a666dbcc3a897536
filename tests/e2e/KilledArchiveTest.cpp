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
#include <random>

namespace plotix {

namespace {

constexpr int kKillsAFile = 25;   // then a new one, so that looking at it stays fast
constexpr int kLongestRun = 250;  // milliseconds

/// Ends archive_writer the hard way, at any instant. PLOTIX_KILLS says how often; 30 without it.
class KilledArchiveTest : public ProgramTest {
protected:
    KilledArchiveTest() : m_random(std::random_device{}()) {}

    static int kills()
    {
        bool isNumber = false;
        const int number = qEnvironmentVariableIntValue("PLOTIX_KILLS", &isNumber);
        return isNumber ? number : 30;
    }

    void beginFile()
    {
        m_file = path(QStringLiteral("site%1.plotix").arg(++m_files));
        createSiteFile(m_file, QStringLiteral("Site"));
        Database database(m_file, siteSchema(), Database::Access::ReadWrite);
        database.execute("INSERT INTO agent(identifier, name) VALUES('one', 'one')");
        for (const char* key : {"even", "odd"})
            Statement(database, "INSERT INTO property(agent, name, key, unit, archived_unit, color, type, visible) "
                                "VALUES(1, ?1, ?1, '', '', 0, 0, 1)")
                .bind(1, QString::fromLatin1(key))
                .run();
        m_acknowledged = -1;
        m_stored = 0;
        tell(m_acknowledged);
    }

    void runAndKill()
    {
        QProcess writer;
        writer.setProcessChannelMode(QProcess::MergedChannels);
        QStringList arguments{m_file, acknowledgedFile()};
        if (const auto beside = m_random() % 3; beside < 2)
            arguments << (beside == 0 ? QStringLiteral("compact") : QStringLiteral("merge"));
        writer.start(qEnvironmentVariable("PLOTIX_TEST_BINARY_DIR") + QStringLiteral("/bin/archive_writer"), arguments);
        ASSERT_TRUE(writer.waitForStarted());
        QThread::usleep(m_random() % (1000 * kLongestRun));
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

    /// All that was acknowledged and all that was there before is there, without a gap, every value as it was written.
    void expectUnbrokenPrefix()
    {
        const auto block = recordsOfSite(m_file)->read(1, std::vector<RowId>{1, 2}, {}, {});
        const std::size_t count = block->times.size();
        EXPECT_GE(static_cast<double>(count), m_acknowledged + 1);
        EXPECT_GE(count, m_stored);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double time = block->times[i];
            wrong += time == static_cast<double>(i) && sameBits(block->columns[0].values[i], evenValue(time)) &&
                             sameBits(block->columns[1].values[i], oddValue(time))
                         ? 0
                         : 1;
        }
        EXPECT_EQ(wrong, 0U);
        EXPECT_TRUE(count == 0 || (block->columns[0].validity.isAllValid() && block->columns[1].validity.isAllValid()));
        m_stored = count;
    }

    void expectSound()
    {
        const VerificationResult result = recordsOfSite(m_file)->verify();
        EXPECT_TRUE(result.isSound()) << result.findings.join(QLatin1Char('\n')).toStdString();
        EXPECT_EQ(result.records, m_stored);
    }

    std::size_t stored() const { return m_stored; }
    void removeFile() { QFile::remove(m_file); }

private:
    static bool sameBits(double a, double b)
    {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    }
    QString acknowledgedFile() const { return path(QStringLiteral("acknowledged")); }
    void tell(double number) const
    {
        QFile file(acknowledgedFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(&number), sizeof number);
    }

    std::mt19937 m_random;
    int m_files = 0;
    QString m_file;
    double m_acknowledged = -1;
    std::size_t m_stored = 0;
};

TEST_F(KilledArchiveTest, WhateverItWasDoingNothingAcknowledgedIsLost)
{
    std::size_t records = 0;
    for (int kill = 0; kill < kills() && !HasFailure(); ++kill) {
        if (kill % kKillsAFile == 0)
            beginFile();
        SCOPED_TRACE(testing::Message() << "kill " << kill);
        runAndKill();
        expectUnbrokenPrefix();
        expectSound();
        if (kill % kKillsAFile == kKillsAFile - 1 || kill == kills() - 1) {
            records += stored();
            removeFile();
        }
    }
    EXPECT_GT(records, static_cast<std::size_t>(kills()) * 100);
    std::cout << kills() << " kills, " << records << " records\n";
}

}  // namespace

}  // namespace plotix
