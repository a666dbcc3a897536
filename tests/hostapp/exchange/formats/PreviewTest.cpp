#include "tests/hostapp/exchange/formats/ImportFixture.h"

namespace plotix {

namespace {

using What = ImportFinding::What;
using Use = ImportPreview::Column::Use;
using Reason = ImportPreview::Column::Reason;

class PreviewTest : public MeasurementFileTest {
protected:
    ImportPreview preview(const QByteArray& text) { return previewOf(write(text), m_options); }
};

TEST_F(PreviewTest, ShowsTheFirstRowsAsUnderstood)
{
    const ImportPreview shown = preview("Zeit (UTC);T [°C];b\n01.02.2024 12:00;1,5;7\n01.02.2024 13:00;x;8\n");
    EXPECT_FALSE(shown.problem);
    ASSERT_EQ(shown.rows.size(), 2U);
    EXPECT_EQ(shown.rows[0].time, 1706788800);
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1.5, 7}));
    EXPECT_EQ(shown.rows[1].values, (std::vector<std::optional<double>>{std::nullopt, 8}));
    EXPECT_TRUE(shown.isWhole);
}

TEST_F(PreviewTest, TellsNamesUnitsZoneAndGuesses)
{
    const ImportPreview shown = preview("Zeit (UTC);T [°C];b\n01.02.2024 12:00;1,5;7\n01.02.2024 13:00;x;8\n");
    EXPECT_EQ(shown.columns[0].use, Use::Time);
    EXPECT_EQ(shown.columns[1].name, QStringLiteral("T"));
    EXPECT_EQ(shown.columns[1].unit, QStringLiteral("°C"));
    EXPECT_EQ(shown.columns[1].bad, 1U);
    EXPECT_EQ(shown.columns[1].firstBad->text, QStringLiteral("x"));
    EXPECT_EQ(shown.timeZone, QStringLiteral("UTC+00:00"));
    EXPECT_TRUE(shown.zoneIsFromFile);
    EXPECT_EQ(shown.form.delimiter, QStringLiteral(";"));
    EXPECT_EQ(shown.form.decimal, DecimalSign::Comma);
    EXPECT_EQ(shown.form.dateOrder, DateOrder::DayFirst);
}

TEST_F(PreviewTest, SaysWhatIsLeftOutAndWhy)
{
    const ImportPreview shown =
        preview("time,unixtime,note,a\n2024-02-01,1706788800,dry,1\n2024-02-02,1706875200,wet,2\n");
    EXPECT_EQ(shown.columns[1].use, Use::LeftOut);
    EXPECT_EQ(shown.columns[1].reason, Reason::CountsRows);
    EXPECT_EQ(shown.columns[2].reason, Reason::NoNumbers);
    EXPECT_EQ(shown.columns[3].use, Use::Taken);
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1}));
}

TEST_F(PreviewTest, AQuestionComesWithTheOptionThatAnswersIt)
{
    const QByteArray text = "Date;a\n03/04/2024;1\n04/04/2024;2\n";
    const ImportPreview shown = preview(text);
    ASSERT_TRUE(shown.problem);
    EXPECT_EQ(shown.problem->what, What::DateOrderUnknown);
    EXPECT_EQ(optionOf(*shown.problem), ImportOption::DateOrder);
    EXPECT_EQ(shown.columns.size(), 2U);  // so that a dialog has something to show meanwhile
    m_options.dateOrder = DateOrder::MonthFirst;
    EXPECT_FALSE(preview(text).problem);
}

TEST_F(PreviewTest, EveryGuessCanBeChanged)
{
    m_options.delimiter = QStringLiteral(",");
    m_options.decimal = DecimalSign::Point;
    m_options.timeColumn = QStringLiteral("b");
    m_options.units = {{QStringLiteral("a"), QStringLiteral("kW")}};
    m_options.names = {{QStringLiteral("a"), QStringLiteral("Power")}};
    m_options.timeZone = QStringLiteral("+01:00");
    const ImportPreview shown = preview("time,b,a\n2024-02-01,2024-03-01,\"1,234\"\n");
    ASSERT_FALSE(shown.problem);
    EXPECT_EQ(shown.rows[0].time, 1709247600);
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1234}));
    EXPECT_EQ(shown.columns[2].name, QStringLiteral("Power"));
    EXPECT_EQ(shown.columns[2].unit, QStringLiteral("kW"));
    EXPECT_FALSE(shown.zoneIsFromFile);
}

TEST_F(PreviewTest, RowsThatNameTheirQuantityShowAColumnForEach)
{
    const ImportPreview shown =
        preview("time;name;value;unit\n2024-02-01;T;1;°C\n2024-02-01;H;50;%\n2024-02-02;T;2;°C\n");
    EXPECT_EQ(shown.form.arrangement, Arrangement::Names);
    ASSERT_EQ(shown.columns.size(), 6U);
    EXPECT_EQ(shown.columns[5].unit, QStringLiteral("%"));
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1, 50}));
    m_options.arrangement = Arrangement::Columns;
    EXPECT_EQ(preview("time;name;value;unit\n2024-02-01;T;1;°C\n2024-02-02;T;2;°C\n").columns.size(), 4U);
}

TEST_F(PreviewTest, RowsOfDaysBecomeARecordForEachTimeOfDay)
{
    const QByteArray text =
        "day,00:00,04:00,08:00,12:00,16:00,20:00\n2024-02-01,1,2,3,4,5,6\n2024-02-02,7,,9,10,11,12\n";
    m_options.timeZone = QStringLiteral("UTC");
    const ImportPreview shown = preview(text);
    ASSERT_EQ(shown.rows.size(), 12U);
    EXPECT_EQ(shown.rows[7].time, 1706832000 + 4 * 3600);
    EXPECT_EQ(shown.rows[7].values, (std::vector<std::optional<double>>{std::nullopt}));
    EXPECT_EQ(shown.rows[11].values, (std::vector<std::optional<double>>{12}));
    EXPECT_TRUE(std::any_of(shown.notes.begin(), shown.notes.end(), [](const ImportFinding& note) {
        return note.what == What::RowsAreDays && note.found == 6 && note.text == QStringLiteral("00:00");
    }));
    m_options.arrangement = Arrangement::Columns;
    EXPECT_EQ(preview(text).columns.size(), 7U);
}

TEST_F(PreviewTest, AFileThatCannotBeReadIsAProblemOnly)
{
    const ImportPreview shown = previewOf(m_folder.filePath(QStringLiteral("none.csv")), {});
    EXPECT_TRUE(shown.columns.empty());
    EXPECT_EQ(shown.problem->what, What::CannotBeOpened);
}

TEST_F(PreviewTest, LooksAtTheBeginningOnly)
{
    QByteArray text = "time,a\n";
    for (int row = 0; row < 20'000; ++row)
        text += QByteArray::number(1'700'000'000 + row) + ",1\n";
    const ImportPreview shown = preview(text);
    EXPECT_FALSE(shown.isWhole);
    EXPECT_EQ(shown.rows.size(), ImportPreview::kPreviewRows);
}

TEST_F(PreviewTest, ColumnsAreLeftOutAndAddedOneByOne)
{
    m_options.leaveOut = {QStringLiteral("b")};
    m_options.also = {QStringLiteral("unixtime")};
    const ImportPreview shown = preview("time,unixtime,a,b\n2024-02-01,1706788800,1,3\n2024-02-02,1706875200,2,4\n");
    EXPECT_EQ(shown.columns[1].use, Use::Taken);
    EXPECT_EQ(shown.columns[3].reason, Reason::NotAskedFor);
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1706788800, 1}));
}

TEST_F(PreviewTest, ColumnsOfOneHeaderAreNamedByTheirPlace)
{
    m_options.leaveOut = {QStringLiteral("Column 3")};
    const ImportPreview shown = preview("time,T,T,T\n2024-02-01,1,2,3\n2024-02-02,4,5,6\n");
    EXPECT_EQ(shown.rows[0].values, (std::vector<std::optional<double>>{1, 3}));
}

/// Rows that name their quantity, so many that nobody would wait for a table of them all.
QByteArray manyNamedRows()
{
    QByteArray text = "time;name;value\n";
    for (int row = 0; row < 300'000; ++row)
        text += QByteArray::number(1'700'000'000 + row) + (row < 299'990 ? ";T;1\n" : ";Late;2\n");
    return text;
}

TEST_F(PreviewTest, OfManyRowsThatNameTheirQuantityTheFirstAreCollected)
{
    const ImportPreview shown = preview(manyNamedRows());
    EXPECT_FALSE(shown.isWhole);
    EXPECT_LT(shown.rowsLookedAt, 250'000U);
    EXPECT_EQ(shown.rows.size(), ImportPreview::kPreviewRows);
    EXPECT_EQ(shown.columns.back().name, QStringLiteral("Late"));  // its numbers come further down
    EXPECT_EQ(shown.columns.back().use, Use::Taken);
}

TEST_F(PreviewTest, CanBeCancelledWhileTheWholeFileIsRead)
{
    QByteArray text = "Date;a\n";
    for (int row = 0; row < 20'000; ++row)
        text += "03/04/2024;1\n";
    for (const QByteArray& file : {text, manyNamedRows()}) {
        preview(file);  // which writes it
        int calls = 0;
        const auto cancelAtTwo = [&calls](qint64, qint64) { return ++calls < 2; };
        EXPECT_THROW(previewOf(m_folder.filePath(QStringLiteral("data.csv")), {}, cancelAtTwo), ImportCancelled);
        EXPECT_EQ(calls, 2);
    }
}

TEST_F(PreviewTest, CanBeCancelledWhileNamesAreLookedForInTheWholeFile)
{
    preview(manyNamedRows());  // which writes it
    qint64 farthest = 0, size = 0;
    previewOf(m_folder.filePath(QStringLiteral("data.csv")), {}, [&](qint64 done, qint64 total) {
        farthest = std::max(farthest, done);
        size = total;
        return true;
    });
    EXPECT_GT(farthest, size * 9 / 10);  // the rows are not read so far
}

TEST_F(PreviewTest, OnlyWhatTheWholeFileSaysIsCertain)
{
    QByteArray text = "time,a\n";
    for (int row = 0; row < 20'000; ++row)
        text += row % 2 == 0 || row > 6000 ? QByteArray::number(1'700'000'000 + row) + ",1\n" : QByteArray("bad,1\n");
    const ImportPreview doubtful = preview(text);
    ASSERT_TRUE(doubtful.problem);
    EXPECT_EQ(doubtful.problem->what, What::TooManyBadRows);
    EXPECT_FALSE(isRefused(doubtful));
    EXPECT_TRUE(isRefused(preview("Date;a\n03/04/2024;1\n04/04/2024;2\n")));
    EXPECT_FALSE(isRefused(preview("time,a\n2024-02-01,1\n")));
}

}  // namespace

}  // namespace plotix
