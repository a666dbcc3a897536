#include "hostapp/window/importing/ImportSequence.h"

#include "hostapp/core/SiteProperty.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "tests/support/fakehost/FakeUserInterface.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QFile>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <cstdio>

namespace plotix {

namespace {

constexpr const char* kTwoRows = "time,Humidity (%),Lid\n2024-05-01T00:00:00Z,40,1\n2024-05-02T00:00:00Z,41,0\n";

/// The files on their way from the dialogs into the site.
class ImportSequenceTest : public testing::Test {
protected:
    ImportSequenceTest() { window.show(); }

    QString write(const QString& name, const QByteArray& text = kTwoRows)
    {
        QFile file(site.file(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    static ImportDialog* dialog() { return qobject_cast<ImportDialog*>(QApplication::activeModalWidget()); }
    static QString problem() { return dialog()->findChild<QLabel*>(QStringLiteral("problem"))->text(); }
    static bool waitForDialog(const QString& file)
    {
        return QTest::qWaitFor([&] { return dialog() && dialog()->file() == file; }, 20'000);
    }
    /// Until what the import would take is shown.
    static bool waitForPreview()
    {
        QTest::qWait(300);
        const auto* rows = dialog()->findChild<QTableView*>(QStringLiteral("firstRows"));
        return QTest::qWaitFor([rows] { return rows->model()->rowCount() > 0; }, 20'000);
    }
    static QAbstractItemModel& columns()
    {
        return *dialog()->findChild<QTableView*>(QStringLiteral("columns"))->model();
    }
    static void press(const QString& text)
    {
        for (QAbstractButton* button : QApplication::activeModalWidget()->findChildren<QAbstractButton*>())
            if (button->text().remove(QLatin1Char('&')).startsWith(text)) {
                button->click();
                return;
            }
        ADD_FAILURE() << "there is no " << text.toStdString();
    }
    bool waitForEnds(qsizetype count)
    {
        return QTest::qWaitFor([&] { return ended.size() == count; }, 20'000);
    }
    QStringList propertiesOf(const QString& agent) const
    {
        QStringList found;
        if (const auto there = site.document->agentNamed(agent))
            for (const auto& property : there->siteProperties())
                found << property->name() + QLatin1Char(' ') + property->unit();
        return found;
    }

    ScratchSite site;
    fakehost::CallLog log;
    fakehost::FakeUserInterface desktop{&log};
    QWidget window;
    ImportSequence sequence{{site.document, &desktop, [this] { return &window; }}};
    QSignalSpy ended{&sequence, &ImportSequence::ended};
};

TEST_F(ImportSequenceTest, WhatWasChangedInTheDialogArrivesInTheRecords)
{
    const QString file = write(QStringLiteral("cellar.csv"));
    sequence.ask({file});
    ASSERT_TRUE(waitForDialog(file));
    ASSERT_TRUE(waitForPreview());
    columns().setData(columns().index(1, 1), QStringLiteral("Damp"), Qt::EditRole);
    columns().setData(columns().index(1, 2), QStringLiteral("°C"), Qt::EditRole);
    columns().setData(columns().index(2, 0), Qt::Unchecked, Qt::CheckStateRole);
    press(QStringLiteral("Import"));
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(propertiesOf(QStringLiteral("cellar")), QStringList(QStringLiteral("Damp °C")));
}

TEST_F(ImportSequenceTest, ARefusedFileComesBackAsItWasFilledIn)
{
    const QString file =
        write(QStringLiteral("cellar.csv"),
              "time,a\n2024-05-01,1\n2024-05-02,1\nno,2\n2024-05-03,1\nnor,3\n2024-05-04,1\nhere,4\n2024-05-05,1\n");
    ImportOptions options;
    options.agentName = QStringLiteral("House");
    options.timeZone = QStringLiteral("UTC");
    sequence.start(file, options);
    ASSERT_TRUE(waitForDialog(file));
    EXPECT_EQ(ended.size(), 1);
    EXPECT_EQ(dialog()->options(), options);
    EXPECT_TRUE(problem().contains(QStringLiteral("cannot be read"))) << problem().toStdString();
    ASSERT_TRUE(QTest::qWaitFor([] { return qobject_cast<QCheckBox*>(QApplication::focusWidget()) != nullptr; }));
    qobject_cast<QCheckBox*>(QApplication::focusWidget())->click();
    press(QStringLiteral("Import"));
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_TRUE(ended[1][0].toBool());
    EXPECT_EQ(propertiesOf(QStringLiteral("House")).size(), 1);
}

TEST_F(ImportSequenceTest, OneFilesChoicesStandForTheOthers)
{
    const QStringList files = {write(QStringLiteral("a.csv")), write(QStringLiteral("b.csv")),
                               write(QStringLiteral("c.csv"))};
    sequence.ask(files);
    ASSERT_TRUE(waitForDialog(files[0]));
    ASSERT_TRUE(waitForPreview());
    columns().setData(columns().index(2, 0), Qt::Unchecked, Qt::CheckStateRole);
    press(QStringLiteral("Use these choices"));
    press(QStringLiteral("Import"));
    ASSERT_TRUE(waitForEnds(3));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !desktop.sheets().empty(); }));
    for (const char* agent : {"a", "b", "c"})
        EXPECT_EQ(propertiesOf(QLatin1String(agent)), QStringList(QStringLiteral("Humidity %")));
    EXPECT_EQ(desktop.sheets().size(), 1U);
    EXPECT_TRUE(desktop.sheets()[0].alert.informativeText.contains(QStringLiteral("b.csv")));
}

TEST_F(ImportSequenceTest, FilesOfOneAgentGoIntoItTogether)
{
    const QStringList files = {
        write(QStringLiteral("may.csv")),
        write(QStringLiteral("june.csv"), "time,Humidity (%)\n2024-06-01T00:00:00Z,42\n2024-06-02T00:00:00Z,43\n")};
    sequence.ask(files);
    ASSERT_TRUE(waitForDialog(files[0]));
    dialog()->findChild<QComboBox*>(QStringLiteral("agent"))->setCurrentText(QStringLiteral("House"));
    press(QStringLiteral("Use these choices"));
    press(QStringLiteral("Import"));
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(site.document->agents().size(), 1U);
}

TEST_F(ImportSequenceTest, OfManyFilesTheOneThatIsRefusedIsAskedFor)
{
    const QStringList files = {write(QStringLiteral("a.csv")), write(QStringLiteral("b.csv"), "no,table\nat,all\n"),
                               write(QStringLiteral("c.csv"))};
    sequence.ask(files);
    ASSERT_TRUE(waitForDialog(files[0]));
    press(QStringLiteral("Use these choices"));
    press(QStringLiteral("Import"));
    ASSERT_TRUE(waitForDialog(files[1]));
    EXPECT_FALSE(problem().isEmpty());
    EXPECT_TRUE(dialog()->standsForAll());
    press(QStringLiteral("Skip This File"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !desktop.sheets().empty(); }, 20'000));
    EXPECT_TRUE(site.document->agentNamed(QStringLiteral("c")));
    EXPECT_FALSE(site.document->agentNamed(QStringLiteral("b")));
}

TEST_F(ImportSequenceTest, FilesThatComeLaterAreAskedFor)
{
    const QStringList files = {write(QStringLiteral("a.csv")), write(QStringLiteral("b.csv"))};
    const QString late = write(QStringLiteral("late.csv"));
    sequence.ask(files);
    ASSERT_TRUE(waitForDialog(files[0]));
    press(QStringLiteral("Use these choices"));
    press(QStringLiteral("Import"));
    sequence.ask({late});
    ASSERT_TRUE(waitForEnds(2));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !desktop.sheets().empty(); }));
    desktop.dismissSheet(0);
    ASSERT_TRUE(waitForDialog(late));
    press(QStringLiteral("Cancel"));
}

TEST_F(ImportSequenceTest, ASiteThatMayOnlyBeLookedAtTakesNothing)
{
    const QString other = site.file(QStringLiteral("other.plotix"));
    SiteDocument::create(other);
    ASSERT_EQ(std::rename(qPrintable(other), qPrintable(site.path())), 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return site.document->isReadOnly(); }, 20'000));
    sequence.ask({write(QStringLiteral("cellar.csv"))});
    EXPECT_EQ(dialog(), nullptr);
    ASSERT_EQ(desktop.sheets().size(), 1U);
    EXPECT_EQ(desktop.sheets()[0].alert.messageText, QStringLiteral("Nothing is imported"));
}

TEST_F(ImportSequenceTest, EndsWhileADialogAsks)
{
    auto other =
        std::make_unique<ImportSequence>(ImportSurroundings{site.document, &desktop, [this] { return &window; }});
    const QString file = write(QStringLiteral("cellar.csv"));
    other->ask({file});
    ASSERT_TRUE(waitForDialog(file));
    other.reset();
    EXPECT_EQ(dialog(), nullptr);
}

}  // namespace

}  // namespace plotix
