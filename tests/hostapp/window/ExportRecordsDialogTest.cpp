#include "hostapp/window/ExportRecordsDialog.h"

#include "base/WholeDay.h"

#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <stdexcept>

namespace plotix {

namespace {

const ExportRecordsDialog::Span kWeek(1'700'000'000, 1'700'604'800);

/// Roof with three properties, two of them shown, and Cellar with one.
std::vector<ExportRecordsDialog::Source> sources()
{
    return {{"Roof", {{"Air", true}, {"Wind", false}, {"Wind <b>Gusts</b>", true}}}, {"Cellar", {{"Damp", true}}}};
}

using Positions = std::vector<std::size_t>;

TEST(ExportRecordsDialogTest, OffersWhatTheTrendShowsFirst)
{
    EXPECT_EQ(ExportRecordsDialog(sources(), kWeek).span(), kWeek);
    EXPECT_FALSE(ExportRecordsDialog(sources(), {}).span());
}

TEST(ExportRecordsDialogTest, AllOrAChosenSpanOnRequest)
{
    ExportRecordsDialog dialog(sources(), kWeek);
    dialog.chooseAll();
    EXPECT_FALSE(dialog.span());
    const ExportRecordsDialog::Span day(kWeek.first, kWeek.first + 86'400);
    dialog.chooseSpan(day);
    EXPECT_EQ(dialog.span(), day);
}

TEST(ExportRecordsDialogTest, DaysChosenInTheCalendarAreWholeDays)
{
    ExportRecordsDialog dialog(sources(), kWeek);
    dialog.chooseSpan(kWeek);
    for (const auto* edit : dialog.findChildren<QDateTimeEdit*>())
        emit edit->calendarWidget()->clicked(QDate(2023, 11, 20));
    EXPECT_EQ(dialog.span()->first, 1'700'438'400);
    EXPECT_EQ(dialog.span()->second, lastMomentOf(QDate(2023, 11, 20))->seconds);
}

TEST(ExportRecordsDialogTest, AReversedSpanKeepsTheDialogOpen)
{
    ExportRecordsDialog dialog(sources(), kWeek);
    dialog.chooseSpan({kWeek.second, kWeek.first});
    dialog.accept();
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    dialog.chooseSpan(kWeek);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(ExportRecordsDialogTest, ADateThatDoesNotExistKeepsTheDialogOpen)
{
    ExportRecordsDialog dialog(sources(), kWeek);
    dialog.chooseSpan(kWeek);
    auto* from = dialog.findChild<QDateTimeEdit*>();
    auto* line = from->findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, "2013-02-31 10:00");
    dialog.accept();
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    QTest::keyClick(from, Qt::Key_Escape);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(ExportRecordsDialogTest, TheFormatBringsItsForm)
{
    ExportRecordsDialog dialog(sources(), {});
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

TEST(ExportRecordsDialogTest, BeginsWithTheLinesThatTheTrendShows)
{
    const ExportRecordsDialog dialog(sources(), kWeek);
    EXPECT_EQ(dialog.source(), 0U);
    EXPECT_EQ(dialog.properties(), (Positions{0, 2}));
}

TEST(ExportRecordsDialogTest, AnotherSourceBringsItsOwnProperties)
{
    ExportRecordsDialog dialog(sources(), kWeek);
    dialog.findChild<QComboBox*>()->setCurrentText("Cellar");
    EXPECT_EQ(dialog.source(), 1U);
    EXPECT_EQ(dialog.properties(), (Positions{0}));
}

/// A trend that is told by New York's clocks, of a site in Kathmandu.
class ExportClockChoiceTest : public testing::Test {
protected:
    QComboBox& clocks() { return *dialog.findChildren<QComboBox*>().at(3); }

    ExportRecordsDialog dialog{sources(), kWeek, nullptr, {QTimeZone("America/New_York"), QTimeZone("Asia/Kathmandu")}};
};

TEST_F(ExportClockChoiceTest, TheTrendsClocksComeFirst)
{
    EXPECT_EQ(dialog.form().clock, ExportForm::Clock::Local);
    EXPECT_EQ(dialog.form().zone, QTimeZone("America/New_York"));
    EXPECT_EQ(dialog.findChild<QDateTimeEdit*>()->dateTime().time(), QTime(17, 13, 20));  // 22:13:20 in UTC
}

TEST_F(ExportClockChoiceTest, TheSitesTheUsersAndUtcAreOffered)
{
    clocks().setCurrentIndex(3);
    EXPECT_EQ(dialog.form().zone, QTimeZone("Asia/Kathmandu"));
    clocks().setCurrentIndex(1);
    EXPECT_EQ(dialog.form().clock, ExportForm::Clock::Utc);
    clocks().setCurrentIndex(0);
    EXPECT_EQ(dialog.form().clock, ExportForm::Clock::Local);
    EXPECT_FALSE(dialog.form().zone.isValid());
}

TEST_F(ExportClockChoiceTest, TheChosenSpanStaysTheSameBySomeoneElsesClocks)
{
    dialog.chooseSpan(kWeek);
    clocks().setCurrentIndex(3);
    EXPECT_EQ(dialog.span(), kWeek);
    EXPECT_EQ(dialog.findChild<QDateTimeEdit*>()->dateTime().time(), QTime(3, 58, 20));
}

TEST(ExportRecordsDialogTest, NoClockIsOfferedTwice)
{
    const ExportRecordsDialog dialog(sources(), kWeek, nullptr, {QTimeZone::utc(), QTimeZone::utc()});
    EXPECT_EQ(dialog.findChildren<QComboBox*>().at(3)->count(), 2);
    EXPECT_EQ(dialog.form().clock, ExportForm::Clock::Utc);
}

/// As a person ticks, with the keyboard.
class ExportedPropertiesTest : public testing::Test {
protected:
    ExportedPropertiesTest()
    {
        dialog.show();
        dialog.activateWindow();
    }
    void search(const QString& text)
    {
        auto* field = dialog.findChild<PropertyChoice*>()->findChild<QLineEdit*>();
        field->setFocus();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    QListWidget& list() { return *dialog.findChild<QListWidget*>(); }
    QPushButton& button(const QString& text)
    {
        for (QPushButton* each : dialog.findChildren<QPushButton*>())
            if (each->text().remove('&') == text)
                return *each;
        throw std::runtime_error(text.toStdString());
    }

    ExportRecordsDialog dialog{sources(), kWeek};
};

TEST_F(ExportedPropertiesTest, ReturnInTheSearchLeadsToWhatWasFoundAndExportsNothing)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    search("wind");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(list().item(0)->isHidden());
    EXPECT_EQ(list().currentRow(), 1);
    EXPECT_TRUE(list().hasFocus());
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(dialog.properties(), (Positions{0, 1, 2}));
}

TEST_F(ExportedPropertiesTest, AllAndNoneAreThoseFound)
{
    search("wind");
    button("Untick All").click();
    EXPECT_EQ(dialog.properties(), (Positions{0}));
    button("Tick All").click();
    EXPECT_EQ(dialog.properties(), (Positions{0, 1, 2}));
}

TEST_F(ExportedPropertiesTest, WithoutAPropertyThereIsNothingToExport)
{
    button("Untick All").click();
    EXPECT_FALSE(button("Export…").isEnabled());
    EXPECT_EQ(button("Export…").toolTip(), "Tick a property first.");
}

TEST_F(ExportedPropertiesTest, TickingLeavesTheChoiceOfTheApostropheAlone)
{
    dialog.findChild<QCheckBox*>()->setChecked(true);
    button("Untick All").click();
    EXPECT_EQ(dialog.form().guardsFormulas, true);
}

TEST(ExportRecordsDialogTest, ColumnsOfQualityAreWrittenOnRequest)
{
    ExportRecordsDialog dialog(sources(), {});
    EXPECT_FALSE(dialog.form().withQualities);
    QTest::mouseClick(dialog.findChild<QCheckBox*>(QStringLiteral("qualities")), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_TRUE(dialog.form().withQualities);
}

}  // namespace

}  // namespace plotix
