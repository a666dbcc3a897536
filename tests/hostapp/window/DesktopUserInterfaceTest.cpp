#include "hostapp/window/DesktopUserInterface.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>

#include <gtest/gtest.h>

using plotix::DesktopUserInterface;

namespace {

class DesktopUserInterfaceTest : public testing::Test {
protected:
    QMessageBox* shownBox()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible())
                return box;
        return nullptr;
    }
    void TearDown() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    const KTVAlert alert{QStringLiteral("Illegal Date Range"), QStringLiteral("Why"), KTVAlert::Style::Critical};
    DesktopUserInterface desktop;
};

TEST_F(DesktopUserInterfaceTest, SheetReturnsAtOnceAndAnswersWhenDismissed)
{
    QWidget window;
    window.show();
    bool dismissed = false;
    desktop.beginSheet(alert, &window, [&] { dismissed = true; });
    ASSERT_NE(shownBox(), nullptr);
    EXPECT_EQ(shownBox()->windowModality(), Qt::WindowModal);
    EXPECT_EQ(shownBox()->text(), alert.messageText);
    EXPECT_EQ(shownBox()->informativeText(), alert.informativeText);
    EXPECT_EQ(shownBox()->buttons().size(), 1);
    EXPECT_FALSE(dismissed);
    shownBox()->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(dismissed);
}

TEST_F(DesktopUserInterfaceTest, SheetWithoutAWindowStillOpens)
{
    desktop.beginSheet(alert, nullptr, {});
    ASSERT_NE(shownBox(), nullptr);
    shownBox()->accept();
}

TEST_F(DesktopUserInterfaceTest, ModalAlertReturnsAfterItWasDismissed)
{
    QString seen;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        seen = box->text();
        box->accept();
    });
    desktop.runModal(alert);
    EXPECT_EQ(seen, alert.messageText);
}

/// A person at the save panel: gives one name after the other, confirms every alert and writes down what it said.
class SavePanelTest : public DesktopUserInterfaceTest {
protected:
    std::optional<QString> save(const QStringList& types, const QStringList& names)
    {
        m_names = names;
        QObject person;
        wait(&person);
        return desktop.runSavePanel(types);
    }

    QString given(const char* name, const QByteArray& bytes) const
    {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    QTemporaryDir folder;
    QStringList alerts;
    QString nameOffered;  ///< by the panel when the last name was given

private:
    /// A timer of its own for every step: one whose step opens another dialog does not fire again under it.
    void wait(QObject* person)
    {
        QTimer::singleShot(10, person, [this, person] {
            wait(person);
            step();
        });
    }

    void step()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            alerts << box->informativeText();
            if (QAbstractButton* yes = box->button(QMessageBox::Yes))
                yes->click();  // the toolkit's own question whether to replace
            else
                box->accept();
            return;
        }
        auto* panel = qobject_cast<QFileDialog*>(modal);
        if (!panel)
            return;
        auto* edit = panel->findChild<QLineEdit*>();
        nameOffered = edit->text();
        if (m_names.isEmpty()) {
            panel->reject();
            return;
        }
        edit->setText(m_names.takeFirst());
        static_cast<QDialog*>(panel)->accept();
    }

    QStringList m_names;
};

TEST_F(SavePanelTest, ANameThatIsFreeIsAnswered)
{
    const QString path = folder.filePath(QStringLiteral("a.png"));
    EXPECT_EQ(save({"png"}, {path}), path);
    EXPECT_TRUE(alerts.isEmpty());
}

TEST_F(SavePanelTest, AFileOfAnotherKindIsRefusedAndAnotherNameAskedFor)
{
    const QString site = given("site.png", QByteArray("SQLite format 3").append('\0'));
    const QString path = folder.filePath(QStringLiteral("a.png"));
    EXPECT_EQ(save({"png"}, {site, path}), path);
    EXPECT_EQ(alerts.last(), QStringLiteral("“site.png” is a site or another database. Choose another name."));
}

TEST_F(SavePanelTest, ANameWithAnotherEndingIsOfferedWithTheRightOne)
{
    const QString path = folder.filePath(QStringLiteral("Trend 1.5"));
    EXPECT_EQ(save({"pdf"}, {path}), std::nullopt);
    EXPECT_EQ(alerts, QStringList{"The name “Trend 1.5” must end in .pdf."});
    EXPECT_EQ(nameOffered, QStringLiteral("Trend 1.5.pdf"));
}

TEST_F(SavePanelTest, OneOfSeveralTypesWillDo)
{
    const QString path = folder.filePath(QStringLiteral("a.xlsx"));
    EXPECT_EQ(save({"csv", "xlsx"}, {path}), path);
    EXPECT_TRUE(alerts.isEmpty());
}

TEST_F(DesktopUserInterfaceTest, SharingMenuCopiesTheImage)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::blue);
    plotix::SharedPicture picture;
    const std::unique_ptr<QMenu> menu(makeSharingMenu(image, &desktop, picture, nullptr));
    menu->actions().at(0)->trigger();
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(3, 2));
}

TEST(LongAlertTest, AResultOfManyLinesScrollsAndTheButtonStaysOnTheScreen)
{
    plotix::DesktopUserInterface desktop;
    QWidget window;
    QStringList lines;
    for (int line = 0; line < 500; ++line)
        lines << QStringLiteral("Column %1 has values that are no numbers.").arg(line);
    desktop.beginSheet({QStringLiteral("Imported"), lines.join(QLatin1Char('\n')), KTVAlert::Style::Informational},
                       &window, {});
    const auto* box = window.findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_LT(box->height(), 500);
    EXPECT_LT(box->width(), 780);
    const auto* text = box->findChild<QPlainTextEdit*>(QStringLiteral("longText"));
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isVisible());
    EXPECT_TRUE(text->toPlainText().endsWith(lines.last()));
    EXPECT_GT(text->verticalScrollBar()->maximum(), 400);
}

TEST(LongAlertTest, AShortOneDoesNot)
{
    plotix::DesktopUserInterface desktop;
    QWidget window;
    desktop.beginSheet({QStringLiteral("Imported"), QStringLiteral("3 records"), KTVAlert::Style::Informational},
                       &window, {});
    EXPECT_EQ(window.findChild<QPlainTextEdit*>(QStringLiteral("longText")), nullptr);
}

}  // namespace
