#include "tests/records/clickhouse/ServerForTests.h"

#include "hostapp/document/DeskFile.h"
#include "hostapp/document/ServerSites.h"
#include "hostapp/window/OpenServerDialog.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

namespace plotix {

namespace {

class OpenServerDialogTest : public testing::Test {
protected:
    OpenServerDialogTest()
    {
        QSettings().remove(QStringLiteral("ServerOpenedLast"));
        qputenv("PLOTIX_DATA_HOME", m_folder.path().toUtf8());
    }
    ~OpenServerDialogTest() override { qunsetenv("PLOTIX_DATA_HOME"); }

    QList<QLineEdit*> lines() { return dialog.findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly); }
    QLineEdit* server() { return lines()[0]; }
    QLineEdit* user() { return lines()[1]; }
    QLineEdit* password() { return lines()[2]; }
    QComboBox* sites() { return dialog.findChild<QComboBox*>(); }
    QString words() { return dialog.findChild<QLabel*>(QStringLiteral("openServerWords"))->text(); }
    QPushButton* button(const char* text)
    {
        for (QPushButton* each : dialog.findChildren<QPushButton*>())
            if (each->text() == QLatin1String(text))
                return each;
        return nullptr;
    }

    QTemporaryDir m_folder;
    OpenServerDialog dialog;
};

TEST_F(OpenServerDialogTest, WithoutAServerThereIsNothingToOpen)
{
    EXPECT_FALSE(button("&Open")->isEnabled());
    server()->setText("plant");
    sites()->setEditText("works/line1");
    EXPECT_TRUE(button("&Open")->isEnabled());
}

TEST_F(OpenServerDialogTest, AnAddressMayBePastedWhole)
{
    server()->setText("clickhouse://anna@one:9000,two/works/line1?secure=1");
    emit server()->editingFinished();
    EXPECT_EQ(server()->text(), "one:9000,two");
    EXPECT_EQ(user()->text(), "anna");
    EXPECT_EQ(sites()->currentText(), "works/line1");
    EXPECT_TRUE(dialog.findChild<QCheckBox*>()->isChecked());
}

TEST_F(OpenServerDialogTest, AUserBeforeTheHostGoesIntoTheFieldForIt)
{
    server()->setText("anna@one");
    emit server()->editingFinished();
    EXPECT_EQ(server()->text(), "one");
    EXPECT_EQ(user()->text(), "anna");
}

TEST_F(OpenServerDialogTest, ARecentSiteIsNotAskedAsWhoAskedLast)
{
    user()->setText("anna");
    dialog.choose("clickhouse://two:8123/works/line1");
    EXPECT_EQ(user()->text(), "");
}

TEST_F(OpenServerDialogTest, WhatIsWrongIsSaidAndWhatWasTypedStays)
{
    server()->setText("127.0.0.1:1");
    sites()->setEditText("works/line1");
    EXPECT_FALSE(dialog.connectNow());
    EXPECT_TRUE(words().contains("127.0.0.1:1")) << words().toStdString();
    EXPECT_EQ(sites()->currentText(), "works/line1");
    EXPECT_TRUE(dialog.siteFile().isEmpty());
}

/// With a site on a server.
class OpenServerDialogOnServerTest : public OpenServerDialogTest {
protected:
    OpenServerDialogOnServerTest()
    {
        storeServer(address)->create();
        server()->setText(QStringLiteral("127.0.0.1:%1").arg(ServerForTests::running().port()));
    }
    QString place() const { return address.section(QLatin1Char('/'), 3); }

    const QString address = ServerForTests::running().newSite().text();
};

TEST_F(OpenServerDialogOnServerTest, TheSitesOfAServerAreFound)
{
    button("&Find")->click();
    EXPECT_GE(sites()->findText(place()), 0) << words().toStdString();
}

TEST_F(OpenServerDialogOnServerTest, ASiteIsOpenedAndStandsThereNextTime)
{
    sites()->setEditText(place());
    ASSERT_TRUE(dialog.connectNow()) << words().toStdString();
    EXPECT_EQ(addressOfDeskFile(dialog.siteFile()), address);
    OpenServerDialog next;
    EXPECT_EQ(next.findChild<QComboBox*>()->currentText(), place());
}

TEST_F(OpenServerDialogOnServerTest, AWrongPasswordIsRefusedAndTheRightOneTakenAfterIt)
{
    sites()->setEditText(place());
    user()->setText("default");
    password()->setText("wrong");
    EXPECT_FALSE(dialog.connectNow());
    EXPECT_TRUE(words().contains("password", Qt::CaseInsensitive)) << words().toStdString();
    password()->clear();
    EXPECT_TRUE(dialog.connectNow()) << words().toStdString();
}

TEST_F(OpenServerDialogOnServerTest, NoFileNamesTheUserOrThePassword)
{
    if (!ServerForTests::running().isOwn())
        GTEST_SKIP() << "the server is somebody else's";
    const QString asked = QStringLiteral("clickhouse://keeper@") + address.section("//", 1);
    dialog.choose(asked);
    password()->setText("secret");
    ASSERT_TRUE(dialog.connectNow()) << words().toStdString();
    EXPECT_EQ(deskFileOf(asked), dialog.siteFile());  // as the command line does
    const QFileInfo desk(dialog.siteFile());
    for (const QFileInfo& file : desk.dir().entryInfoList(QDir::Files)) {
        QFile opened(file.filePath());
        ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
        const QByteArray bytes = opened.readAll();
        EXPECT_TRUE(bytes.contains("clickhouse://127") || file != desk);
        EXPECT_FALSE(bytes.contains("keeper") || bytes.contains("secret")) << file.fileName().toStdString();
    }
}

}  // namespace

}  // namespace plotix
