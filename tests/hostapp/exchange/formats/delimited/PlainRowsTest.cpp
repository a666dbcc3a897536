#include "hostapp/exchange/formats/delimited/PlainRows.h"

#include "hostapp/exchange/PlainNumber.h"
#include "hostapp/exchange/formats/delimited/Detection.h"
#include "hostapp/exchange/tables/TimeColumns.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <random>

namespace plotix {

namespace {

/// Numbers as text, written in usual and in unusual ways.
class NumberWriter {
public:
    std::string next()
    {
        std::string text = m_random() % 3 == 0 ? "-" : "";
        append(text, m_random() % 12);
        if (m_random() % 4 != 0)
            text += '.';
        append(text, m_random() % 3 == 0 ? m_random() % 24 : m_random() % 5);
        if (m_random() % 20 == 0)
            text += "e+-x 9,"[m_random() % 7];
        return text;
    }

private:
    void append(std::string& text, std::size_t digits)
    {
        for (; digits > 0; --digits)
            text += static_cast<char>('0' + m_random() % 10);
    }

    std::mt19937_64 m_random{11};
};

TEST(PlainNumber, IsTheDoubleNearestToItsDigits)
{
    NumberWriter writer;
    int taken = 0;
    for (int round = 0; round < 200'000; ++round) {
        const std::string text = writer.next();
        const std::string padded = text + std::string(kPlainNumberReach, '7').replace(0, 1, ";");
        double value = 0;
        bool hasMark = false;
        const char* const behind = takePlainNumber(padded.data(), '.', value, hasMark);
        if (behind != padded.data() + text.size())
            continue;
        double exact = 0;
        const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), exact);
        ASSERT_TRUE(error == std::errc() && stopped == text.data() + text.size()) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(exact)) << text;
        ASSERT_EQ(hasMark, text.find('.') != std::string::npos) << text;
        ++taken;
    }
    EXPECT_GT(taken, 100'000);
}

/// Rows of one file, read both ways.
class PlainRowsTest : public testing::Test {
protected:
    /// The plan for a file that begins with these lines.
    void plan(const QByteArray& beginning, const ImportOptions& options = {})
    {
        m_options = options;
        m_options.timeZone = QStringLiteral("Europe/Berlin");
        const TextSample sample = takeSample(beginning, true);
        const TableShape shape = shapeOf(sample);
        const TimeColumns time = timeColumnsOf(sample, shape, {});
        m_plan = planImport(columnsOf(shape), time.fields.front(), m_options);
        m_times.emplace(time.layout, LocalTime(m_options.timeZone));
        m_rows.emplace(sample.format, shape.fields(), m_plan, *m_times);
    }

    /// What `read` answers for a line, and whether what it read begins with that time.
    std::size_t take(const std::string& line, DecimalMark mark = DecimalMark::Point)
    {
        const std::string text = line + std::string(TextReader::kReach, '5');
        return m_rows->read(std::string_view(text).substr(0, line.size()), mark);
    }
    void expectTaken(const std::string& line, double time, const std::vector<double>& values)
    {
        EXPECT_EQ(take(line), line.size()) << line;
        EXPECT_EQ(m_rows->time(), time) << line;
        EXPECT_TRUE(std::equal(values.begin(), values.end(), m_rows->values().begin(), m_rows->values().end(),
                               [](double one, double other) { return one == other || (one != one && other != other); }))
            << line;
    }
    void expectRefused(const std::string& line) { EXPECT_EQ(take(line), 0U) << line; }
    void readTheLongWay(std::string_view time) { m_times->read(time); }

    ImportOptions m_options;
    ImportPlan m_plan;
    std::optional<TimeColumnReader> m_times;
    std::optional<PlainRows> m_rows;
};

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

TEST_F(PlainRowsTest, TakeTimesInSeconds)
{
    plan("time,a,b\n1422973140,1,2\n1422973141,1.5,2\n");
    expectTaken("1422973142,-0.25,7\n", 1422973142, {-0.25, 7});
    expectTaken("1422973142.5,1,2\r\n", 1422973142.5, {1, 2});
    expectTaken("1422973143,,\n", 1422973143, {kNone, kNone});
}

TEST_F(PlainRowsTest, TakeMilliseconds)
{
    plan("time;a\n1422973140250;1\n1422973141250;2\n");
    expectTaken("1422973142125;3\n", 1422973142.125, {3});
}

TEST_F(PlainRowsTest, TakeTimesOfTheDayBefore)
{
    plan("time,a\n2013-01-01T06:00:00Z,1\n2013-01-01T06:00:01Z,2\n");
    expectRefused("2013-01-01T06:00:02Z,3\n");
    readTheLongWay("2013-01-01T06:00:00Z");
    expectTaken("2013-01-01T07:08:09Z,3\n", 1357024089, {3});
    expectTaken("2013-01-01T07:08:09.25Z,3\n", 1357024089.25, {3});
    expectRefused("2013-01-02T07:08:09Z,3\n");
    expectRefused("2013-01-01T07:08:09,3\n");
    expectRefused("2013-01-01T07:08:09+01:00,3\n");
    expectRefused("2013-01-01T24:00:00Z,3\n");
    expectRefused("2013-01-01T23:59:60Z,3\n");
    expectRefused("2013-01-01T07:08:09.Z,3\n");
}

TEST_F(PlainRowsTest, TakeLocalTimesAndOffsets)
{
    plan("time,a\n2013-01-01 06:00:00,1\n2013-01-01 06:00:01,2\n");
    readTheLongWay("2013-01-01 07:00:00");
    expectTaken("2013-01-01 07:00:01,3\n", 1357020001, {3});
    readTheLongWay("2013-01-01 07:00:00+02:00");
    expectTaken("2013-01-01 08:00:00+02:00,3\n", 1357020000, {3});
    readTheLongWay("2013-01-01 07:00:00 pm");
    expectRefused("2013-01-01 07:00:01 pm,3\n");
}

TEST_F(PlainRowsTest, ACommaBehindSecondsIsADelimiterWhereItIsOne)
{
    plan("time,a\n2013-01-01T06:00:00,1\n2013-01-01T06:00:01,2\n");
    readTheLongWay("2013-01-01T06:00:00");
    expectTaken("2013-01-01T07:00:00,25\n", 1357020000, {25});
    plan("time;a\n2013-01-01T06:00:00,5Z;1\n2013-01-01T06:00:01,5Z;2\n");
    readTheLongWay("2013-01-01T06:00:00Z");
    expectTaken("2013-01-01T06:00:00,25Z;3\n", 1357020000.25, {3});
}

TEST_F(PlainRowsTest, LeaveEverythingElseToTheLongWay)
{
    plan("time,a,b\n1422973140,1,2\n1422973141,1.5,2\n");
    for (const char* line :
         {"1422973142,1\n", "1422973142,1,2,3\n", "1422973142,1,2", "1422973142, 1,2\n", "1422973142,1 ,2\n",
          "1422973142,\"1\",2\n", "1422973142,1e3,2\n", "1422973142,NA,2\n", "1422973142,+1,2\n", "\n", ",1,2\n",
          "1422973142,1,2x\n", "x,1,2\n", "1422973142,1,-\n", "1422973142,.,2\n", "1422973142,1,2\r3\n", "1422973142,"})
        expectRefused(line);
}

TEST_F(PlainRowsTest, DecimalMarksMustBeKnown)
{
    plan("time;a\n1422973140;1,5\n1422973141;2,5\n");
    EXPECT_EQ(take("1422973142;2,5\n", DecimalMark::Unknown), 0U);
    EXPECT_EQ(take("1422973142;2,5\n", DecimalMark::Point), 0U);
    EXPECT_EQ(take("1422973142;2.5\n", DecimalMark::Comma), 0U);
    EXPECT_GT(take("1422973142;2,5\n", DecimalMark::Comma), 0U);
    EXPECT_EQ(m_rows->values()[0], 2.5);
    EXPECT_GT(take("1422973142;25\n", DecimalMark::Unknown), 0U);
}

TEST_F(PlainRowsTest, ColumnsNobodyAskedForMayHoldAnything)
{
    ImportOptions options;
    options.only << QStringLiteral("b");
    plan("time,word,b\n1422973140,x,2\n1422973141,y,2\n", options);
    expectTaken("1422973142,hello,7\n", 1422973142, {7});
    expectRefused("1422973142,\"hello, you\",7\n");
}

TEST_F(PlainRowsTest, RowsThatMustHaveATextAreLeftToTheLongWay)
{
    ImportOptions options;
    options.where.emplace_back(QStringLiteral("word"), QStringLiteral("x"));
    plan("time,word,b\n1422973140,x,2\n1422973141,y,2\n", options);
    expectRefused("1422973142,x,7\n");
}

TEST_F(PlainRowsTest, ARefusedRowLeavesNoTraceInARepeatedHour)
{
    plan("time,a\n2013-10-27 02:10:00,1\n2013-10-27 02:20:00,2\n");
    readTheLongWay("2013-10-27 02:10:00");
    expectRefused("2013-10-27 02:20:00,bad\n");
    expectTaken("2013-10-27 02:20:00,1\n", 1382833200, {1});
    expectTaken("2013-10-27 02:10:00,1\n", 1382836200, {1});
}

}  // namespace

}  // namespace plotix
