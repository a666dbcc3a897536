#include "tests/hostapp/exchange/formats/ImportFixture.h"

#include <algorithm>

namespace plotix {

namespace {

using What = ImportFinding::What;

class ImportedUnitsTest : public ImportFixture {};

const QByteArray kTwoKinds =
    "Time,Sensor,Value,Unit\n2024-05-01 10:00,Outdoor,20.5,°C\n2024-05-01 10:00,Outdoor,45,%\n";
const QByteArray kTwoDevices =
    "Zeit;Gerät;Temp °C;Feuchte %\n01.05.2024 10:00:01;Keller;10,5;70\n01.05.2024 10:00:07;Dach;25,5;40\n"
    "01.05.2024 10:01:01;Keller;10,6;71\n01.05.2024 10:01:07;Dach;25,6;41\n";

TEST_F(ImportedUnitsTest, ACellIsInItsOwnUnit)
{
    const ImportSummary summary = import("time,p\n2015-01-01,950 W\n2015-01-02,1.2 kW\n2015-01-03,960 W\n");
    EXPECT_EQ(values(QStringLiteral("p")), (Numbers{950, 1200, 960}));
    EXPECT_EQ(summary.columns[0].unit, QStringLiteral("W"));
    EXPECT_EQ(summary.columns[0].bad, 0U);
}

TEST_F(ImportedUnitsTest, ACellWhoseUnitIsOfAnotherKindIsABadCell)
{
    const ImportSummary summary = import("time,p\n2015-01-01,950 W\n2015-01-02,20 °C\n2015-01-03,960 W\n");
    EXPECT_EQ(values(QStringLiteral("p")), (Numbers{950, {}, 960}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
    EXPECT_EQ(summary.columns[0].firstBad->text, QString::fromUtf8("20 °C"));
}

TEST_F(ImportedUnitsTest, CellsAreConvertedToTheUnitOfTheHeader)
{
    import("time,P (kW)\n2015-01-01,950 W\n2015-01-02,1.2 kW\n2015-01-03,960 W\n");
    EXPECT_EQ(values(QStringLiteral("p")), (Numbers{0.95, 1.2, 0.96}));
}

TEST_F(ImportedUnitsTest, ABareNumberIsInNeitherOfTwoUnits)
{
    const ImportSummary summary =
        import("time,P (kW)\n2015-01-01,950 W\n2015-01-02,960 W\n2015-01-03,970 W\n2015-01-04,980 W\n2015-01-05,7\n");
    EXPECT_EQ(values(QStringLiteral("p")), (Numbers{0.95, 0.96, 0.97, 0.98, {}}));
    EXPECT_EQ(summary.columns[0].bad, 1U);
}

TEST_F(ImportedUnitsTest, AUnitSaidThatCellsContradictIsRefusedUntilItIsTheirs)
{
    const QByteArray text = "time,P (kW)\n2015-01-01,20 °C\n2015-01-02,21 °C\n";
    EXPECT_EQ(
        failure(text),
        (ImportFinding{
            .what = What::UnitsDisagree, .column = "P (kW)", .text = QString::fromUtf8("°C"), .archivedUnit = "kW"}));
    m_options.units = {{QStringLiteral("P (kW)"), QString::fromUtf8("°C")}};
    EXPECT_EQ(import(text).columns[0].lowest, 20);
}

TEST_F(ImportedUnitsTest, ARowThatNamesItsQuantityIsInItsOwnUnit)
{
    import("Time,Sensor,Value,Unit\n2024-05-01 10:00,P1,950,W\n2024-05-01 10:05,P1,1.2,kW\n");
    EXPECT_EQ(values(QStringLiteral("p1")), (Numbers{950, 1200}));
}

TEST_F(ImportedUnitsTest, AUnitSaidForANamedQuantityConvertsItsRows)
{
    m_options.units = {{QStringLiteral("P1"), QStringLiteral("kW")}};
    import("Time,Sensor,Value,Unit\n2024-05-01 10:00,P1,950,W\n2024-05-01 10:05,P1,1.2,kW\n");
    EXPECT_EQ(values(QStringLiteral("p1")), (Numbers{0.95, 1.2}));
}

TEST_F(ImportedUnitsTest, OneNameInTwoKindsOfUnitsIsTwoQuantities)
{
    const ImportSummary summary = import(kTwoKinds);
    ASSERT_EQ(summary.columns.size(), 2U);
    EXPECT_EQ(summary.columns[0].name, QString::fromUtf8("Outdoor (°C)"));
    EXPECT_EQ(summary.columns[1].name, QStringLiteral("Outdoor (%)"));
    EXPECT_EQ(summary.columns[0].highest, 20.5);
    EXPECT_EQ(summary.columns[1].lowest, 45);
}

TEST_F(ImportedUnitsTest, RowsLeftOutHaveNoSayAboutUnits)
{
    m_options.where = {{QStringLiteral("Unit"), QStringLiteral("%")}};
    const ImportSummary summary = import(kTwoKinds);
    ASSERT_EQ(summary.columns.size(), 1U);
    EXPECT_EQ(summary.columns[0].name, QStringLiteral("Outdoor"));
    EXPECT_EQ(summary.columns[0].unit, QStringLiteral("%"));
    m_options.where = {{QStringLiteral("Unit"), QStringLiteral("bar")}};
    EXPECT_EQ(failure(kTwoKinds).value().what, What::NoRowWanted);
}

TEST_F(ImportedUnitsTest, DevicesThatAlternateAreRefusedUntilOneIsTaken)
{
    EXPECT_EQ(
        failure(kTwoDevices),
        (ImportFinding{.what = What::ManyDevices, .column = QString::fromUtf8("Gerät"), .text = "Dach", .found = 2}));
    m_options.where = {{QString::fromUtf8("Gerät"), QStringLiteral("Dach")}};
    import(kTwoDevices);
    EXPECT_EQ(values(QStringLiteral("temp")), (Numbers{25.5, 25.6}));
}

TEST_F(ImportedUnitsTest, DevicesThatAlternateAreJoinedWhereThatIsSaid)
{
    m_options.rowsAtOneTime = RowsAtOneTime::KeepLast;
    EXPECT_EQ(import(kTwoDevices).records, 4U);
}

TEST_F(ImportedUnitsTest, UnitsThatAreNotKnownAreSaidAndLeaveTheNames)
{
    const ImportSummary summary =
        import("Zeit;Durchfluss;Leistung\n;Nm³/h;kvar\n01.05.2024 10:00;1,5;2,5\n01.05.2024 10:05;1,6;2,6\n");
    EXPECT_EQ(summary.columns[0].name, QStringLiteral("Durchfluss"));
    EXPECT_NE(std::find(summary.notes.begin(), summary.notes.end(),
                        ImportFinding{.what = What::UnitsNotKnown,
                                      .line = 2,
                                      .columns = {QString::fromUtf8("Nm³/h"), QStringLiteral("kvar")}}),
              summary.notes.end());
}

TEST_F(ImportedUnitsTest, GroupsAboveNamesAreNoUnits)
{
    const ImportSummary summary =
        import("Zeit;Keller;\n;Zulauf;Ablauf\n01.05.2024 10:00;1,5;2,5\n01.05.2024 10:05;1,6;2,6\n");
    EXPECT_EQ(summary.columns[0].name, QStringLiteral("Zulauf"));
}

}  // namespace

}  // namespace plotix
