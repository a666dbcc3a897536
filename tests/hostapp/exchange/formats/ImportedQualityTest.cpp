#include "tests/hostapp/exchange/formats/ImportFixture.h"

#include <cmath>

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImportedQualityTest : public ImportFixture {
protected:
    /// Rows a minute apart; those of `marks` are "Bad".
    static QByteArray rows(const QByteArray& header, const std::vector<QByteArray>& cells)
    {
        QByteArray text = header + '\n';
        for (std::size_t row = 0; row < cells.size(); ++row)
            text += "2024-02-01T12:" + QByteArray::number(10 + int(row)) + ":00Z," + cells[row] + '\n';
        return text;
    }

    static std::size_t notes(const ImportSummary& summary, What what)
    {
        return static_cast<std::size_t>(std::count_if(summary.notes.begin(), summary.notes.end(),
                                                      [what](const ImportFinding& note) { return note.what == what; }));
    }

    Numbers imported(const QByteArray& header, const std::vector<QByteArray>& cells, const QString& key)
    {
        m_summary = import(rows(header, cells));
        return values(key);
    }

    ImportSummary m_summary;
};

TEST_F(ImportedQualityTest, ValuesMarkedAsBadAreKeptAndInvalid)
{
    m_summary = import(rows("time,TI-101,TI-101 Status", {"1.5,Good", "99.25,Bad", "2.5,Uncertain"}));
    EXPECT_EQ(values(QStringLiteral("ti101")), (Numbers{1.5, {}, 2.5}));
    EXPECT_EQ(stored(QStringLiteral("ti101")), (std::vector<double>{1.5, 99.25, 2.5}));
    ASSERT_EQ(m_summary.columns.size(), 1U);
    EXPECT_EQ(m_summary.columns[0].marked, 1U);
    EXPECT_EQ(m_summary.columns[0].quality, QStringLiteral("TI-101 Status"));
    EXPECT_EQ(m_summary.columns[0].valid, 2U);
    EXPECT_EQ(m_summary.columns[0].highest, 2.5);
}

TEST_F(ImportedQualityTest, TheSlowPathMarksTheSame)
{
    imported("time,TI-101,TI-101 Status", {"1.5,\"Good\"", "99.25,\"Bad\"", "2e0,Bad "}, QStringLiteral("ti101"));
    EXPECT_EQ(values(QStringLiteral("ti101")), (Numbers{1.5, {}, {}}));
    EXPECT_EQ(stored(QStringLiteral("ti101")), (std::vector<double>{1.5, 99.25, 2}));
}

TEST_F(ImportedQualityTest, TheNameMayStandInFrontOrBehindWithAnySignBetween)
{
    for (const char* const header :
         {"T,T_flag", "T [°C],T Quality", "Status T,T", "T.Value,T.Quality", "T Wert,T Zustand"}) {
        const bool isFirst = QByteArray(header).startsWith("Status");
        const std::vector<QByteArray> cells =
            isFirst ? std::vector<QByteArray>{"ok,1", "fault,2"} : std::vector<QByteArray>{"1,ok", "2,fault"};
        m_options.agentName = QString::fromUtf8(header);
        EXPECT_EQ(import(rows(QByteArray("time,") + header, cells)).columns.front().marked, 1U) << header;
    }
}

TEST_F(ImportedQualityTest, OfTwoColumnsAboutOneValueTheWorseCounts)
{
    m_summary = import(rows("time,a,a Status,a Quality", {"1,Good,192", "2,Good,0", "3,Bad,192"}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}, {}}));
    EXPECT_EQ(m_summary.columns.front().quality, QStringLiteral("a Status, a Quality"));
}

TEST_F(ImportedQualityTest, ABareWordIsAboutTheValueInFrontOfIt)
{
    m_summary = import(rows("time,a,Status,b,Status", {"1,Bad,5,Good", "2,Good,6,Bad"}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{{}, 2}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{5, {}}));
}

TEST_F(ImportedQualityTest, TheOnlyBareWordAtTheEndIsAboutTheRow)
{
    m_summary = import(rows("time,a,b,Quality", {"1,5,Bad", "2,6,Good"}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{{}, 2}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{{}, 6}));
}

TEST_F(ImportedQualityTest, BareWordsThatMayBeAboutSeveralColumnsAreLeft)
{
    m_summary = import(rows("time,a,b,Status,c,Status", {"1,5,Bad,7,Good", "2,6,Good,8,Good"}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{5, 6}));
    EXPECT_EQ(notes(m_summary, What::QualityNotAssigned), 1U);
}

TEST_F(ImportedQualityTest, AMeasuredStatusStaysAMeasurement)
{
    EXPECT_EQ(imported("time,a,Status", {"1,0", "2,1"}, QStringLiteral("status")), (Numbers{0, 1}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 2}));
    m_options.agentName = QStringLiteral("words");
    m_summary = import(rows("time,a,Status", {"1,aus", "2,ein"}));
    EXPECT_EQ(m_summary.columns.size(), 2U);
    EXPECT_EQ(m_summary.columns[0].marked + m_summary.columns[1].marked, 0U);
}

TEST_F(ImportedQualityTest, UnknownWordsAmongKnownOnesAreTold)
{
    m_summary = import(rows("time,a,a Status", {"1,Good", "2,Lab", "3,Bad"}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 2, 3}));
    EXPECT_EQ(notes(m_summary, What::QualityNotSure), 1U);
}

TEST_F(ImportedQualityTest, UnknownWordsFarBelowCountAsGoodAndAreTold)
{
    QByteArray text = "time,a,a Status\n";
    for (int row = 0; row < 900; ++row)
        text += QByteArray::number(1'700'000'000 + row) + ",1,Good\n";
    m_summary = import(text + "1700000900,2,Lab\n1700000901,3,Bad\n1700000902,4,Lab\n");
    EXPECT_EQ(m_summary.columns[0].marked, 1U);
    const auto note = std::find_if(m_summary.notes.begin(), m_summary.notes.end(), [](const ImportFinding& finding) {
        return finding.what == What::QualityWordsUnknown;
    });
    ASSERT_NE(note, m_summary.notes.end());
    EXPECT_EQ(*note,
              (ImportFinding{
                  .what = What::QualityWordsUnknown, .line = 902, .column = "a Status", .text = "Lab", .found = 2}));
}

TEST_F(ImportedQualityTest, NumericCodesMarkValuesAndAreNoMeasurement)
{
    m_summary = import(rows("time,Value,Quality", {"1,192", "2,0", "3,64", "4,24"}));
    ASSERT_EQ(m_summary.columns.size(), 1U);
    EXPECT_EQ(values(QStringLiteral("value")), (Numbers{1, {}, 3, {}}));
}

TEST_F(ImportedQualityTest, RowsThatNameTheirQuantityAreJudgedEach)
{
    const QByteArray text = "Time,Tag,Value,Quality\n"
                            "2024-02-01T12:00:00Z,A,1,Good\n2024-02-01T12:00:00Z,B,5,Bad\n"
                            "2024-02-01T12:01:00Z,A,2,Bad\n2024-02-01T12:01:00Z,B,6,Good\n";
    m_summary = import(text);
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{{}, 6}));
    EXPECT_EQ(stored(QStringLiteral("b")), (std::vector<double>{5, 6}));
}

TEST_F(ImportedQualityTest, OneOfSeveralQuantitiesCanBeNamed)
{
    m_options.quality = {{QStringLiteral("Code"), QStringLiteral("B")}};
    import("Time,Tag,Value,Code\n2024-02-01T12:00:00Z,A,1,Bad\n2024-02-01T12:00:00Z,B,5,Bad\n"
           "2024-02-01T12:01:00Z,A,2,Good\n2024-02-01T12:01:00Z,B,6,Good\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, 2}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{{}, 6}));
}

TEST_F(ImportedQualityTest, ItCanBeIgnored)
{
    m_options.ignoreQuality = true;
    EXPECT_EQ(imported("time,a,a Status", {"1,Good", "2,Bad"}, QStringLiteral("a")), (Numbers{1, 2}));
    EXPECT_EQ(notes(m_summary, What::QualityRecognised), 0U);
}

TEST_F(ImportedQualityTest, AnyColumnCanBeNamedWithItsWords)
{
    m_options.quality = {{QStringLiteral("Status"), QStringLiteral("a")}};
    const QByteArray text = rows("time,a,b,Status", {"1,5,0", "2,6,1"});
    EXPECT_EQ(failure(text), (ImportFinding{.what = What::QualityHasNoWords, .column = "Status", .text = "0"}));
    m_options.badWords = {QStringLiteral("1")};
    m_summary = import(text);
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{5, 6}));
    EXPECT_EQ(m_summary.columns.size(), 2U);
}

TEST_F(ImportedQualityTest, AColumnCanBeNamedForTheWholeRow)
{
    m_options.quality = {{QStringLiteral("note"), QStringLiteral("*")}};
    m_options.badWords = {QStringLiteral("test")};
    import(rows("time,a,note,b", {"1,,5", "2,Test,6"}));
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}}));
    EXPECT_EQ(values(QStringLiteral("b")), (Numbers{5, {}}));
}

TEST_F(ImportedQualityTest, AColumnThatIsNotThereIsRefused)
{
    m_options.quality = {{QStringLiteral("Flag"), QStringLiteral("a")}};
    EXPECT_EQ(failure(rows("time,a", {"1", "2"}))->option, ImportOption::Quality);
}

TEST_F(ImportedQualityTest, OfRowsAtOneTimeTheGoodOneCounts)
{
    import("time,a,a Status\n2024-02-01,1,Good\n2024-02-01,9,Bad\n2024-02-02,8,Bad\n2024-02-02,7,Bad\n");
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}}));
    EXPECT_EQ(stored(QStringLiteral("a")), (std::vector<double>{1, 7}));
}

TEST_F(ImportedQualityTest, ValuesMarkedLaterReplaceGoodOnesOnlyIfAllowed)
{
    import(rows("time,a", {"1", "2"}));
    const QByteArray marked = rows("time,a,a Status", {"1,Good", "2,Bad"});
    EXPECT_EQ(failure(marked)->what, What::WouldReplace);
    m_options.replace = true;
    import(marked);
    EXPECT_EQ(values(QStringLiteral("a")), (Numbers{1, {}}));
}

TEST_F(ImportedQualityTest, AStatusThatBeginsEmptyIsLookedAtFurtherDown)
{
    QByteArray text = "time,a,a Status\n";
    for (int row = 0; row < 900; ++row)
        text += QByteArray::number(1'700'000'000 + row) + ",1,\n";
    m_summary = import(text + "1700000900,2,Bad\n");
    EXPECT_EQ(m_summary.columns[0].marked, 1U);
}

TEST_F(ImportedQualityTest, APreviewShowsWhatIsMarkedAndBy)
{
    const ImportPreview shown = previewOf(write(rows("time,a,a Status", {"1,Good", "2,Bad", ",Bad"})), m_options);
    EXPECT_EQ(shown.columns[1].marked, 1U);
    EXPECT_EQ(shown.columns[1].quality, QStringLiteral("a Status"));
    EXPECT_EQ(shown.columns[2].reason, ImportPreview::Column::Reason::JudgesValues);
    EXPECT_EQ(shown.columns[2].judges, QStringList{QStringLiteral("a")});
    EXPECT_EQ(shown.rows[1].values, (std::vector<std::optional<double>>{2}));
    EXPECT_EQ(shown.rows[1].marked, std::vector<bool>{true});
    EXPECT_EQ(shown.rows[2].marked, std::vector<bool>{false});
}

}  // namespace

}  // namespace plotix
