#include "hostapp/window/ExportRecordsDialog.h"

#include <gtest/gtest.h>

namespace plotix {

namespace {

const ExportRecordsDialog::Span kWeek(1'700'000'000, 1'700'604'800);

TEST(ExportRecordsDialogTest, OffersWhatTheTrendShowsFirst)
{
    EXPECT_EQ(ExportRecordsDialog(QStringLiteral("Roof"), kWeek).span(), kWeek);
    EXPECT_FALSE(ExportRecordsDialog(QStringLiteral("Roof"), {}).span());
}

TEST(ExportRecordsDialogTest, AllOrAChosenSpanOnRequest)
{
    ExportRecordsDialog dialog(QStringLiteral("Roof"), kWeek);
    dialog.chooseAll();
    EXPECT_FALSE(dialog.span());
    const ExportRecordsDialog::Span day(kWeek.first, kWeek.first + 86'400);
    dialog.chooseSpan(day);
    EXPECT_EQ(dialog.span(), day);
}

TEST(ExportRecordsDialogTest, AReversedSpanKeepsTheDialogOpen)
{
    ExportRecordsDialog dialog(QStringLiteral("Roof"), kWeek);
    dialog.chooseSpan({kWeek.second, kWeek.first});
    dialog.accept();
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    dialog.chooseSpan(kWeek);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(ExportRecordsDialogTest, TheFormatBringsItsForm)
{
    ExportRecordsDialog dialog(QStringLiteral("Roof"), {});
    EXPECT_EQ(dialog.fileType(), "csv");
    EXPECT_EQ(dialog.form().delimiter, ',');
    EXPECT_EQ(dialog.form().guardsFormulas, false);
    dialog.chooseSemicolons();
    EXPECT_EQ(dialog.form().delimiter, ';');
    EXPECT_EQ(dialog.form().decimalSign, ',');
    dialog.chooseWorkbook();
    EXPECT_EQ(dialog.fileType(), "xlsx");
    EXPECT_EQ(dialog.form().decimalSign, '.');
    EXPECT_EQ(dialog.form().guardsFormulas, true);
}

}  // namespace

}  // namespace plotix
