#include "hostapp/window/SharedPicture.h"

#include "base/ReportableError.h"
#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/RecentSites.h"

#include <QtCore/QSettings>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

using plotix::SharedPicture;

namespace {

class SharedPictureTest : public testing::Test {
protected:
    SharedPictureTest() { image.fill(Qt::green); }
    SharedPicture picture()
    {
        return SharedPicture({[this](const QString& name) { return installed.contains(name) ? name : QString(); },
                              [this](const QString& program, const QStringList& words) {
                                  started = QStringList(program) + words;
                                  return true;
                              },
                              [this](const QUrl& url) {
                                  opened = url;
                                  return opens;
                              }});
    }

    QImage image{30, 20, QImage::Format_RGB32};
    QStringList installed, started;
    QUrl opened;
    bool opens = true;
};

TEST_F(SharedPictureTest, MailProgramGetsThePictureAttached)
{
    installed = QStringList{"xdg-email"};
    SharedPicture shared = picture();
    shared.mail(image);
    EXPECT_EQ(started.value(0), QStringLiteral("xdg-email"));
    EXPECT_EQ(started.value(3), QStringLiteral("--attach"));
    EXPECT_EQ(QImage(started.value(4)).size(), QSize(30, 20));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(SharedPictureTest, WithoutOneAMailAddressTellsWhereThePictureIs)
{
    installed = QStringList{"xdg-open"};
    SharedPicture shared = picture();
    shared.mail(image);
    EXPECT_EQ(opened.scheme(), QStringLiteral("mailto"));
    EXPECT_TRUE(opened.toString().contains(QStringLiteral("trend-1.png")));
}

TEST_F(SharedPictureTest, ViewerOpensATemporaryFileThatEndsWithTheObject)
{
    QString path;
    {
        SharedPicture shared = picture();
        shared.openWith(image);
        path = opened.toLocalFile();
        EXPECT_EQ(QImage(path).size(), QSize(30, 20));
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SharedPictureTest, RefusalIsTold)
{
    opens = false;
    SharedPicture shared = picture();
    EXPECT_THROW(shared.openWith(image), plotix::ReportableError);
    EXPECT_THROW(shared.mail(image), plotix::ReportableError);
    EXPECT_THROW(shared.openWith(QImage()), plotix::ReportableError);
}

TEST_F(SharedPictureTest, MenuGreysWhatTheDesktopHasNoProgramFor)
{
    SharedPicture none = picture();
    plotix::DesktopUserInterface desktop;
    std::unique_ptr<QMenu> menu(plotix::makeSharingMenu(image, &desktop, none, nullptr));
    EXPECT_FALSE(menu->actions().at(3)->isEnabled());
    EXPECT_EQ(menu->actions().at(3)->toolTip(), QStringLiteral("No program for mail is set up."));
    EXPECT_FALSE(menu->actions().at(4)->isEnabled());
    installed = QStringList{"xdg-open"};
    menu.reset(plotix::makeSharingMenu(image, &desktop, none, nullptr));
    menu->actions().at(4)->trigger();
    EXPECT_TRUE(opened.isLocalFile());
}

TEST(RecentSitesTest, LatestFirstOnceEachAndOnlyThoseThatAreThere)
{
    plotix::forgetRecentSites();
    QTemporaryDir folder;
    QStringList paths;
    for (const char* name : {"a.plotix", "b.plotix"}) {
        QFile file(folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        paths << file.fileName();
    }
    plotix::rememberRecentSite(paths[0]);
    plotix::rememberRecentSite(paths[1]);
    plotix::rememberRecentSite(folder.filePath(QStringLiteral("gone.plotix")));
    plotix::rememberRecentSite(paths[0]);
    EXPECT_EQ(plotix::recentSites(), paths);
    for (int count = 0; count < 30; ++count)
        plotix::rememberRecentSite(folder.filePath(QString::number(count)));
    EXPECT_LE(QSettings().value(QStringLiteral("RecentSites")).toStringList().size(), plotix::kRecentSiteLimit);
    plotix::forgetRecentSites();
}

}  // namespace
