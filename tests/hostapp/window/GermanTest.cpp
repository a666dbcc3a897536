#include "hostapp/core/HostBundle.h"
#include "hostapp/core/Localization.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteActions.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QUndoStack>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>

#include <gtest/gtest.h>

/// What people see is German once it is installed: each text is looked up under the name it is filed under. That no
/// text lacks a translation is checked in the sources, by scripts/check_texts.py.
namespace {

class GermanTest : public testing::Test {
protected:
    GermanTest() { QCoreApplication::installTranslator(texts.get()); }

    const std::unique_ptr<QTranslator> texts = plotix::textsOf(QStringLiteral("de"));
};

TEST_F(GermanTest, MenusSpeakIt)
{
    QMainWindow window;
    QUndoStack undoStack;
    plotix::buildSiteMenus(&window, &undoStack);
    EXPECT_EQ(window.menuBar()->actions().first()->text(), QStringLiteral("&Datei"));
}

TEST_F(GermanTest, HelpSpeaksItInItsListOfPages)
{
    const plotix::HelpWindow help;
    const auto* pages = help.findChild<QListWidget*>();
    ASSERT_TRUE(pages && pages->count() > 2);
    EXPECT_EQ(pages->item(0)->text(), QStringLiteral("Erste Schritte"));
    EXPECT_EQ(pages->item(2)->text(), QStringLiteral("Zeiträume"));
}

TEST_F(GermanTest, AlertsAndMessagesOfTheTrendViewHaveOne)
{
    // The plug-in gives them untranslated; the host looks them up where it shows them.
    const plotix::HostBundle bundle;
    for (const char* key :
         {"Illegal Date Range", "The \"from\" date must be less than the \"to\" date.", "Database Access Error",
          "Returned object was malformed.", "No Properties Available to Plot", "No Data Available for Date Range",
          "Remove", "shown", "hidden"})
        EXPECT_NE(bundle.localizedString(QLatin1String(key)), QLatin1String(key)) << key;
}

TEST_F(GermanTest, KeysInTablesOfDataHaveOne)
{
    const plotix::HostBundle bundle;
    EXPECT_EQ(bundle.localizedString(QStringLiteral("Last 24 Hours")), QStringLiteral("Letzte 24 Stunden"));
    EXPECT_EQ(bundle.localizedString(QStringLiteral("No. of Points")), QStringLiteral("Anzahl Punkte"));
}

}  // namespace
