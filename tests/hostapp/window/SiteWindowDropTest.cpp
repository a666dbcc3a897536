#include "hostapp/window/importing/ImportDialog.h"
#include "tests/hostapp/window/SiteWindowFixture.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

using plotix::Date;
using plotix::SiteWindow;

namespace {

class SiteWindowDropTest : public SiteWindowFixture {
protected:
    /// A file with a picture that tells what it shows.
    QString figureOf(const plotix::ShownView& view)
    {
        QFile figure(site.file(QStringLiteral("figure.svg")));
        EXPECT_TRUE(figure.open(QIODevice::WriteOnly));
        figure.write(plotix::withRecipe(plotix::FileKind::Svg, "<?xml version=\"1.0\"?><svg><defs></defs></svg>",
                                        plotix::recipeOf(view)));
        return figure.fileName();
    }
    bool enter(const QString& file)
    {
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }
    void drop()
    {
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    QMimeData data;
};

TEST_F(SiteWindowDropTest, TakesOneFileAndNoFolder)
{
    openWindow();
    EXPECT_TRUE(enter(site.path()));
    EXPECT_FALSE(enter(QFileInfo(site.path()).path()));
    EXPECT_FALSE(enter(QStringLiteral("/nowhere/at-all.csv")));
}

TEST_F(SiteWindowDropTest, DroppedSiteIsOpened)
{
    openWindow();
    QSignalSpy opened(window.get(), &SiteWindow::openSiteRequested);
    ASSERT_TRUE(enter(site.path()));
    drop();
    ASSERT_TRUE(opened.wait(5'000));
    EXPECT_EQ(opened[0][0].toString(), site.path());
}

TEST_F(SiteWindowDropTest, ADroppedFigureIsShownInTheWindowOfItsSite)
{
    openWindow();
    plotix::ShownView view;
    view.siteFile = "other.plotix";
    view.agent = "Boiler";
    const QString figure = figureOf(view);
    QSignalSpy asked(window.get(), &SiteWindow::openViewRequested);
    ASSERT_TRUE(enter(figure));
    drop();
    ASSERT_TRUE(asked.wait(5'000));
    EXPECT_EQ(asked[0][0].value<plotix::ShownView>(), view);
    EXPECT_EQ(asked[0][1].toString(), QFileInfo(figure).absolutePath());
}

TEST_F(SiteWindowDropTest, AFigureThatDoesNotTellIsRefusedWithTheReason)
{
    openWindow();
    QFile figure(site.file(QStringLiteral("figure.pdf")));
    ASSERT_TRUE(figure.open(QIODevice::WriteOnly));
    figure.write("%PDF-1.4 nothing in it");
    figure.close();
    EXPECT_TRUE(window->openFigure(figure.fileName()));
    const auto boxes = window->findChildren<QMessageBox*>();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "The figure cannot be opened as a view");
    EXPECT_TRUE(boxes[0]->informativeText().contains("figure.pdf"));
    EXPECT_FALSE(window->openFigure(site.path()));
}

TEST_F(SiteWindowDropTest, OpenTakesFiguresAsItTakesSites)
{
    openWindow();
    plotix::ShownView view;
    view.siteFile = "other.plotix";
    const QString figure = figureOf(view);
    QSignalSpy asked(window.get(), &SiteWindow::openViewRequested);
    QTimer person;
    person.callOnTimeout([&] {
        if (auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            person.stop();
            EXPECT_TRUE(panel->nameFilters().first().contains("*.svg"));
            panel->findChild<QLineEdit*>()->setText(figure);
            static_cast<QDialog*>(panel)->accept();
        }
    });
    person.start(20);
    window->actions().openSite->trigger();
    EXPECT_EQ(asked.count(), 1);
}

TEST_F(SiteWindowDropTest, SeveralFilesAreImportedOneAfterTheOther)
{
    openWindow();
    QList<QUrl> urls;
    for (const QString& name : {QStringLiteral("cellar"), QStringLiteral("attic")}) {
        QFile file(site.file(name + QStringLiteral(".csv")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("time,Humidity (%)\n2024-05-01T00:00:00Z,40\n2024-05-02T00:00:00Z,41\n");
        urls << QUrl::fromLocalFile(file.fileName());
    }
    ASSERT_TRUE(enter(urls.first().toLocalFile()));
    data.setUrls(urls);
    QSignalSpy ended(window.get(), &SiteWindow::importEnded);
    QStringList titles;
    QTimer acceptsDialogs;
    QObject::connect(&acceptsDialogs, &QTimer::timeout, &acceptsDialogs, [&] {
        if (auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget())) {
            titles << dialog->windowTitle();
            dialog->accept();
        } else if (shownBox() && shownBox()->isVisible()) {
            // Queued: the next file's dialog opens within, and this timer rests while its own slot runs.
            QMetaObject::invokeMethod(shownBox(), &QDialog::accept, Qt::QueuedConnection);
        }
    });
    acceptsDialogs.start(10);
    drop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ended.size() == 2; }, 20'000));
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("cellar")));
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("attic")));
    EXPECT_EQ(titles, (QStringList{"Import Measurements (1 more to come)", "Import Measurements"}));
}

TEST_F(SiteWindowDropTest, CancellingOneImportLeavesTheRest)
{
    openWindow();
    QTimer::singleShot(50, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
    window->askAndImportAll({QStringLiteral("/nowhere/a.csv"), QStringLiteral("/nowhere/b.csv")});
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
    QTest::qWait(50);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(SiteWindowDropTest, AFileCanBeSkipped)
{
    openWindow();
    QStringList asked;
    QTimer skips;
    QObject::connect(&skips, &QTimer::timeout, &skips, [&] {
        if (auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget())) {
            asked << dialog->file();
            dialog->done(plotix::ImportDialog::kSkipped);
        }
    });
    skips.start(10);
    window->askAndImportAll({QStringLiteral("/nowhere/a.csv"), QStringLiteral("/nowhere/b.csv")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return asked.size() == 2 && !QApplication::activeModalWidget(); }));
    EXPECT_EQ(asked, (QStringList{"/nowhere/a.csv", "/nowhere/b.csv"}));
}

class SiteWindowImportTest : public SiteWindowFixture {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = site.file(QStringLiteral("cellar.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }
    bool import(const QByteArray& text)
    {
        openWindow();
        QSignalSpy ended(window.get(), &SiteWindow::importEnded);
        plotix::ImportOptions options;
        options.timeZone = QStringLiteral("UTC");
        window->startImport(write(text), options);
        EXPECT_FALSE(window->actions().import->isEnabled());
        EXPECT_TRUE(ended.wait(20'000));
        return ended.value(0).value(0).toBool();
    }
};

TEST_F(SiteWindowImportTest, NewAgentGetsItsFirstTrendOverTheDatasRange)
{
    EXPECT_TRUE(import("time,Humidity (%)\n2024-05-01T00:00:00Z,40\n2024-05-02T00:00:00Z,41\n"));
    ASSERT_TRUE(site.document->agentNamed(QStringLiteral("cellar")));
    ASSERT_TRUE(window->selectedPlugIn());
    EXPECT_EQ(window->selectedPlugIn()->title(), QStringLiteral("cellar"));
    EXPECT_EQ(selectedStub().arguments().fromDate->seconds, 1714521600);
    EXPECT_EQ(selectedStub().arguments().toDate->seconds, 1714608000);
    EXPECT_EQ(window->propertyList().rowCount(), 2);
    EXPECT_TRUE(window->actions().import->isEnabled());
}

TEST_F(SiteWindowImportTest, FileThatDoesNotParseIsToldAndStoresNothing)
{
    EXPECT_FALSE(import("time,Humidity (%)\n2024-05-01T00:00:00Z,40\nno time at all,41\nnor here,42\n"));
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
    auto* dialog = qobject_cast<plotix::ImportDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(
        dialog->findChild<QLabel*>(QStringLiteral("problem"))->text().contains(QStringLiteral("looks like times")));
    EXPECT_EQ(dialog->options().timeZone, QStringLiteral("UTC"));
    EXPECT_EQ(site.document->agentNamed(QStringLiteral("cellar")), nullptr);
    EXPECT_FALSE(window->selectedPlugIn());
}

}  // namespace
