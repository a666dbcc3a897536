#include "tests/hostapp/window/importing/ImportDialogFixture.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QScrollArea>

namespace plotix {

namespace {

constexpr const char* kGerman = "Zeit;T [°C];Feuchte [%];Bemerkung\n"
                                "01.02.2024 12:00;1,5;40;trocken\n"
                                "01.02.2024 13:00;;41;nass\n";

class ImportDialogTest : public ImportDialogFixture {};

TEST_F(ImportDialogTest, CannotImportBeforeAFileIsThere)
{
    dialog = std::make_unique<ImportDialog>(QStringList());
    EXPECT_FALSE(canImport());
    dialog->setFile(write("time,a\n2024-01-01,1\n"));
    EXPECT_TRUE(canImport());
}

TEST_F(ImportDialogTest, AgentFollowsTheFileUntilTheUserNamesOne)
{
    dialog = std::make_unique<ImportDialog>(QStringList{QStringLiteral("Station")});
    dialog->setFile(QStringLiteral("/nowhere/cellar.csv"));
    EXPECT_EQ(dialog->options().agentName, QStringLiteral("cellar"));
    dialog->setFile(QStringLiteral("/nowhere/attic.csv"));
    EXPECT_EQ(dialog->options().agentName, QStringLiteral("attic"));
    EXPECT_TRUE(dialog->namesAgentByFile());
    dialog->findChild<QComboBox*>(QStringLiteral("agent"))->setCurrentText(QStringLiteral("Station"));
    dialog->setFile(QStringLiteral("/nowhere/roof.csv"));
    EXPECT_EQ(dialog->options().agentName, QStringLiteral("Station"));
    EXPECT_FALSE(dialog->namesAgentByFile());
}

TEST_F(ImportDialogTest, RowsAreChosenByATextInAColumn)
{
    dialog = std::make_unique<ImportDialog>(QStringList());
    dialog->setFile(write("time,origin,a\n2024-01-01,EWR,1\n"));
    auto* wanted = dialog->findChild<QLineEdit*>(QStringLiteral("rows"));
    wanted->setText(QStringLiteral("origin"));
    EXPECT_FALSE(canImport());
    wanted->setText(QStringLiteral("origin = EWR"));
    EXPECT_TRUE(canImport());
    const ImportOptions::ByColumn expected = {{QStringLiteral("origin"), QStringLiteral("EWR")}};
    EXPECT_EQ(dialog->options().where, expected);
}

TEST_F(ImportDialogTest, ShowsTheFirstRowsAsUnderstood)
{
    show(kGerman);
    EXPECT_EQ(howMany(), QStringLiteral("All 2 rows, as understood"));
    ASSERT_EQ(rows().model()->columnCount(), 3);
    EXPECT_TRUE(cell(0, 0).endsWith(QStringLiteral("12:00:00 UTC"))) << cell(0, 0).toStdString();
    EXPECT_EQ(cell(0, 1), QStringLiteral("1.5"));
    EXPECT_EQ(cell(1, 1), QStringLiteral("–"));
    EXPECT_EQ(rows().model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("T (°C)"));
    EXPECT_TRUE(problem().isEmpty());
}

TEST_F(ImportDialogTest, SaysOfEachColumnWhatItIsOrWhyItIsLeftOut)
{
    show(kGerman);
    ASSERT_EQ(columns().model()->rowCount(), 4);
    EXPECT_EQ(column(0, 3), QStringLiteral("the time"));
    EXPECT_EQ(column(1, 1), QStringLiteral("T"));
    EXPECT_EQ(column(1, 2), QStringLiteral("°C"));
    EXPECT_EQ(column(2, 3), QStringLiteral("2 numbers"));
    EXPECT_EQ(column(3, 3), QStringLiteral("no number so far"));
}

TEST_F(ImportDialogTest, FieldsShowWhatWasFoundOut)
{
    show(kGerman);
    EXPECT_EQ(choice(QStringLiteral("Semicolon"))->currentText(), QStringLiteral("Automatic: Semicolon"));
    EXPECT_EQ(choice(QStringLiteral("Comma: 1,5"))->currentText(), QStringLiteral("Automatic: Comma: 1,5"));
    EXPECT_EQ(choice(QStringLiteral("Day before month"))->currentText(), QStringLiteral("Automatic: Day before month"));
    const auto* time = dialog->findChild<QComboBox*>(QStringLiteral("timeColumn"));
    EXPECT_EQ(time->lineEdit()->placeholderText(), QStringLiteral("Automatic: Zeit"));
    EXPECT_EQ(dialog->options().dateOrder, DateOrder::Detect);
}

TEST_F(ImportDialogTest, AChangedGuessChangesTheRows)
{
    show(kGerman);
    EXPECT_TRUE(cell(0, 0).contains(QStringLiteral("Feb")) || cell(0, 0).startsWith(QStringLiteral("1 ")))
        << cell(0, 0).toStdString();
    const QString before = cell(0, 0);
    choose(QStringLiteral("Month before day"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_NE(cell(0, 0), before);
    EXPECT_EQ(choice(QStringLiteral("Day before month"))->itemText(0), QStringLiteral("Automatic: Day before month"));
}

TEST_F(ImportDialogTest, TypedNamesAndUnitsGoIntoTheRowsHeader)
{
    show(kGerman);
    typeIntoCell(1, 1, QStringLiteral("Cellar"));
    typeIntoCell(1, 2, QStringLiteral("K"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(rows().model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Cellar (K)"));
    const ImportOptions::ByColumn names = {{QStringLiteral("T [°C]"), QStringLiteral("Cellar")}};
    EXPECT_EQ(dialog->options().names, names);
}

TEST_F(ImportDialogTest, AnUntickedColumnIsLeftOut)
{
    show(kGerman);
    tick(1);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(dialog->options().leaveOut, QStringList(QStringLiteral("T [°C]")));
    EXPECT_EQ(rows().model()->columnCount(), 2);
    EXPECT_EQ(column(1, 3), QStringLiteral("not ticked"));
    tick(1);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(rows().model()->columnCount(), 3);
}

TEST_F(ImportDialogTest, AColumnLeftOutCanBeTicked)
{
    show("time,unixtime,a\n2024-02-01,1706788800,1\n2024-02-02,1706875200,2\n");
    const int before = rows().model()->columnCount();
    tick(1);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(before, 2);
    EXPECT_EQ(rows().model()->columnCount(), 3);
}

TEST_F(ImportDialogTest, ColumnsOfOneHeaderAreChosenOneByOne)
{
    show("time,T,T,T\n2024-01-01,1,2,3\n2024-01-02,2,4,6\n");
    tick(2);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(rows().model()->columnCount(), 3);
    EXPECT_EQ(cell(0, 1), QStringLiteral("1"));
    EXPECT_EQ(cell(0, 2), QStringLiteral("3"));
}

TEST_F(ImportDialogTest, WhatMayMeanTwoThingsIsAskedInItsField)
{
    show("Datum;a\n13.01.2024;1.234\n14.01.2024;2.345\n");
    EXPECT_TRUE(problem().contains(QStringLiteral("thousands or decimals"))) << problem().toStdString();
    EXPECT_FALSE(canImport());
    QComboBox* decimal = choice(QStringLiteral("Comma: 1,5"));
    EXPECT_TRUE(decimal->hasFocus());
    EXPECT_FALSE(decimal->accessibleDescription().isEmpty());
    choose(QStringLiteral("Comma: 1,5"));
    EXPECT_TRUE(canImport());  // until it is known better
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(problem().isEmpty()) << problem().toStdString();
    EXPECT_EQ(cell(0, 1), QStringLiteral("1234"));
    EXPECT_TRUE(canImport());
}

TEST_F(ImportDialogTest, AUnitThatIsNoneIsToldAndFocused)
{
    show(kGerman);
    typeIntoCell(1, 2, QStringLiteral("nonsense"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(problem().contains(QStringLiteral("nonsense"))) << problem().toStdString();
    EXPECT_FALSE(canImport());
    typeIntoCell(1, 2, QStringLiteral("°F"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(canImport());
}

TEST_F(ImportDialogTest, ARefusalFocusesItsFieldAndStandsUntilSomethingChanges)
{
    show(kGerman);
    dialog->showRefusal({.what = ImportFinding::What::ManyRowsAtOneTime, .found = 9, .expected = 5});
    EXPECT_TRUE(problem().contains(QStringLiteral("5 of 9 rows"))) << problem().toStdString();
    EXPECT_TRUE(choice(QStringLiteral("Keep the last row"))->hasFocus());
    EXPECT_TRUE(canImport());
    choose(QStringLiteral("Keep the last row"));
    EXPECT_TRUE(problem().isEmpty());
}

TEST_F(ImportDialogTest, ARefusedUnitLeadsToTheCellOfItsColumn)
{
    show(kGerman);
    dialog->showRefusal({.what = ImportFinding::What::IncompatibleUnits,
                         .column = QStringLiteral("Feuchte [%]"),
                         .text = QStringLiteral("%"),
                         .archivedUnit = QStringLiteral("K")});
    EXPECT_TRUE(columns().hasFocus());
    EXPECT_EQ(columns().currentIndex().row(), 2);
    EXPECT_EQ(columns().currentIndex().column(), 2);
}

TEST_F(ImportDialogTest, FieldsThatMeanNothingForTheFileAreHidden)
{
    show(kGerman);
    EXPECT_TRUE(choice(QStringLiteral("Semicolon"))->isVisible());
    dialog->setFile(qEnvironmentVariable("PLOTIX_TEST_SOURCE_DIR") +
                    QStringLiteral("/tests/data/exports/sheet_second.xlsx"));
    ASSERT_TRUE(waitForPreview());
    EXPECT_FALSE(choice(QStringLiteral("Semicolon"))->isVisible());
    EXPECT_GT(rows().model()->rowCount(), 0);
}

TEST_F(ImportDialogTest, OnlyTheLastChangesAnswerIsShown)
{
    show(kGerman);
    for (const char* zone : {"+01:00", "+02:00", "+03:00"}) {
        dialog->findChild<QComboBox*>(QStringLiteral("timeZone"))->setEditText(QLatin1String(zone));
        QTest::qWait(260);
    }
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(cell(0, 0).endsWith(QStringLiteral("09:00:00 UTC"))) << cell(0, 0).toStdString();
}

TEST_F(ImportDialogTest, WhatWasFilledInComesBack)
{
    show(kGerman);
    ImportOptions options;
    options.agentName = QStringLiteral("House");
    options.timeColumn = QStringLiteral("Zeit");
    options.timeZone = QStringLiteral("+01:00");
    options.dateOrder = DateOrder::DayFirst;
    options.decimal = DecimalSign::Comma;
    options.delimiter = QStringLiteral(";");
    options.arrangement = Arrangement::Columns;
    options.rowsAtOneTime = RowsAtOneTime::KeepLast;
    options.where = {{QStringLiteral("Bemerkung"), QStringLiteral("nass")}};
    options.leaveOut = {QStringLiteral("T [°C]")};
    options.units = {{QStringLiteral("Feuchte [%]"), QStringLiteral("K")}};
    options.names = {{QStringLiteral("Feuchte [%]"), QStringLiteral("Wet")}};
    options.keepAllNumbers = options.skipBadRows = true;
    dialog->setOptions(options);
    EXPECT_EQ(dialog->options(), options);
    ASSERT_TRUE(waitForPreview());
    EXPECT_EQ(dialog->options(), options);
}

TEST_F(ImportDialogTest, WhatWasChosenForAColumnWaitsForAFileThatHasIt)
{
    show(kGerman);
    tick(1);
    ASSERT_TRUE(waitForPreview());
    dialog->setFile(write("time,a\n2024-01-01,1\n", QStringLiteral("attic.csv")));
    ASSERT_TRUE(waitForPreview());
    EXPECT_TRUE(dialog->options().leaveOut.isEmpty());
    EXPECT_TRUE(problem().isEmpty()) << problem().toStdString();
}

TEST_F(ImportDialogTest, ClosesWhileItReads)
{
    QByteArray text = "Date;a\n";
    for (int row = 0; row < 400'000; ++row)
        text += "03/04/2024;1\n";
    dialog = std::make_unique<ImportDialog>(QStringList());
    dialog->show();
    dialog->setFile(write(text));
    QTest::qWait(20);
    dialog.reset();
    QTest::qWait(50);
}

TEST_F(ImportDialogTest, SkippingAndStandingForAllAreThereWhenMoreFilesCome)
{
    show(kGerman);
    EXPECT_FALSE(button(QStringLiteral("Skip This File"))->isVisible());
    dialog->setMoreToCome(3);
    EXPECT_TRUE(button(QStringLiteral("Skip This File"))->isVisible());
    dialog->setStandsForAll(true);
    EXPECT_TRUE(dialog->standsForAll());
    dialog->setMoreToCome(0);
    EXPECT_FALSE(dialog->standsForAll());
}

TEST_F(ImportDialogTest, TheTabKeyLeadsThroughTheTablesToTheButtons)
{
    show(kGerman);
    dialog->setMoreToCome(1);
    columns().setFocus();
    QTest::keyClick(&columns(), Qt::Key_Tab);
    EXPECT_TRUE(rows().hasFocus());
    QTest::keyClick(&rows(), Qt::Key_Tab);
    EXPECT_TRUE(QApplication::focusWidget()->inherits("QCheckBox"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(button(QStringLiteral("Import"))->hasFocus());
}

}  // namespace

}  // namespace plotix
