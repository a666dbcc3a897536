#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "tests/e2e/ProgramTest.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>

#include <algorithm>
#include <cstdio>

namespace plotix {

namespace {

/// Runs `plotix record` and moves a backup over its file meanwhile.
class ReplacedRecordingTest : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("folder"))));
        SiteDocument::create(backup())->addAgent(QStringLiteral("Greenhouse"));
    }
    QString site() const { return path(QStringLiteral("folder/computer.plotix")); }
    QString backup() const { return path(QStringLiteral("backup.plotix")); }

    void record(const QString& interval)
    {
        m_recorder.start(qEnvironmentVariable("PLOTIX_TEST_BINARY_DIR") + QStringLiteral("/bin/plotix"),
                         {QStringLiteral("record"), site(), QStringLiteral("--interval"), interval,
                          QStringLiteral("--print-times")});
        while (m_heard.count("stored ") < 5 && m_recorder.waitForReadyRead(10'000))
            m_heard += m_recorder.readAllStandardOutput();
        ASSERT_GE(m_heard.count("stored "), 5);
    }
    void moveTheBackupOverIt() { ASSERT_EQ(std::rename(qPrintable(backup()), qPrintable(site())), 0); }
    void waitForItsEnd()
    {
        ASSERT_TRUE(m_recorder.waitForFinished(10'000));
        m_heard += m_recorder.readAllStandardOutput();
        m_said = m_recorder.readAllStandardError();
    }
    std::vector<double> acknowledged() const
    {
        std::vector<double> times;
        for (const QByteArray& line : m_heard.split('\n'))
            if (line.startsWith("stored "))
                times.push_back(line.mid(7).toDouble());
        return times;
    }
    static std::vector<double> timesIn(const QString& file)
    {
        const RowId agent = SiteDocument::open(file)->agentNamed(QStringLiteral("This Computer"))->id();
        const auto block = recordsOfSite(file)->read(agent, {}, {}, {});
        return {block->times.span().begin(), block->times.span().end()};
    }
    std::vector<double> keptTimes() const
    {
        const QStringList kept = QDir(path(QStringLiteral("folder"))).entryList({QStringLiteral("*replaced*")});
        if (kept.size() != 1)
            return {};
        return timesIn(path(QStringLiteral("folder/") + kept.front()));
    }

    QProcess m_recorder;
    QByteArray m_heard, m_said;
};

TEST_F(ReplacedRecordingTest, TheRecorderEndsWithOneLineAndNothingAcknowledgedIsLost)
{
    record(QStringLiteral("0.02"));
    moveTheBackupOverIt();
    waitForItsEnd();
    EXPECT_EQ(m_recorder.exitCode(), 1);
    EXPECT_EQ(m_said.count('\n'), 1) << m_said.toStdString();
    EXPECT_TRUE(m_said.contains("was replaced by another file")) << m_said.toStdString();
    const std::vector<double> kept = keptTimes(), told = acknowledged();
    EXPECT_TRUE(std::includes(kept.begin(), kept.end(), told.begin(), told.end()));
}

TEST_F(ReplacedRecordingTest, AnIndexThatIsCutShortEndsItWithOneLineAndNothingAcknowledgedIsLost)
{
    record(QStringLiteral("0.02"));
    ASSERT_TRUE(QFile::resize(site() + QStringLiteral("-shm"), 0));
    waitForItsEnd();
    EXPECT_EQ(m_recorder.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_recorder.exitCode(), 1);
    EXPECT_EQ(m_said.count('\n'), 1) << m_said.toStdString();
    EXPECT_TRUE(m_said.contains("was cut short by somebody else")) << m_said.toStdString();
    const std::vector<double> kept = timesIn(site()), told = acknowledged();
    EXPECT_TRUE(std::includes(kept.begin(), kept.end(), told.begin(), told.end()));
}

TEST_F(ReplacedRecordingTest, AnExportOverItIsRefusedAndNothingAcknowledgedIsLost)
{
    write(QStringLiteral("a.csv"), "time,a\n2024-01-01T00:00:00Z,1\n");
    const QString other = path(QStringLiteral("other.plotix"));
    ASSERT_EQ(run({QStringLiteral("import"), path(QStringLiteral("a.csv")), QStringLiteral("--site"), other}), 0);
    record(QStringLiteral("0.02"));
    EXPECT_NE(run({QStringLiteral("export"), other, QStringLiteral("--output"), site()}), 0);
    EXPECT_EQ(error().count('\n'), 1) << error().toStdString();
    while (m_heard.count("stored ") < 20 && m_recorder.waitForReadyRead(10'000))
        m_heard += m_recorder.readAllStandardOutput();
    m_recorder.terminate();
    waitForItsEnd();
    const std::vector<double> kept = timesIn(site()), told = acknowledged();
    EXPECT_GE(told.size(), 20U);
    EXPECT_TRUE(std::includes(kept.begin(), kept.end(), told.begin(), told.end()));
}

TEST_F(ReplacedRecordingTest, TheOtherSiteIsNotTouched)
{
    QFile file(backup());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    record(QStringLiteral("0.02"));
    moveTheBackupOverIt();
    waitForItsEnd();
    EXPECT_TRUE(contents(QStringLiteral("folder/computer.plotix")) == before);
    EXPECT_EQ(run({QStringLiteral("verify"), site()}), 0) << error().toStdString();
    EXPECT_EQ(SiteDocument::open(site())->agents().front()->name(), QStringLiteral("Greenhouse"));
}

}  // namespace

}  // namespace plotix
