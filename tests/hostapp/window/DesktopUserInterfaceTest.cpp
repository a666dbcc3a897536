#include "hostapp/window/DesktopUserInterface.h"

#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

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

TEST_F(DesktopUserInterfaceTest, SharingMenuCopiesTheImage)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::blue);
    plotix::SharedPicture picture;
    const std::unique_ptr<QMenu> menu(makeSharingMenu(image, &desktop, picture, nullptr));
    menu->actions().at(0)->trigger();
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(3, 2));
}

}  // namespace
