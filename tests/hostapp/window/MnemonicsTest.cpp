#include "hostapp/core/Localization.h"
#include "hostapp/window/SiteActions.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeySequence>
#include <QtGui/QUndoStack>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gtest/gtest.h>

/// One letter of a menu leads to one item: of two with the same, neither is chosen by it.
namespace {

class MnemonicsTest : public testing::TestWithParam<const char*> {
protected:
    MnemonicsTest()
    {
        QCoreApplication::installTranslator(texts.get());
        plotix::buildSiteMenus(&window, &undoStack);
    }

    void expectUnique(const QList<QAction*>& items) const
    {
        QStringList letters;
        for (const QAction* item : items) {
            const QString letter = QKeySequence::mnemonic(item->text()).toString();
            EXPECT_TRUE(letter.isEmpty() || !letters.contains(letter)) << item->text().toStdString();
            letters << letter;
        }
    }

    const std::unique_ptr<QTranslator> texts = plotix::textsOf(QLatin1String(GetParam()));
    QMainWindow window;
    QUndoStack undoStack;
};

TEST_P(MnemonicsTest, AreUniqueInEachMenu)
{
    const QList<QAction*> menus = window.menuBar()->actions();
    EXPECT_GE(menus.size(), 6);
    expectUnique(menus);
    for (const QAction* menu : menus)
        expectUnique(menu->menu()->actions());
}

INSTANTIATE_TEST_SUITE_P(Languages, MnemonicsTest, testing::Values("en", "de"));

}  // namespace
