#include "hostapp/site/PlugInLoader.h"

#include "base/ReportableError.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using plotix::PlugInLoader;
using testing::HasSubstr;
using testing::Not;

namespace {

class PlugInLoaderTest : public testing::Test {
protected:
    static QString module(const QString& name)
    {
        return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../test-modules/") + name);
    }
    static std::string errorOf(const QStringList& folders)
    {
        try {
            PlugInLoader(folders).load(QStringLiteral("PlotixPlugIn"), QStringLiteral("KTVPlotixPlugIn"));
        } catch (const plotix::ReportableError& error) {
            return error.what();
        }
        return "no error";
    }
    void writeModule(const QByteArray& bytes)
    {
        QFile file(scratch.filePath(QStringLiteral("PlotixPlugIn.so")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir scratch;
};

TEST_F(PlugInLoaderTest, LoadsAModuleThatFits)
{
    PlugInLoader loader({scratch.path(), module(QStringLiteral("right"))});
    KTVPlugInModule* loaded = loader.load(QStringLiteral("PlotixPlugIn"), QStringLiteral("KTVPlotixPlugIn"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loader.load(QStringLiteral("PlotixPlugIn"), QStringLiteral("KTVPlotixPlugIn")), loaded);
}

TEST_F(PlugInLoaderTest, MissingModuleIsNamedWithTheFoldersSearched)
{
    const std::string error = errorOf({scratch.path(), QStringLiteral("/nowhere")});
    EXPECT_THAT(error, HasSubstr("PlotixPlugIn is missing"));
    EXPECT_THAT(error, HasSubstr(scratch.path().toStdString() + ", /nowhere"));
    EXPECT_THAT(error, HasSubstr("PLOTIX_PLUGIN_PATH"));
}

TEST_F(PlugInLoaderTest, GarbageIsABrokenModule)
{
    writeModule(QByteArray(5000, 'x'));
    EXPECT_THAT(errorOf({scratch.path()}), HasSubstr("is broken"));
}

TEST_F(PlugInLoaderTest, EmptyFileIsABrokenModule)
{
    writeModule({});
    EXPECT_THAT(errorOf({scratch.path()}), HasSubstr("is broken"));
}

TEST_F(PlugInLoaderTest, TruncatedModuleIsABrokenModule)
{
    QFile file(module(QStringLiteral("right")) + QStringLiteral("/PlotixPlugIn.so"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    writeModule(file.read(file.size() / 2));
    EXPECT_THAT(errorOf({scratch.path()}), HasSubstr("is broken"));
}

TEST_F(PlugInLoaderTest, NewerIdentityIsRefusedWithBothVersions)
{
    EXPECT_THAT(errorOf({module(QStringLiteral("newer_identity"))}),
                HasSubstr("version 2; this program needs version 1"));
}

TEST_F(PlugInLoaderTest, NewerVersionBehindTheSameIdentityIsRefused)
{
    EXPECT_THAT(errorOf({module(QStringLiteral("newer_version"))}),
                HasSubstr("version 7; this program needs version 1"));
}

TEST_F(PlugInLoaderTest, ModuleOfAnotherKindIsBroken)
{
    EXPECT_THAT(errorOf({module(QStringLiteral("other_kind"))}), HasSubstr("a module of another kind"));
}

TEST_F(PlugInLoaderTest, ModuleWithoutTheClassIsBroken)
{
    EXPECT_THAT(errorOf({module(QStringLiteral("other_class"))}), HasSubstr("has no class KTVPlotixPlugIn"));
}

TEST_F(PlugInLoaderTest, EveryErrorIsOneLine)
{
    writeModule(QByteArray(5000, 'x'));
    for (const QString& folder : {scratch.path(), QStringLiteral("/nowhere"), module(QStringLiteral("newer_version"))})
        EXPECT_THAT(errorOf({folder}), Not(HasSubstr("\n")));
}

TEST_F(PlugInLoaderTest, FoldersOfTheEnvironmentComeFirst)
{
    qputenv("PLOTIX_PLUGIN_PATH", "/one:/two");
    const QStringList folders = PlugInLoader::defaultFolders();
    qunsetenv("PLOTIX_PLUGIN_PATH");
    EXPECT_EQ(folders.mid(0, 2), QStringList({"/one", "/two"}));
    EXPECT_TRUE(folders.at(2).endsWith(QStringLiteral("/plugins")));
    EXPECT_TRUE(folders.at(3).endsWith(QStringLiteral("/lib/plotix/plugins")));
}

}  // namespace
