#include "base/ReportableError.h"
#include "hostapp/cli/ArgumentValues.h"
#include "hostapp/cli/CommandLine.h"
#include "hostapp/document/RecordKeeping.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <csignal>
#include <gtest/gtest.h>
#include <sstream>

namespace plotix {

namespace {

/// Takes the trends it is given; shows and draws nothing.
class TrendTaker : public CommandServices {
public:
    bool hasDisplay() const override { return false; }
    int open(const OpenRequest&) override { throw ReportableError(QStringLiteral("not here")); }
    QByteArray render(const RenderRequest&) override { throw ReportableError(QStringLiteral("not here")); }
    QByteArray report(const ReportRequest&) override { throw ReportableError(QStringLiteral("not here")); }
    CasePlan planCase(const CaseRequest&) override { throw ReportableError(QStringLiteral("not here")); }
    void serve(const ServeRequest&) override { throw ReportableError(QStringLiteral("not here")); }
    void storeTrend(const TrendRequest& trend) override { trends.push_back(trend); }
    CommandProgress makeProgress(const QString&) override { return {}; }

    std::vector<TrendRequest> trends;
};

class RecordCommandTest : public testing::Test {
protected:
    QString site() const { return m_folder.filePath(QStringLiteral("computer.plotix")); }
    int record(const QStringList& more)
    {
        std::ostringstream out, err;
        const int status = runCommandLine(QStringList{QStringLiteral("record"), site()} + more, m_services, {out, err});
        m_output = QString::fromStdString(out.str());
        m_error = QString::fromStdString(err.str());
        return status;
    }
    int recordBriefly() { return record({"--interval", "0.02", "--for", "0.1"}); }

    QTemporaryDir m_folder;
    TrendTaker m_services;
    QString m_output, m_error;
};

TEST_F(RecordCommandTest, MakesTheSiteAndSaysWhatItRecordsAndWhere)
{
    ASSERT_EQ(recordBriefly(), 0) << m_error.toStdString();
    EXPECT_TRUE(m_output.startsWith("Recording ")) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains("This Computer every 0.02 s into " + site())) << m_output.toStdString();
    EXPECT_EQ(m_output.count('\n'), 2);
    EXPECT_TRUE(m_output.contains("\nRecorded "));
}

TEST_F(RecordCommandTest, TheFirstTimeMakesATrendLaterOnesDoNot)
{
    ASSERT_EQ(recordBriefly(), 0);
    ASSERT_EQ(recordBriefly(), 0);
    ASSERT_EQ(m_services.trends.size(), 1U);
    EXPECT_EQ(m_services.trends[0].title, "This Computer");
    EXPECT_EQ(m_services.trends[0].properties.size(), 3U);
    EXPECT_LT(m_services.trends[0].from->seconds, m_services.trends[0].to->seconds);
}

TEST_F(RecordCommandTest, PrintsTheTimeOfEveryRecordThatIsStored)
{
    ASSERT_EQ(record({"--interval", "0.02", "--for", "0.15", "--print-times"}), 0);
    const auto lines = m_output.split('\n').filter(QRegularExpression("^stored "));
    ASSERT_FALSE(lines.isEmpty());
    const auto document = SiteDocument::open(site());
    const auto records = plotix::recordsOfSite(site())->read(document->agents().front()->id(), {}, {}, {});
    ASSERT_GE(records->times.size(), static_cast<std::size_t>(lines.size()));
    for (qsizetype i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].mid(7).toDouble(), records->times[static_cast<std::size_t>(i)]);
}

TEST_F(RecordCommandTest, AnInterruptEndsItInOrder)
{
    QTimer::singleShot(100, [] { std::raise(SIGINT); });
    EXPECT_EQ(record({"--interval", "0.02"}), 0);
    EXPECT_TRUE(m_output.contains("\nRecorded "));
}

TEST_F(RecordCommandTest, ATerminationEndsItInOrder)
{
    QTimer::singleShot(100, [] { std::raise(SIGTERM); });
    EXPECT_EQ(record({}), 0);
    EXPECT_TRUE(m_output.contains("\nRecorded "));
}

TEST_F(RecordCommandTest, AFileThatIsNoSiteIsRefusedInOneLine)
{
    QFile file(site());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("time,value\n");
    file.close();
    EXPECT_EQ(recordBriefly(), 1);
    EXPECT_TRUE(m_error.contains("not a Plotix site")) << m_error.toStdString();
    EXPECT_EQ(m_error.count('\n'), 1);
}

TEST_F(RecordCommandTest, IntervalsOutsideTheBoundsAreWrongUsage)
{
    for (const char* interval : {"0", "0.001", "2h", "fast", "-1"})
        EXPECT_EQ(record({QStringLiteral("--interval=%1").arg(QLatin1String(interval))}), 2) << interval;
    EXPECT_EQ(record({"--for", "soon"}), 2);
    EXPECT_FALSE(QFile::exists(site()));
}

TEST(DurationTest, SecondsUnlessALetterSaysOtherwise)
{
    EXPECT_EQ(durationFromArgument("90"), 90);
    EXPECT_EQ(durationFromArgument("1.5s"), 1.5);
    EXPECT_EQ(durationFromArgument("10m"), 600);
    EXPECT_EQ(durationFromArgument("2h"), 7200);
    EXPECT_EQ(durationFromArgument("1d"), 86'400);
    for (const char* text : {"", "0", "h", "1 h", "-1", "1w", "1e3", "1.", "99999999999"})
        EXPECT_EQ(durationFromArgument(QLatin1String(text)), std::nullopt) << text;
}

}  // namespace

}  // namespace plotix
