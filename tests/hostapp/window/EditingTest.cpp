#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteEditing.h"
#include "hostapp/document/SiteTransaction.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <cstdio>

using plotix::Date;
using plotix::SiteWindow;

namespace {

/// Cleaning a site up from its window.
class EditingTest : public testing::Test {
protected:
    EditingTest() : station(site.addStation())
    {
        window = std::make_unique<SiteWindow>(site.document, plotix::WindowServices{&module, &desktop, &help});
        window->show();
    }
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    plotix::PropertyListView& list() { return *window->findChild<plotix::PropertyListView*>("propertyList"); }
    QStringList names() const
    {
        QStringList found;
        for (const auto& property : station->siteProperties())
            found << property->name();
        return found;
    }
    /// Chooses the entry of the property's menu; an entry "A/B" is in a menu of its own.
    void choose(int property, const QString& entry)
    {
        const std::unique_ptr<QMenu> menu(list().makeMenuFor(station->siteProperties().at(property)));
        const QMenu* inside = menu.get();
        const QStringList path = entry.split('/');
        for (const QString& step : path)
            for (QAction* action : inside->actions())
                if (action->text().remove('&') == step) {
                    inside = action->menu();
                    if (!inside) {
                        action->trigger();
                        return;
                    }
                    break;
                }
        ADD_FAILURE() << "there is no " << entry.toStdString();
    }
    /// Answers the next modal dialog.
    template <class Dialog, class Answer>
    void answerNext(Answer answer)
    {
        QTimer::singleShot(0, window.get(), [answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            answer(dialog);
        });
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station;
    StubModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::unique_ptr<SiteWindow> window;
};

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

TEST_F(EditingTest, ADeletedPropertyLeavesTheListAndComesBack)
{
    const QStringList before = names();
    choose(0, "Delete");
    EXPECT_EQ(names().size(), before.size() - 1);
    EXPECT_FALSE(names().contains(before[0]));
    window->actions().undo->trigger();
    EXPECT_EQ(names(), before);
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
        if (!box || !box->isVisible() || !asked.isEmpty())
            return;
        asked = box->text();
        box->button(QMessageBox::Cancel)->click();
    });
    poll.start(20);
    window->startImport(file, options);
    ASSERT_TRUE(ended.wait(20'000));
    EXPECT_TRUE(asked.contains("replaces 1 stored value")) << asked.toStdString();
    EXPECT_FALSE(ended.last().first().toBool());
    EXPECT_EQ(plotix::editSteps(site.document->path()).size(), 1U);
}

}  // namespace
