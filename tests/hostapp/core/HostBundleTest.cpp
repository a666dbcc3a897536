#include "hostapp/core/HostBundle.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

namespace {

class Shouting : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, "Plotix") == 0 ? QString::fromUtf8(text).toUpper() : QString();
    }
};

TEST(HostBundleTest, AKeyWithoutTranslationYieldsItself)
{
    EXPECT_EQ(plotix::HostBundle().localizedString("Refresh"), "Refresh");
    EXPECT_EQ(plotix::HostBundle().localizedString(""), "");
}

TEST(HostBundleTest, TextsComeFromTheInstalledTranslation)
{
    Shouting translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(plotix::HostBundle().localizedString("Cancel"), "CANCEL");
    QCoreApplication::removeTranslator(&translator);
}

TEST(HostBundleTest, ImagesAreFoundByName)
{
    QTemporaryDir folder;
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.save(folder.filePath("logo.png"));
    plotix::HostBundle bundle;
    EXPECT_TRUE(bundle.imageNamed("logo").isNull());
    bundle.addImageFolder(folder.path());
    EXPECT_EQ(bundle.imageNamed("logo").size(), QSize(3, 2));
}

TEST(HostBundleTest, HasTheLogoOfReports)
{
    EXPECT_EQ(plotix::HostBundle().imageNamed("report_logo").size(), QSize(512, 128));
}

TEST(HostBundleTest, ANameIsNoPath)
{
    QTemporaryDir folder;
    QImage(3, 2, QImage::Format_RGB32).save(folder.filePath("logo.png"));
    plotix::HostBundle bundle;
    bundle.addImageFolder(folder.filePath("inner"));
    EXPECT_TRUE(bundle.imageNamed("../logo").isNull());
    EXPECT_TRUE(bundle.imageNamed("").isNull());
}

TEST(HostBundleTest, TheExecutableHasAName)
{
    EXPECT_EQ(plotix::HostBundle().executableName(), "test_hostapp_core");
}

}  // namespace
