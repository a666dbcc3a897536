#include "hostapp/core/Localization.h"
#include "hostapp/window/SiteActions.h"

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
    MnemonicsTest() { plotix::buildSiteMenus(&window, &undoStack); }

    QString inLanguage(const QString& text) const
    {
        const QString found = table.translate("", text.toUtf8().constData(), nullptr, -1);
        return found.isEmpty() ? text : found;
    }
    void expectUnique(const QList<QAction*>& items) const
    {
        QStringList letters;
        for (const QAction* item : items) {
            const QString text = inLanguage(item->text());
            const QString letter = QKeySequence::mnemonic(text).toString();
            EXPECT_TRUE(letter.isEmpty() || !letters.contains(letter)) << text.toStdString();
            letters << letter;
        }
    }

    QMainWindow window;
    QUndoStack undoStack;
    const plotix::TextTable table{plotix::textTableOf(QLatin1String(GetParam()))};
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
