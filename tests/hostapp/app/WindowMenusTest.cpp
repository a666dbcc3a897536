#include "hostapp/app/Composition.h"
#include "hostapp/core/Localization.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtGui/QKeySequence>
#include <QtTest/QTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

// Every menu of a site window with a trend of the real module, in every language: a letter leads to each item, and to
// one alone. Names of properties, trends and files, and bare lengths, stand as they are.

namespace plotix {

namespace {

class WindowMenusTest : public testing::TestWithParam<const char*> {
protected:
    WindowMenusTest()
    {
        QSettings().clear();
        QCoreApplication::installTranslator(texts.get());
        composition = std::make_unique<Composition>(Composition::Audience::Desktop);
        station = site.addStation();
        window = std::make_unique<SiteWindow>(
            site.document,
            WindowServices{composition->module(), &composition->userInterface(), &composition->helpManager(), nullptr});
        window->show();
        KTVPropertyList properties{station->siteProperties()[0], station->siteProperties()[1]};
        window->controller().newTrend(station, properties, Date{0}, Date{3600}, "First Day");
        for (const auto& property : station->siteProperties())
            names.insert(property->name());
        names.insert({"First Day", window->windowTitle()});
    }
    ~WindowMenusTest() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    bool isName(const QString& text) const
    {
        const bool endsWithName = std::any_of(names.begin(), names.end(), [&](const QString& name) {
            return text.endsWith(u' ' + name);  // "To Dew Point"
        });
        return names.contains(text) || endsWithName || text.endsWith(QLatin1String(" pt")) ||
               text.endsWith(QLatin1String(".plotix"));
    }
    /// Of a menu and all within.
    void expectLetters(QMenu& menu, const QString& path)
    {
        emit menu.aboutToShow();
        QStringList letters;
        for (const QAction* item : menu.actions()) {
            if (item->isSeparator() || !item->isVisible())
                continue;
            const QString letter = QKeySequence::mnemonic(item->text()).toString();
            const QString where = path + QStringLiteral(" > ") + item->text();
            EXPECT_TRUE(!letter.isEmpty() || isName(item->text())) << "no letter: " << where.toStdString();
            EXPECT_FALSE(!letter.isEmpty() && letters.contains(letter)) << "letter twice: " << where.toStdString();
            letters << letter;
            ++count;
            if (item->menu())
                expectLetters(*item->menu(), where);
        }
    }

    const std::unique_ptr<QTranslator> texts = textsOf(QLatin1String(GetParam()));
    ScratchSite site;
    std::unique_ptr<Composition> composition;
    std::shared_ptr<SiteAgent> station;
    std::unique_ptr<SiteWindow> window;
    std::set<QString> names;
    int count = 0;
};

TEST_P(WindowMenusTest, HaveALetterForEachItemAndForOneAlone)
{
    ASSERT_TRUE(window->selectedPlugIn());
    for (const QAction* each : window->menuBar()->actions())
        expectLetters(*each->menu(), each->text());
    EXPECT_GT(count, 150) << "menus within menus were walked";
}

INSTANTIATE_TEST_SUITE_P(Languages, WindowMenusTest, testing::Values("en", "de"));

}  // namespace

}  // namespace plotix
