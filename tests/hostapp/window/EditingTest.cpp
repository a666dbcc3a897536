#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/AnnotationEditor.h"
#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/SiteDetailsDialog.h"
#include "hostapp/window/annotating/LimitsDialog.h"
#include "hostapp/window/annotating/NoteDialog.h"
#include "hostapp/window/annotating/NotesWindow.h"
#include "hostapp/window/computing/ComputedPropertyDialog.h"
#include "hostapp/window/computing/FormulaEdit.h"
#include "tests/hostapp/window/EditingFixture.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

#include <cstdio>

using plotix::Date;
using plotix::SiteWindow;

namespace {

TEST_F(EditingTest, APropertyIsRenamedAndTheNameComesBack)
{
    const QStringList before = names();
    answerNext<QInputDialog>([](QInputDialog* dialog) {
        dialog->setTextValue("Quite Another");
        dialog->accept();
    });
    choose(0, "Rename…");
    EXPECT_EQ(names()[0], "Quite Another");
    EXPECT_EQ(window->undoStack().undoText(), "Rename to “Quite Another”");
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
    window->actions().redo->trigger();
    EXPECT_EQ(names()[0], "Quite Another");
}

TEST_F(EditingTest, ANameGivenElsewhereMeanwhileIsToldAndComesBackByUndo)
{
    const qint64 id = station->siteProperties()[0]->description().id;
    const QString before = names()[0];
    answerNext<QInputDialog>([this, id](QInputDialog* dialog) {
        plotix::renameProperty(site.document->path(), id, "Theirs");
        dialog->setTextValue("Mine");
        dialog->accept();
    });
    choose(0, "Rename…");
    EXPECT_EQ(names()[0], "Mine");
    EXPECT_EQ(
        window->statusBar()->currentMessage(),
        QStringLiteral("Another program had renamed “%1” to “Theirs” meanwhile; Undo brings that back.").arg(before));
    window->actions().undo->trigger();
    EXPECT_EQ(names()[0], "Theirs");
}

TEST_F(EditingTest, OfASiteChangedElsewhereMeanwhileOnlyWhatWasTypedChanges)
{
    site.document->setSite("Mill", "Hamburg");
    answerNext<plotix::SiteDetailsDialog>([this](plotix::SiteDetailsDialog* dialog) {
        plotix::SiteDocument::open(site.path())->setSite("Theirs", "Bremen");
        dialog->findChildren<QLineEdit*>()[0]->setText("Mine");
        dialog->accept();
    });
    window->actions().siteDetails->trigger();
    EXPECT_EQ(site.document->siteName(), "Mine");
    EXPECT_EQ(site.document->siteLocation(), "Bremen");
    EXPECT_EQ(window->statusBar()->currentMessage(),
              "Another program had changed “Mill” to “Theirs” meanwhile; “Mine” stands.");
}

TEST_F(EditingTest, AComputedPropertyIsMadeFromTheMenuAndUndone)
{
    site.store(*station, {1, 2, 3});
    answerNext<plotix::ComputedPropertyDialog>([](plotix::ComputedPropertyDialog* dialog) {
        dialog->findChildren<QLineEdit*>()[0]->setText("Smooth");
        QTest::keyClicks(dialog->findChild<plotix::FormulaEdit*>(), "mean(\"Air Temperature\", 1 h)");
        dialog->accept();
    });
    window->actions().newComputed->trigger();
    EXPECT_EQ(names(), (QStringList{"Air Temperature", "Pressure", "Smooth"}));
    EXPECT_EQ(station->siteProperties()[2]->unit(), "°C");
    EXPECT_EQ(window->undoStack().undoText(), "Compute “Smooth”");
    window->actions().undo->trigger();
    EXPECT_EQ(names().size(), 2);
    window->actions().redo->trigger();
    EXPECT_EQ(names().size(), 3);
}

TEST_F(EditingTest, AFormulaIsChangedFromThePropertysMenu)
{
    plotix::computeProperty(site.path(), station->id(), {"Double", {"Pressure * 2"}});
    site.document->reload();
    answerNext<plotix::ComputedPropertyDialog>([](plotix::ComputedPropertyDialog* dialog) {
        EXPECT_EQ(dialog->property().formula.text, "Pressure * 2");
        dialog->findChild<plotix::FormulaEdit*>()->setPlainText("Pressure / 2");
        dialog->accept();
    });
    choose(2, "Edit Computed Property…");
    EXPECT_EQ(station->siteProperties()[2]->description().formula->text, "Pressure / 2");
    window->actions().undo->trigger();
    EXPECT_EQ(station->siteProperties()[2]->description().formula->text, "Pressure * 2");
}

TEST_F(EditingTest, WhatADeletedPropertyBreaksIsToldAndSeenInTheList)
{
    plotix::computeProperty(site.path(), station->id(), {"Double", {"Pressure * 2"}});
    site.document->reload();
    QString told;
    answerNext<QMessageBox>([&told](QMessageBox* box) {
        told = box->informativeText();
        box->accept();
    });
    choose(1, "Delete");
    QCoreApplication::processEvents();
    EXPECT_TRUE(told.contains("“Double”: “Station” has no property “Pressure”.")) << told.toStdString();
    const QModelIndex row = list().model()->index(1, 0, list().model()->index(0, 0));
    EXPECT_GT(row.data(Qt::ForegroundRole).value<QColor>().red(), 0x80);
    EXPECT_TRUE(row.data(Qt::AccessibleTextRole).toString().startsWith("Double, cannot be computed: "));
    EXPECT_TRUE(row.data(Qt::ToolTipRole).toString().contains("cannot be computed"));
    window->actions().undo->trigger();
    EXPECT_FALSE(list().model()->index(2, 0, list().model()->index(0, 0)).data(Qt::ForegroundRole).isValid());
}

TEST_F(EditingTest, ADeletedPropertyLeavesTheListAndComesBack)
{
    const QStringList before = names();
    choose(0, "Delete");
    EXPECT_EQ(names().size(), before.size() - 1);
    EXPECT_FALSE(names().contains(before[0]));
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
}

TEST_F(EditingTest, ALongMergeShowsItsProgressAndMayBeCancelled)
{
    station->addProperty("Another", station->siteProperties()[0]->unit());
    const QStringList before = names();
    bool cancelled = false;
    duringTheNextChange([&](QProgressDialog& progress) {
        EXPECT_EQ(progress.labelText(), "Merge “Air Temperature”");
        QTest::keyClick(&progress, Qt::Key_Escape);
        cancelled = true;
    });
    choose(0, "Merge Into/Another");
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(names(), before);
    EXPECT_FALSE(window->undoStack().canUndo());
    EXPECT_EQ(window->statusBar()->currentMessage(), "Cancelled; nothing was changed.");
}

TEST_F(EditingTest, ACancelledUndoMayBeTriedAgain)
{
    const QStringList before = names();
    choose(0, "Delete");
    duringTheNextChange([](QProgressDialog& progress) { QTest::keyClick(&progress, Qt::Key_Escape); });
    window->actions().undo->trigger();
    EXPECT_EQ(names().size(), before.size() - 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->undoStack().canUndo(); }));
    EXPECT_FALSE(window->undoStack().canRedo());
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
}

TEST_F(EditingTest, AnUndoThatFailsMayBeTriedAgain)
{
    const QStringList before = names();
    choose(0, "Delete");
    writer = site.document->records()->begin();
    window->actions().undo->trigger();  // in vain: another one writes
    writer.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->undoStack().canUndo(); }));
    EXPECT_EQ(names().size(), before.size() - 1);
    if (auto* told = window->findChild<QMessageBox*>())
        told->accept();
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
}

TEST_F(EditingTest, AStepThatCannotBeUndoneLeavesTheStack)
{
    choose(0, "Delete");
    plotix::renameAgent(site.document->path(), station->id(), "Elsewhere");
    window->actions().undo->trigger();
    EXPECT_FALSE(window->undoStack().canUndo());
    EXPECT_FALSE(window->undoStack().canRedo());
}

TEST_F(EditingTest, AWindowToldToCloseDuringAChangeClosesAfterIt)
{
    bool stayed = false;
    duringTheNextChange([&](QProgressDialog&) {
        window->closeAsOrdered();
        stayed = window->isVisible();
    });
    choose(0, "Delete");
    EXPECT_TRUE(stayed);
    EXPECT_EQ(names(), QStringList("Pressure"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
}

TEST_F(EditingTest, OnlyPropertiesThatConvertAreOfferedForMerging)
{
    const auto other = station->addProperty("Another", station->siteProperties()[0]->unit());
    const QStringList before = names();
    choose(static_cast<int>(before.size()) - 1, "Merge Into/" + before[0]);
    EXPECT_FALSE(names().contains("Another"));
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
}

TEST_F(EditingTest, AStepThatIsNotTheLastOneAnyMoreIsNotUndone)
{
    const QStringList before = names();
    choose(0, "Delete");
    plotix::renameAgent(site.document->path(), station->id(), "Elsewhere");
    QTimer::singleShot(0, window.get(), [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
    });
    window->actions().undo->trigger();
    EXPECT_EQ(names().size(), before.size() - 1);
}

TEST_F(EditingTest, ARenameByAnotherProgramIsSeen)
{
    QSignalSpy changed(site.document.get(), &plotix::SiteDocument::changedElsewhere);
    const plotix::RowId first = station->siteProperties()[0]->description().id;
    plotix::renameProperty(site.document->path(), first, "Renamed Elsewhere");
    ASSERT_TRUE(changed.wait(5000));
    EXPECT_EQ(names()[0], "Renamed Elsewhere");
}

TEST_F(EditingTest, AReplacedSiteIsToldAndMayOnlyBeLookedAt)
{
    const QString other = site.file("other.plotix");
    plotix::SiteDocument::create(other);
    ASSERT_EQ(std::rename(qPrintable(other), qPrintable(site.path())), 0);
    QSignalSpy replaced(site.document.get(), &plotix::SiteDocument::replaced);
    ASSERT_TRUE(replaced.wait(5000));
    EXPECT_TRUE(window->windowTitle().contains("may only be looked at")) << window->windowTitle().toStdString();
    EXPECT_FALSE(window->actions().import->isEnabled());
    EXPECT_FALSE(window->actions().undoImport->isEnabled());
}

TEST_F(EditingTest, ATrendThatAnotherProgramDeletesLeavesTheList)
{
    window->controller().newTrend(station, {}, Date{0}, Date{10}, "Mine");
    window->storeNow();
    const int before = window->controller().sourceList().rowCount();
    const auto other = plotix::SiteDocument::open(site.path());
    other->removePlugIn(other->archivedPlugIns().back().id);
    QSignalSpy changed(site.document.get(), &plotix::SiteDocument::changedElsewhere);
    ASSERT_TRUE(changed.wait(5000));
    EXPECT_EQ(window->controller().sourceList().rowCount(), before - 1);
}

TEST_F(EditingTest, AnImportOverOtherValuesAsksFirst)
{
    const QString file = site.file("again.csv");
    const auto write = [&](const char* rows) {
        QFile csv(file);
        ASSERT_TRUE(csv.open(QIODevice::WriteOnly));
        csv.write(rows);
    };
    QSignalSpy ended(window.get(), &SiteWindow::importEnded);
    plotix::ImportOptions options;
    options.agentName = "Imported";
    write("time,a\n2020-01-01T00:00:00Z,1\n2020-01-01T00:01:00Z,2\n");
    window->startImport(file, options);
    ASSERT_TRUE(ended.wait(20'000));
    write("time,a\n2020-01-01T00:00:00Z,5\n2020-01-01T00:01:00Z,2\n");
    QString asked;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QAbstractButton* cancel = box ? box->button(QMessageBox::Cancel) : nullptr;
        if (!cancel || !box->isVisible() || !asked.isEmpty())
            return;
        asked = box->text();
        cancel->click();
    });
    poll.start(20);
    window->startImport(file, options);
    ASSERT_TRUE(ended.wait(20'000));
    EXPECT_TRUE(asked.contains("replaces 1 stored value")) << asked.toStdString();
    EXPECT_FALSE(ended.last().first().toBool());
    EXPECT_EQ(plotix::editSteps(site.document->path()).size(), 1U);
}

TEST_F(EditingTest, LimitsAreSetAndUndone)
{
    answerNext<plotix::LimitsDialog>([](plotix::LimitsDialog* dialog) {
        QTest::keyClicks(dialog->focusWidget(), "60");
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    choose(0, QStringLiteral("Limits…"));
    ASSERT_EQ(site.document->limits().size(), 1U);
    EXPECT_EQ(site.document->limits()[0].value, 60);
    EXPECT_EQ(station->annotations()->limitsOf(station->siteProperties()[0]->propertyName()).size(), 1U);
    window->undoStack().undo();
    EXPECT_TRUE(site.document->limits().empty());
    window->undoStack().redo();
    EXPECT_EQ(site.document->limits().size(), 1U);
}

TEST_F(EditingTest, APlugInAsksTheWindowForLimits)
{
    EXPECT_TRUE(station->annotations()->canEdit());
    answerNext<plotix::LimitsDialog>([](plotix::LimitsDialog* dialog) { dialog->reject(); });
    station->annotations()->editLimits(station->siteProperties()[0]->propertyName());
    EXPECT_FALSE(window->undoStack().canUndo());
    window.reset();
    EXPECT_FALSE(station->annotations()->canEdit());
}

TEST_F(EditingTest, ANoteIsWrittenAtATimeAndUndone)
{
    answerNext<plotix::NoteDialog>([](plotix::NoteDialog* dialog) {
        QTest::keyClicks(dialog->focusWidget(), "Pump replaced");
        dialog->accept();
    });
    station->annotations()->addNote(1000, 2000, {station->siteProperties()[1]->propertyName()});
    ASSERT_EQ(site.document->notes().size(), 1U);
    const plotix::SiteNote note = site.document->notes().front();
    EXPECT_EQ(note.text, "Pump replaced");
    EXPECT_EQ(note.from, 1000);
    EXPECT_EQ(note.to, 2000);
    EXPECT_EQ(note.properties, std::vector<qint64>{station->siteProperties()[1]->description().id});
    window->undoStack().undo();
    EXPECT_TRUE(site.document->notes().empty());
}

TEST_F(EditingTest, TheListOfNotesOpensAndDeletesThem)
{
    plotix::writeNote(site.document->path(), {0, 10, 10, "Ada", "storm", {}});
    site.document->reload();
    window->actions().notes->trigger();
    auto* list = window->findChild<plotix::NotesWindow*>();
    ASSERT_TRUE(list);
    answerNext<plotix::NoteDialog>([](plotix::NoteDialog* dialog) {
        QTest::keyClicks(dialog->focusWidget(), "Snow");
        dialog->accept();
    });
    emit list->openWanted(site.document->notes().front().id);
    EXPECT_TRUE(site.document->notes().front().text.contains("Snow"));
    emit list->removeWanted({site.document->notes().front().id});
    EXPECT_TRUE(site.document->notes().empty());
    window->undoStack().undo();
    EXPECT_EQ(site.document->notes().size(), 1U);
}

}  // namespace
