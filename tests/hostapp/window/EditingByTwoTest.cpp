#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/AnnotationEditor.h"
#include "hostapp/window/annotating/LimitsDialog.h"
#include "hostapp/window/annotating/NoteDialog.h"
#include "tests/hostapp/window/EditingFixture.h"

#include <QtTest/QTest>
#include <QtWidgets/QPlainTextEdit>

namespace {

/// Opens the note "storm", which somebody else changes to "hail" while "Snow" is typed.
class NoteOfTwoTest : public EditingTest {
protected:
    void SetUp() override
    {
        plotix::writeNote(site.document->path(), {0, 10, 10, "Ada", "storm", {}});
        site.document->reload();
        answerNext<plotix::NoteDialog>([this](plotix::NoteDialog* dialog) {
            plotix::SiteNote theirs = site.document->notes().front();
            theirs.text = QStringLiteral("hail");
            plotix::writeNote(site.document->path(), theirs);
            QTest::keyClicks(dialog->focusWidget(), "Snow");
            dialog->accept();
        });
    }
    void openNote() { site.document->annotationEditor()->openNote(site.document->notes().front().id); }
    QString text()
    {
        site.document->reload();
        return site.document->notes().front().text;
    }
};

TEST_F(NoteOfTwoTest, WhoComesSecondIsToldAndKeepsWhatWasTyped)
{
    QString typed;
    answerAfterConflict<plotix::NoteDialog>([&](plotix::NoteDialog* dialog) {
        typed = dialog->note().text;
        dialog->findChild<QPlainTextEdit*>()->setPlainText("storm");  // else it is asked about
        dialog->reject();
    });
    openNote();
    EXPECT_TRUE(conflict.contains("by Ada")) << conflict.toStdString();
    EXPECT_TRUE(conflict.contains("“hail”")) << conflict.toStdString();
    EXPECT_TRUE(typed.contains("Snow"));
    EXPECT_EQ(text(), "hail");
    EXPECT_FALSE(window->undoStack().canUndo());
}

TEST_F(NoteOfTwoTest, WhoComesSecondMayStoreItOverTheOther)
{
    answerAfterConflict<plotix::NoteDialog>([](plotix::NoteDialog* dialog) { dialog->accept(); });
    openNote();
    EXPECT_TRUE(text().contains("Snow")) << text().toStdString();
    window->undoStack().undo();
    EXPECT_EQ(text(), "hail");
}

class LimitsOfTwoTest : public EditingTest {};

TEST_F(LimitsOfTwoTest, ThoseThatSomebodyElseSetMeanwhileStayUnlessTheyAreReplaced)
{
    const qint64 id = station->siteProperties()[0]->description().id;
    answerNext<plotix::LimitsDialog>([this, id](plotix::LimitsDialog* dialog) {
        plotix::changeLimits(site.document->path(), id, [id](std::vector<plotix::SiteLimit>& limits) {
            limits = {{0, id, "theirs", 5, {}}};
        });
        QTest::keyClicks(dialog->focusWidget(), "60");
        dialog->accept();
    });
    answerAfterConflict<plotix::LimitsDialog>([](plotix::LimitsDialog* dialog) { dialog->accept(); });
    choose(0, QStringLiteral("Limits…"));
    EXPECT_TRUE(conflict.contains("theirs 5")) << conflict.toStdString();
    ASSERT_EQ(site.document->limits().size(), 1U);
    EXPECT_EQ(site.document->limits()[0].value, 60);
    window->undoStack().undo();
    EXPECT_EQ(site.document->limits()[0].name, "theirs");
}

}  // namespace
