#include "tests/hostapp/exchange/formats/ImportFixture.h"

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImporterTest : public ImportFixture {};

TEST_F(ImporterTest, StoresNumbersAndMissingValues)
{
    const ImportSummary summary =
        import("time,Temp (°C),rh\n2015-01-01T00:00:00Z,1.5,\n2015-01-01T00:01:00Z,NA,50\n2015-01-01T00:02:00Z,-,60\n");
    EXPECT_EQ(summary.records, 3U);
    EXPECT_EQ(summary.agent, QStringLiteral("data"));
    EXPECT_TRUE(summary.createdSite);
    EXPECT_TRUE(summary.firstImport);
    EXPECT_EQ(times(), (std::vector<double>{1420070400, 1420070460, 1420070520}));
    EXPECT_EQ(values(QStringLiteral("temp")), (Numbers{1.5, {}, {}}));
    EXPECT_EQ(values(QStringLiteral("rh")), (Numbers{{}, 50, 60}));
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°C"));
    EXPECT_EQ(summary.columns.front().valid, 1U);
}

TEST_F(ImporterTest, TakesUnitsAndNamesFromTheOptions)
{
    m_options.agentName = QStringLiteral("EWR");
    m_options.units = {{QStringLiteral("temp"), QStringLiteral("degF")}};
    m_options.names = {{QStringLiteral("temp"), QStringLiteral("Air Temperature")}};
    const ImportSummary summary = import("time,temp\n2015-01-01T00:00:00Z,39.02\n");
    EXPECT_EQ(summary.agent, QStringLiteral("EWR"));
    EXPECT_EQ(summary.columns.front().propertyName, QStringLiteral("airTemperature"));
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°F"));
    EXPECT_EQ(values(QStringLiteral("airTemperature")), (Numbers{39.02}));
}

TEST_F(ImporterTest, TakesOnlyTheRowsAndColumnsAskedFor)
{
    m_options.where = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    m_options.only = {QStringLiteral("b")};
    const ImportSummary summary =
        import("origin,time,a,b\nEWR,2015-01-01,1,2\nJFK,2015-01-01,3,4\nEWR,2015-01-02,5,6\n");
    EXPECT_EQ(summary.rows, 3U);
    EXPECT_EQ(summary.otherRows, 1U);
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{2, 6}));
    EXPECT_TRUE(values(QStringLiteral("a")).empty());
}

TEST_F(ImporterTest, NamesColumnsWithoutASingleNumber)
{
    const ImportSummary summary = import("time,a,note,empty\n2015-01-01,1,dry,\n2015-01-02,2,wet,NA\n");
    EXPECT_EQ(summary.leftOut, (QStringList{"note", "empty"}));
    EXPECT_EQ(summary.columns.size(), 1U);
}

TEST_F(ImporterTest, AColumnOfTextsWithHardlyANumberIsLeftOutUnlessAskedFor)
{
    QByteArray text = "time,a,note\n2015-01-01 00:00,1,7\n";
    for (int row = 1; row < 20; ++row)
        text += "2015-01-01 00:" + QByteArray::number(row + 10) + ",1,dry\n";
    EXPECT_EQ(import(text).leftOut, (QStringList{"note"}));
    m_options.only = {QStringLiteral("note")};
    m_options.agentName = QStringLiteral("asked");
    EXPECT_EQ(import(text).columns.front().valid, 1U);
}

TEST_F(ImporterTest, ColumnsAreNamedAsPeopleWriteThem)
{
    m_options.only = {QStringLiteral("air temperature [°F]")};
    EXPECT_EQ(import("time,a,Air Temperature (°C)\n2015-01-01,1,2\n").columns.front().header,
              QStringLiteral("Air Temperature (°C)"));
}

TEST_F(ImporterTest, MakesNamesUnique)
{
    const ImportSummary summary = import("time,temp,Temp,%\n2015-01-01,1,2,3\n");
    ASSERT_EQ(summary.columns.size(), 3U);
    EXPECT_EQ(summary.columns[1].propertyName, QStringLiteral("temp2"));
    EXPECT_EQ(summary.columns[2].propertyName, QStringLiteral("column4"));
}

/// A row of so many columns, each with the name that `nameOf` gives its number.
template <class Name>
QByteArray wideTable(int columns, Name nameOf)
{
    QByteArray text = "time";
    for (int column = 0; column < columns; ++column)
        text += ',' + nameOf(column);
    text += "\n2015-01-01";
    for (int column = 0; column < columns; ++column)
        text += ',' + QByteArray::number(column);
    return text + '\n';
}

TEST_F(ImporterTest, ThousandsOfColumnsWithOneNameAreNumbered)
{
    const ImportSummary summary = import(wideTable(2000, [](int) { return QByteArray("Temp"); }));
    ASSERT_EQ(summary.columns.size(), 2000U);
    EXPECT_EQ(summary.columns.back().name, QStringLiteral("Temp 2000"));
}

TEST_F(ImporterTest, FirstRowsMayBeOfAnyLength)
{
    const QByteArray text = wideTable(3000, [](int column) {
        return "A measurement with quite a long name and the number " + QByteArray::number(column);
    });
    ASSERT_GT(text.indexOf('\n'), 1 << 16);
    EXPECT_EQ(import(text).columns.size(), 3000U);
}

TEST_F(ImporterTest, ConvertsIntoTheUnitThatIsThereAlready)
{
    import("time,T (°C)\n2015-01-01,0\n");
    const ImportSummary summary = import("time,T (°F)\n2015-01-02,212\n");
    EXPECT_FALSE(summary.firstImport);
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°C"));
    EXPECT_NEAR(values(QStringLiteral("t"))[1].value(), 100, 1e-9);
    EXPECT_EQ(failure("time,T (hPa)\n2015-01-03,1000\n"), (ImportFinding{.what = What::IncompatibleUnits,
                                                                         .column = QStringLiteral("T (hPa)"),
                                                                         .text = QStringLiteral("hPa"),
                                                                         .archivedUnit = QStringLiteral("°C")}));
}

TEST_F(ImporterTest, ASecondAgentHasAFirstImportOfItsOwn)
{
    import("time,a\n2015-01-01,1\n");
    m_options.agentName = QStringLiteral("other");
    const ImportSummary summary = import("time,a\n2015-01-01,1\n");
    EXPECT_FALSE(summary.createdSite);
    EXPECT_TRUE(summary.firstImport);
}

TEST_F(ImporterTest, ProgressEndsAtTheFilesLength)
{
    const QByteArray text = "time,a\n2015-01-01,1\n";
    qint64 last = 0;
    importFile(write(text), site(), {}, [&](qint64 done, qint64 total) {
        EXPECT_GE(done, last);
        EXPECT_EQ(total, text.size());
        last = done;
        return true;
    });
    EXPECT_EQ(last, text.size());
}

}  // namespace

}  // namespace plotix
