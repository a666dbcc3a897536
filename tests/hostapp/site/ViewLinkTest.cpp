#include "hostapp/site/ViewLink.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace plotix {

namespace {

class ViewLinkTest : public testing::Test {
protected:
    ViewLinkTest()
    {
        view.siteFile = "my plant+2.plotix";
        view.trend = QStringLiteral("Süd & Nord = 100 %, + more");
        view.agent = "Boiler 2";
        view.properties = QStringList{"supply", QStringLiteral("rücklauf")};
        view.from = Date{1'400'000'000.25};
        view.to = Date{1'400'086'400};
    }
    ShownView view;
    QTemporaryDir folder;
};

TEST_F(ViewLinkTest, WhatIsWrittenIsRead)
{
    EXPECT_EQ(viewInLink(linkOf(view)), view);
    view.from = view.to = std::nullopt;
    EXPECT_EQ(viewInLink(linkOf(view)), view);
}

TEST_F(ViewLinkTest, ItIsOneWordThatPeopleCanRead)
{
    EXPECT_FALSE(linkOf(view).contains(u' '));
    EXPECT_TRUE(linkOf(view).contains("from=2014-05-13T16:53:20.250Z")) << linkOf(view).toStdString();
}

TEST_F(ViewLinkTest, WhatIsNoLinkIsNotRead)
{
    for (const char* text :
         {"", "https://example.org/?trend=x", "plotix:", "plotix:a.plotix", "plotix:?agent=a&properties=b"})
        EXPECT_FALSE(viewInLink(QString::fromLatin1(text))) << text;
}

TEST_F(ViewLinkTest, AFolderInALinkIsPassedOver)
{
    const auto read = viewInLink("plotix:%2Fetc%2F..%2Fa.plotix?agent=x&properties=y");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->siteFile, "a.plotix");
}

TEST_F(ViewLinkTest, TheSiteIsLookedForByItsFilesName)
{
    EXPECT_FALSE(siteOfView(view, {folder.path()}, {"/elsewhere/other.plotix"}));
    EXPECT_EQ(siteOfView(view, {folder.path()}, {"/elsewhere/my plant+2.plotix"}), "/elsewhere/my plant+2.plotix");
    QFile site(folder.filePath(view.siteFile));
    ASSERT_TRUE(site.open(QIODevice::WriteOnly));
    EXPECT_EQ(siteOfView(view, {QDir::tempPath(), folder.path()}), site.fileName());
}

}  // namespace

}  // namespace plotix
