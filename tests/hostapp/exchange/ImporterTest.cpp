#include "hostapp/exchange/Importer.h"

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace plotix {

namespace {

using Numbers = std::vector<std::optional<double>>;

class ImporterTest : public testing::Test {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = m_folder.filePath(QStringLiteral("data.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    ImportSummary import(const QByteArray& text) { return importFile(write(text), site(), m_options); }

    /// The one-line message of an import that must fail.
    QString failure(const QByteArray& text)
    {
        try {
            import(text);
        } catch (const ReportableError& error) {
            return error.message();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }

    QString site() const { return m_folder.filePath(QStringLiteral("site.plotix")); }

    std::vector<double> times()
    {
        const RecordBlock block = read();
        return {block.times.span().begin(), block.times.span().end()};
    }

    Numbers values(const QString& key)
    {
        const RecordBlock block = read();
        Numbers numbers;
        for (std::size_t index = 0; index < m_keys.size(); ++index)
            if (m_keys[index] == key)
                for (std::size_t row = 0; row < block.times.size(); ++row)
                    numbers.push_back(block.columns[index].validity.isValid(row)
                                          ? std::optional(block.columns[index].values[row])
                                          : std::nullopt);
        return numbers;
    }

    ImportOptions m_options;
    QTemporaryDir m_folder;

private:
    RecordBlock read()
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        m_keys.clear();
        for (const auto& property : agent->siteProperties()) {
            ids.push_back(property->description().id);
            m_keys.push_back(property->propertyName());
        }
        return plotix::recordsOfSite(site())->read(agent->id(), ids, {}, {}).value();
    }

    std::vector<QString> m_keys;
};

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

TEST_F(ImporterTest, BadFieldsInRowsThatAreNotAskedForDoNotMatter)
{
    m_options.where = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    EXPECT_EQ(import("origin,time,a\nEWR,2015-01-01,1\nJFK,never,oops\n").records, 1U);
}

TEST_F(ImporterTest, NamesColumnsWithoutASingleNumber)
{
    const ImportSummary summary = import("time,a,note,empty\n2015-01-01,1,dry,\n2015-01-02,2,wet,NA\n");
    EXPECT_EQ(summary.leftOut, (QStringList{"note", "empty"}));
    EXPECT_EQ(summary.columns.size(), 1U);
    EXPECT_TRUE(describeImport(summary).contains(QStringLiteral("Left out, without a single number: note, empty.")));
}

TEST_F(ImporterTest, SortsTimesAndKeepsTheLastOfRepeatedOnes)
{
    const ImportSummary summary = import("time,a\n2015-01-03,3\n2015-01-01,1\n2015-01-02,2\n2015-01-01,9\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{9, 2, 3}));
    EXPECT_EQ(summary.unorderedTimes, 2U);
    EXPECT_EQ(summary.repeatedTimes, 1U);
    EXPECT_EQ(summary.records, 3U);
}

TEST_F(ImporterTest, ReadsDecimalCommas)
{
    import("Zeit;Temperatur (°C)\n01.02.2015 12:00;21,5\n02.02.2015 12:00;-0,25\n");
    EXPECT_EQ(values(QStringLiteral("temperatur")), (Numbers{21.5, -0.25}));
}

TEST_F(ImporterTest, DecidesDayAndMonthOverTheWholeFile)
{
    QByteArray text = "date,a\n";
    for (int row = 0; row < 9000; ++row)  // far beyond the sample
        text += "3/4/2015 0:00,1\n";
    const ImportSummary summary = import(text + "3/14/2015 0:00,2\n");
    EXPECT_EQ(times(), (std::vector<double>{1425427200, 1426291200}));  // March
    EXPECT_TRUE(summary.notes.contains(QStringLiteral("Dates are read with the month first.")));
}

TEST_F(ImporterTest, RefusesDatesThatStayAmbiguousWithTheOptionsName)
{
    EXPECT_TRUE(failure("date,a\n3/4/2015,1\n").contains(QStringLiteral("--date-order")));
    m_options.dateOrder = DateOrder::DayFirst;
    import("date,a\n3/4/2015,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1428019200}));  // April
}

TEST_F(ImporterTest, ReadsLocalTimesInTheZoneGiven)
{
    m_options.timeZone = QStringLiteral("America/New_York");
    import("time,a\n2015-01-01 00:00,1\n");
    EXPECT_EQ(times(), (std::vector<double>{1420088400}));
}

TEST_F(ImporterTest, MakesNamesUnique)
{
    const ImportSummary summary = import("time,temp,Temp,%\n2015-01-01,1,2,3\n");
    ASSERT_EQ(summary.columns.size(), 3U);
    EXPECT_EQ(summary.columns[1].propertyName, QStringLiteral("temp2"));
    EXPECT_EQ(summary.columns[2].propertyName, QStringLiteral("column4"));
}

TEST_F(ImporterTest, ConvertsIntoTheUnitThatIsThereAlready)
{
    import("time,T (°C)\n2015-01-01,0\n");
    const ImportSummary summary = import("time,T (°F)\n2015-01-02,212\n");
    EXPECT_FALSE(summary.firstImport);
    EXPECT_EQ(summary.columns.front().unit, QStringLiteral("°C"));
    EXPECT_NEAR(values(QStringLiteral("t"))[1].value(), 100, 1e-9);
    EXPECT_TRUE(failure("time,T (hPa)\n2015-01-03,1000\n").contains(QStringLiteral("--name")));
}

TEST_F(ImporterTest, ASecondAgentHasAFirstImportOfItsOwn)
{
    import("time,a\n2015-01-01,1\n");
    m_options.agentName = QStringLiteral("other");
    const ImportSummary summary = import("time,a\n2015-01-01,1\n");
    EXPECT_FALSE(summary.createdSite);
    EXPECT_TRUE(summary.firstImport);
}

struct FailureCase {
    const char* name;
    QByteArray text;
    QString message;
};

class ImportFailure : public ImporterTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(ImportFailure, SaysWhereAndStoresNothing)
{
    const QString message = failure(GetParam().text);
    EXPECT_TRUE(message.contains(GetParam().message)) << message.toStdString();
    EXPECT_TRUE(message.startsWith(QStringLiteral("data.csv"))) << message.toStdString();
    EXPECT_FALSE(QFile::exists(site()));
}

INSTANTIATE_TEST_SUITE_P(
    Files, ImportFailure,
    testing::Values(FailureCase{"BadNumber", "time,a\n2015-01-01,1\n2015-01-02,x\n",
                                "line 3, column “a”: “x” is no number"},
                    FailureCase{"TextBeforeTheNumbers", "time,a\n2015-01-01,x\n2015-01-02,1\n",
                                "line 2, column “a”: “x” is no number"},
                    FailureCase{"BadTime", "time,a\n2015-01-01,1\nsoon,2\n2015-01-03,1\n",
                                "line 3, column “time”: “soon” is no time"},
                    FailureCase{"MissingTime", "time,a\n2015-01-01,1\n,2\n", "line 3, column “time”: “” is no time"},
                    FailureCase{"LongRow", "time,a\n2015-01-01,1\n2015-01-02,2\n2015-01-03,1,2\n",
                                "line 4: the row has 3 columns where the header stands for 2: “2015-01-03 1 2”"},
                    FailureCase{"ShortRow", "time,a\n2015-01-01,1\n2015-01-02\n", "line 3: the row has 1 columns"},
                    FailureCase{"LineAfterLineBreakInQuotes", "time,a,n\n2015-01-01,1,\"x\ny\"\n2015-01-02,z,w\n",
                                "line 4, column “a”: “z” is no number"},
                    FailureCase{"MixedDecimalMarks", "time;a\n2015-01-01;1,5\n2015-01-02;1.5\n",
                                "line 3, column “a”: “1.5” is no number"},
                    FailureCase{"NoNumbers", "time,a\n2015-01-01,x\n", "no column holds numbers"},
                    FailureCase{"Empty", "", "empty"}, FailureCase{"HeaderOnly", "time,a\n", "no rows"},
                    FailureCase{"OpenQuote", "time,a\n2015-01-01,\"1\n", "line 2: a quotation mark"}),
    [](const auto& row) { return row.param.name; });

TEST_F(ImporterTest, AFailureLeavesAnExistingSiteAsItWas)
{
    import("time,a\n2015-01-01,1\n");
    failure("time,a,b\n2015-01-01,5,6\n2015-01-02,x,7\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1}));
    EXPECT_TRUE(values(QStringLiteral("b")).empty());
}

TEST_F(ImporterTest, SkipsAndCountsBadRowsWhenAsked)
{
    m_options.skipBadRows = true;
    const ImportSummary summary = import(
        "time,a,note\n2015-01-01,1,x\nsoon,2,x\n2015-01-03,oops,x\n2015-01-04,4\n2015-01-05,5,x\n2015-01-02,6,x\n");
    EXPECT_EQ(summary.badRows, 3U);
    EXPECT_EQ(summary.firstBadRow, QStringLiteral("line 3, column “time”: “soon” is no time"));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 6, 5}));
    EXPECT_EQ(summary.leftOut, (QStringList{"note"}));
}

struct OptionCase {
    const char* name;
    std::function<void(ImportOptions&)> set;
    QString message;
};

class WrongOption : public ImporterTest, public testing::WithParamInterface<OptionCase> {};

TEST_P(WrongOption, IsNamed)
{
    GetParam().set(m_options);
    const QString message = failure("time,a\n2015-01-01,1\n");
    EXPECT_TRUE(message.contains(GetParam().message)) << message.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Options, WrongOption,
                         testing::Values(OptionCase{"Time", [](auto& o) { o.timeColumn = QStringLiteral("b"); },
                                                    "--time names the column “b”"},
                                         OptionCase{"TimeWithoutTimes",
                                                    [](auto& o) {
                                                        o.where = {{"b", "1"}};
                                                    },
                                                    "--where names"},
                                         OptionCase{"Only", [](auto& o) { o.only = QStringList{"b"}; },
                                                    "(columns: time, a)"},
                                         OptionCase{"Unit",
                                                    [](auto& o) {
                                                        o.units = {{"a", "bananas"}};
                                                    },
                                                    "“bananas”"},
                                         OptionCase{"Name",
                                                    [](auto& o) {
                                                        o.names = {{"b", "B"}};
                                                    },
                                                    "--name names"},
                                         OptionCase{"Zone", [](auto& o) { o.timeZone = QStringLiteral("Nowhere"); },
                                                    "“Nowhere” is no time zone"},
                                         OptionCase{"Where",
                                                    [](auto& o) {
                                                        o.where = {{"a", "7"}};
                                                    },
                                                    "--where"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(ImporterTest, AFileThatIsNotThereIsAnError)
{
    EXPECT_THROW(importFile(m_folder.filePath(QStringLiteral("none.csv")), site(), {}), ReportableError);
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImporterTest, CancellingStoresNothing)
{
    const QString file = write("time,a\n2015-01-01,1\n");
    EXPECT_THROW(importFile(file, site(), {}, [](qint64, qint64) { return false; }), ImportCancelled);
    EXPECT_FALSE(QFile::exists(site()));
}

TEST_F(ImporterTest, CancellingWhileStoringRollsBack)
{
    import("time,a\n2015-01-01,1\n");
    const QString file = write("time,a\n2015-01-02,1\n");
    int calls = 0;
    EXPECT_THROW(importFile(file, site(), {}, [&calls](qint64, qint64) { return ++calls < 2; }), ImportCancelled);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(times().size(), 1U);
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

TEST_F(ImporterTest, KeepsEveryBitOfExoticNumbers)
{
    import("time,a\n2015-01-01,-0\n2015-01-02,5e-324\n2015-01-03,inf\n2015-01-04,-1.7976931348623157e308\n");
    const Numbers numbers = values(QStringLiteral("a"));
    EXPECT_TRUE(std::signbit(numbers[0].value()));
    EXPECT_EQ(numbers[1], 5e-324);
    EXPECT_EQ(numbers[2], std::numeric_limits<double>::infinity());
    EXPECT_EQ(numbers[3], -std::numeric_limits<double>::max());
}

}  // namespace

}  // namespace plotix
