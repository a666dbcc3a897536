#include "hostapp/exchange/formats/delimited/DelimitedWriter.h"

#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/formats/delimited/DelimitedReader.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace plotix {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// Records of one column, written and read back.
class DelimitedWriterTest : public testing::Test {
protected:
    void addRecord(double time, double value)
    {
        m_times.push_back(time);
        m_values.push_back(value);
    }

    QByteArray written(const QString& name = QStringLiteral("a"), const QString& unit = {})
    {
        RecordBlock block{SharedArray<double>::fromVector(m_times), {}};
        block.columns.push_back({1, SharedArray<double>::fromVector(m_values), {}});
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        writeDelimited(buffer, {{{name, unit}}, plotix::RecordColumns::resident(block)}, m_progress);
        return buffer.data();
    }

    void expectReadBack(const QByteArray& text)
    {
        const QString path = m_folder.filePath(QStringLiteral("written.csv"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        DelimitedReader reader(std::make_unique<InputFile>(path), {});
        const ImportPlan plan = planImport(reader.columns(), reader.chooseTimeColumn({}), {});
        ImportTable table(plan);
        reader.begin(plan);
        while (reader.read(table)) {
        }
        table.finish();
        ASSERT_EQ(table.rows(), m_times.size());
        const ImportTable::Taken values = table.takeColumn(0);
        const SharedArray<double> times = table.takeTimes();
        for (std::size_t row = 0; row < m_times.size(); ++row) {
            expectSameBits(times[row], m_times[row]);
            ASSERT_EQ(values.validity.isValid(row), !std::isnan(m_values[row]));
            if (values.validity.isValid(row))
                expectSameBits(values.values[row], m_values[row]);
        }
    }

    std::vector<double> m_times, m_values;
    ExportProgress m_progress;

private:
    static void expectSameBits(double read, double meant)
    {
        ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(meant)) << meant;
    }

    QTemporaryDir m_folder;
};

TEST_F(DelimitedWriterTest, WritesARowARecord)
{
    addRecord(1420070400, 1.5);
    addRecord(1420070460.25, kNone);
    EXPECT_EQ(written("Air Temperature", "°C"),
              "time,Air Temperature (°C)\n2015-01-01T00:00:00Z,1.5\n2015-01-01T00:01:00.25Z,\n");
}

TEST_F(DelimitedWriterTest, OneTimeOutsideTheCalendarMakesAllOfThemSeconds)
{
    addRecord(0, 1);
    addRecord(1e300, 2);
    EXPECT_EQ(written(), "time (s),a\n0,1\n1e+300,2\n");
}

TEST_F(DelimitedWriterTest, QuotesNamesThatWouldBeCut)
{
    addRecord(0, 1);
    EXPECT_EQ(written("Wind, \"roof\"", "m/s").split('\n').front(), "time,\"Wind, \"\"roof\"\" (m/s)\"");
    EXPECT_EQ(written("Level (m)").split('\n').front(), "time,Level (m) ()");
}

TEST_F(DelimitedWriterTest, NoRecordsAreAHeader)
{
    EXPECT_EQ(written(), "time,a\n");
}

TEST_F(DelimitedWriterTest, StopsWhenItIsAskedTo)
{
    addRecord(0, 1);
    m_progress = [](double) { return false; };
    EXPECT_THROW(written(), ExportCancelled);
}

TEST_F(DelimitedWriterTest, ADeviceThatTakesNothingIsAFailure)
{
    QBuffer closed;
    const RecordBlock block{SharedArray<double>::fromVector({0.0}), {}};
    EXPECT_THROW(writeDelimited(closed, {{}, plotix::RecordColumns::resident(block)}, {}), ExportFailure);
}

TEST_F(DelimitedWriterTest, EveryBitComesBack)
{
    std::mt19937_64 random(7);
    double time = 1420070400;
    for (const double value :
         {-0.0, 5e-324, std::numeric_limits<double>::infinity(), 0.1, kNone, -1.7976931348623157e308})
        addRecord(time += 1.0 / 3, value);
    while (m_times.size() < 20'000) {  // several batches
        const auto value = std::bit_cast<double>(random());
        addRecord(time += static_cast<double>(random() % 1'000'000) / 1024 + 0.001, std::isnan(value) ? kNone : value);
    }
    expectReadBack(written());
}

TEST_F(DelimitedWriterTest, SecondsOutsideTheCalendarComeBackToo)
{
    for (const double time : {-1e300, -62'167'219'200.5, -0.25, 1e-9, 1e300})
        addRecord(time, 1);
    expectReadBack(written());
}

}  // namespace

}  // namespace plotix
