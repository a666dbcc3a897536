#include "hostapp/window/annotating/NotesWindow.h"

#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/SiteTransaction.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <gtest/gtest.h>

#include <memory>

namespace plotix {

namespace {

/// The list of three notes of a site: "pump" at 20, "storm" from 10 to 15, "filter" at 30.
class NotesWindowTest : public testing::Test {
protected:
    NotesWindowTest()
    {
        SiteTransaction transaction(path());
        transaction.findOrCreateProperty(transaction.findOrCreateAgent("Roof"), "Air", "°C");
        transaction.commit();
        document = SiteDocument::open(path());
        const qint64 air = document->agents().front()->siteProperties().front()->description().id;
        write({0, 20, 20, "Ada", "pump", {}});
        write({0, 10, 15, "Ben", "storm", {air}});
        write({0, 30, 30, "Ada", "filter", {}});
        window = std::make_unique<NotesWindow>(document);
        window->show();
    }
    QString path() const { return m_folder.filePath("site.plotix"); }
    void write(const SiteNote& note)
    {
        writeNote(path(), note);
        document->reload();
    }
    QTableView& table() { return *window->findChild<QTableView*>(); }
    QStringList texts()
    {
        QStringList texts;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            texts << table().model()->index(row, NotesModel::Text).data().toString();
        return texts;
    }
    void search(const QString& words) { window->findChild<QLineEdit*>()->setText(words); }
    QPoint placeOf(int row) { return table().visualRect(table().model()->index(row, NotesModel::Text)).center(); }

    std::shared_ptr<SiteDocument> document;
    std::unique_ptr<NotesWindow> window;

private:
    QTemporaryDir m_folder;
};

TEST_F(NotesWindowTest, NotesStandInTheOrderOfTimeAndAreSortedByAnyColumn)
{
    EXPECT_EQ(texts(), QStringList({"storm", "pump", "filter"}));
    table().sortByColumn(NotesModel::Text, Qt::AscendingOrder);
    EXPECT_EQ(texts(), QStringList({"filter", "pump", "storm"}));
}

TEST_F(NotesWindowTest, EveryWordIsLookedForInAllColumns)
{
    search("ada pu");
    EXPECT_EQ(texts(), QStringList("pump"));
    search("AIR");
    EXPECT_EQ(texts(), QStringList("storm"));
}

TEST_F(NotesWindowTest, AClickGoesThereAndADoubleClickOpens)
{
    QSignalSpy went(window.get(), &NotesWindow::goToWanted), opened(window.get(), &NotesWindow::openWanted);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, placeOf(0));
    ASSERT_EQ(went.size(), 1);
    EXPECT_EQ(went[0][0].toDouble(), 10);
    EXPECT_EQ(went[0][1].toDouble(), 15);
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, placeOf(0));
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(NotesWindowTest, KeysDoTheSame)
{
    QSignalSpy went(window.get(), &NotesWindow::goToWanted), opened(window.get(), &NotesWindow::openWanted);
    int removed = 0;
    QObject::connect(window.get(), &NotesWindow::removeWanted, window.get(),
                     [&removed](const std::vector<qint64>& notes) { removed = static_cast<int>(notes.size()); });
    table().selectAll();
    table().setCurrentIndex(table().model()->index(1, 0));
    QTest::keyClick(&table(), Qt::Key_Return);
    QTest::keyClick(&table(), Qt::Key_F2);
    EXPECT_EQ(went.size(), 1);
    EXPECT_EQ(opened.size(), 1);
    table().selectAll();
    QTest::keyClick(&table(), Qt::Key_Delete);
    EXPECT_EQ(removed, 3);
}

TEST_F(NotesWindowTest, FollowsTheDocument)
{
    write({0, 5, 5, "Ada", "first", {}});
    EXPECT_EQ(texts().first(), "first");
}

TEST_F(NotesWindowTest, TimesAreByTheClocksThatItsTitleNames)
{
    window->sayBy(QTimeZone("Asia/Tokyo"));
    EXPECT_EQ(table().model()->headerData(NotesModel::Time, Qt::Horizontal).toString(), "Time (Asia/Tokyo)");
    const QString expected = QLocale().toString(QDateTime(QDate(1970, 1, 1), QTime(9, 0, 10)), QLocale::ShortFormat);
    EXPECT_EQ(table().model()->index(0, NotesModel::Time).data().toString(), expected);
}

}  // namespace
}  // namespace plotix
