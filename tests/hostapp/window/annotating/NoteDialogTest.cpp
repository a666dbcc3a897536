#include "hostapp/window/annotating/NoteDialog.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace plotix {

namespace {

constexpr double kNoon = 1'357'041'600.25;  // with a fraction that the fields do not show

/// A note about a site with Air and Wind.
class NoteDialogTest : public testing::Test {
protected:
    void open(SiteNote note)
    {
        dialog = std::make_unique<NoteDialog>(note, NoteDialog::Properties{{4, "Air"}, {9, "Wind"}});
        dialog->show();
    }
    void openNew() { open({0, kNoon, kNoon, "Ada", {}, {}}); }
    QPlainTextEdit& text() { return *dialog->findChild<QPlainTextEdit*>(); }
    QCheckBox& box(const char* title)
    {
        for (QCheckBox* each : dialog->findChildren<QCheckBox*>())
            if (each->text().remove('&') == QLatin1String(title))
                return *each;
        ADD_FAILURE() << "no " << title;
        return *dialog->findChild<QCheckBox*>();
    }
    QDateTimeEdit& moment(int index) { return *dialog->findChildren<QDateTimeEdit*>().at(index); }
    QMessageBox* question()
    {
        auto* found = dialog->findChild<QMessageBox*>();
        return found && found->isVisible() ? found : nullptr;
    }
    QListWidget& properties() { return *dialog->findChild<QListWidget*>(); }
    QString problem() { return dialog->findChild<QLabel*>("problem")->text(); }
    bool canAccept() { return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled(); }

    std::unique_ptr<NoteDialog> dialog;
};

TEST_F(NoteDialogTest, ANewNoteNeedsNothingButAText)
{
    openNew();
    EXPECT_FALSE(canAccept());
    QTest::keyClicks(&text(), "pump replaced");
    EXPECT_TRUE(canAccept());
    EXPECT_EQ(dialog->note(), (SiteNote{0, kNoon, kNoon, "Ada", "pump replaced", {}}));
}

TEST_F(NoteDialogTest, ADateThatDoesNotExistIsSaidAndNoNoteIsOfAnotherDay)
{
    openNew();
    QTest::keyClicks(&text(), "pump replaced");
    auto* line = moment(0).findChild<QLineEdit*>();
    line->selectAll();
    const QDateTime last(QDate(2013, 3, 31), QTime(9, 0));
    QTest::keyClicks(line, moment(0).locale().toString(last, moment(0).displayFormat()).replace("31", "32"));
    EXPECT_FALSE(canAccept());
    EXPECT_EQ(problem(), "There is no such date.");
    EXPECT_EQ(dialog->note().from, kNoon);
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_TRUE(canAccept());
}

TEST_F(NoteDialogTest, EscapeDropsNothingThatWasWrittenUnasked)
{
    openNew();
    QTest::keyClicks(&text(), "pump replaced");
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    ASSERT_TRUE(question());
    EXPECT_TRUE(dialog->isVisible());
    question()->button(QMessageBox::Cancel)->click();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(text().toPlainText(), "pump replaced");
}

TEST_F(NoteDialogTest, WhatWasWrittenIsSavedOrDroppedAsAnswered)
{
    for (const auto answer : {QMessageBox::Save, QMessageBox::Discard}) {
        openNew();
        QTest::keyClicks(&text(), "pump replaced");
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
        question()->button(answer)->click();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), answer == QMessageBox::Save ? QDialog::Accepted : QDialog::Rejected);
    }
}

TEST_F(NoteDialogTest, WhatCannotBeSavedIsNotOfferedToBe)
{
    openNew();
    QTest::keyClicks(&text(), "pump replaced");
    box("All properties").click();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(question()->button(QMessageBox::Save)->isEnabled());
}

TEST_F(NoteDialogTest, WithNothingWrittenEscapeClosesAtOnce)
{
    openNew();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(question());
}

TEST_F(NoteDialogTest, ASpanHasALaterEnd)
{
    openNew();
    QTest::keyClicks(&text(), "storm");
    box("Until:").click();
    EXPECT_TRUE(problem().contains("later end")) << problem().toStdString();
    moment(1).setDateTime(moment(1).dateTime().addSecs(3600));
    EXPECT_TRUE(canAccept());
    EXPECT_EQ(dialog->note().from, kNoon);
    EXPECT_EQ(dialog->note().to, std::floor(kNoon) + 3600);
    box("Until:").click();
    EXPECT_EQ(dialog->note().to, kNoon);
}

TEST_F(NoteDialogTest, PropertiesAreTickedAndOnesThatAreGoneStayNamed)
{
    open({5, kNoon, kNoon, "Ada", "cold", {2, 4}});
    EXPECT_FALSE(box("All properties").isChecked());
    properties().item(0)->setCheckState(Qt::Unchecked);
    properties().item(1)->setCheckState(Qt::Checked);
    EXPECT_EQ(dialog->note().properties, (std::vector<qint64>{2, 9}));
    box("All properties").click();
    EXPECT_TRUE(dialog->note().properties.empty());
}

TEST_F(NoteDialogTest, TimesAreByTheClocksItWasOpenedWith)
{
    const SiteNote note{5, kNoon, kNoon, "Ada", "cold", {}};
    dialog = std::make_unique<NoteDialog>(note, NoteDialog::Properties{}, nullptr, QTimeZone("America/New_York"));
    EXPECT_EQ(moment(0).time(), QTime(7, 0));
    EXPECT_EQ(dialog->note(), note);
    moment(0).setTime(QTime(8, 0));
    EXPECT_EQ(dialog->note().from, std::floor(kNoon) + 3600);
}

TEST_F(NoteDialogTest, AboutNothingIsRefused)
{
    openNew();
    QTest::keyClicks(&text(), "cold");
    box("All properties").click();
    EXPECT_TRUE(problem().contains("Tick"));
    EXPECT_FALSE(canAccept());
}

}  // namespace
}  // namespace plotix
