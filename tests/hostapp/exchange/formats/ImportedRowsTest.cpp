#include "tests/hostapp/exchange/formats/ImportFixture.h"

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImportedRowsTest : public ImportFixture {};

TEST_F(ImportedRowsTest, SortsTimesAndKeepsTheLastOfRepeatedOnes)
{
    const ImportSummary summary = import("time,a\n2015-01-03,3\n2015-01-01,1\n2015-01-02,2\n2015-01-01,9\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{9, 2, 3}));
    EXPECT_EQ(summary.unorderedTimes, 2U);
    EXPECT_EQ(summary.repeatedTimes, 1U);
    EXPECT_EQ(summary.records, 3U);
}

TEST_F(ImportedRowsTest, ManyRowsAtOneTimeAreRefusedUnlessTheLastIsKept)
{
    QByteArray text = "time,station,a\n";
    for (int row = 0; row < 20; ++row)
        text += "2015-01-01 00:" + QByteArray::number(10 + row / 2) + (row % 2 != 0 ? ",N,1,\n" : ",S,2,\n");
    text.replace(",\n", "\n");
    text.replace("time,station,a", "time,station,a,b");
    text.replace("1\n", "1,3\n");
    text.replace("2\n", "2,4\n");
    const std::optional<ImportFinding> finding = failure(text);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::ManyRowsAtOneTime);
    EXPECT_EQ(finding->columns, (QStringList{"station"}));
    m_options.rowsAtOneTime = RowsAtOneTime::KeepLast;
    EXPECT_EQ(import(text).replacedRows, 10U);
}

TEST_F(ImportedRowsTest, RowsAtOneTimeThatCompleteEachOtherBecomeOne)
{
    const ImportSummary summary = import("time,a,b\n2015-01-01,1,\n2015-01-01,,2\n2015-01-02,3,\n2015-01-02,,4\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 3}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, 4}));
    EXPECT_EQ(summary.replacedRows, 0U);
}

TEST_F(ImportedRowsTest, AShortRowHasGaps)
{
    const ImportSummary summary = import("time,a,b\n2015-01-01,1,2\n2015-01-02\n2015-01-03,3\n2015-01-04,4,5\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}, 3, 4}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, {}, {}, 5}));
    EXPECT_EQ(summary.notes, (std::vector<ImportFinding>{{.what = What::ShortRows, .line = 3, .found = 2}}));
}

TEST_F(ImportedRowsTest, ARowWithoutATimeIsPassedOverAndCounted)
{
    const ImportSummary summary =
        import("time,a\n2015-01-01,1\nsoon,2\n2015-01-03,3\n2015-01-04,4,5\n2015-01-05,5\n2015-01-06,5\n");
    EXPECT_EQ(summary.badRows, 2U);
    EXPECT_EQ(summary.firstBadRow,
              (ImportFinding{
                  .what = What::NoTime, .line = 3, .column = QStringLiteral("time"), .text = QStringLiteral("soon")}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 3, 5, 5}));
}

TEST_F(ImportedRowsTest, MoreThanAThirdOfRowsWithoutATimeIsRefusedUnlessTheyMayBe)
{
    const QByteArray text = "time,a\n2015-01-01,1\nsoon,2\nlater,3\n2015-01-04,4\n";
    const std::optional<ImportFinding> finding = failure(text);
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::TooManyBadRows);
    EXPECT_EQ(finding->found, 2U);
    EXPECT_EQ(finding->causes.front().text, QStringLiteral("soon"));
    m_options.skipBadRows = true;
    EXPECT_EQ(import(text).badRows, 2U);
}

TEST_F(ImportedRowsTest, ABadRowIsTheReasonWhereEveryRowIsBad)
{
    m_options.skipBadRows = true;
    const auto finding = failure("time,a\n2015-13-01,1\n");
    ASSERT_TRUE(finding);
    EXPECT_EQ(finding->what, What::NoRowRead);
    EXPECT_EQ(finding->causes,
              (std::vector<ImportFinding>{{.what = What::NoTime, .line = 2, .column = "time", .text = "2015-13-01"}}));
}

TEST_F(ImportedRowsTest, BadFieldsInRowsThatAreNotAskedForDoNotMatter)
{
    m_options.where = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    EXPECT_EQ(import("origin,time,a\nEWR,2015-01-01,1\nJFK,never,oops\n").records, 1U);
}

TEST_F(ImportedRowsTest, LinesBelowTheTableAreNoBadRows)
{
    const ImportSummary summary = import("time,a\n2015-01-01,1\n2015-01-02,2\nSum,3\nEnd\n");
    EXPECT_EQ(summary.badRows, 0U);
    EXPECT_EQ(summary.records, 2U);
    EXPECT_EQ(summary.notes,
              (std::vector<ImportFinding>{{.what = What::LinesBelowTable, .line = 4, .text = "Sum", .found = 2}}));
}

TEST_F(ImportedRowsTest, AnotherTableBelowTheFirstIsRefused)
{
    EXPECT_EQ(failure("time,a\n2015-01-01,1\ntime,b\n2015-01-02,2\n"),
              (ImportFinding{.what = What::AnotherHeader, .line = 3, .column = "time"}));
}

}  // namespace

}  // namespace plotix
