#include "base/MainQueue.h"

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

namespace {

/// Locale, fonts, zone and language are the same wherever the tests run; settings and data go to a folder of
/// this process's own, since several run at a time.
void pinSurroundings(const QTemporaryDir& home)
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", "en");
    qputenv("TZ", "UTC");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "1");
    qputenv("FONTCONFIG_FILE", PLOTIX_TEST_SOURCE_DIR "/tests/support/fonts.conf");
    qputenv("PLOTIX_TEST_SOURCE_DIR", PLOTIX_TEST_SOURCE_DIR);
    qputenv("PLOTIX_TEST_BINARY_DIR", PLOTIX_TEST_BINARY_DIR);
    qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.filePath("data").toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toLocal8Bit());
}

}  // namespace

/// Every test program runs inside one QApplication on the main thread.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const QTemporaryDir home;
    pinSurroundings(home);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    plotix::MainQueue::main();
    return RUN_ALL_TESTS();
}
