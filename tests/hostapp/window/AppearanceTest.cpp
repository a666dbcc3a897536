#include "hostapp/window/Appearance.h"
#include "hostapp/window/AppearanceMenu.h"

#include <QtCore/QSettings>
#include <QtGui/QAction>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

namespace {

/// The look is the whole application's: each test leaves it as it found it.
class AppearanceTest : public testing::Test {
protected:
    AppearanceTest() { qunsetenv("XDG_CURRENT_DESKTOP"); }
    ~AppearanceTest() override
    {
        qApp->setStyleSheet(QString());
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(m_palette);
        QSettings().remove(QStringLiteral("Appearance/scheme"));
        qputenv("XDG_CURRENT_DESKTOP", m_desktop);
    }

private:
    const QPalette m_palette = QApplication::palette();
    const QByteArray m_desktop = qgetenv("XDG_CURRENT_DESKTOP");
};

TEST_F(AppearanceTest, RulesComeWithTheProgram)
{
    plotix::applyAppearance(*qApp);
    EXPECT_TRUE(qApp->styleSheet().contains(QStringLiteral("QMenuBar::item:selected")));
    EXPECT_TRUE(qApp->styleSheet().contains(QStringLiteral("QStatusBar")));
}

TEST_F(AppearanceTest, WithoutADesktopWindowsAreDark)
{
    plotix::applyAppearance(*qApp);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 64);
    EXPECT_GT(QApplication::palette().color(QPalette::WindowText).lightness(), 192);
}

TEST_F(AppearanceTest, OnALightDesktopWindowsAreLight)
{
    qputenv("XDG_CURRENT_DESKTOP", "Somebody's");  // the toolkit's own palette, which is light, is then the desktop's
    plotix::applyAppearance(*qApp);
    EXPECT_FALSE(plotix::isDark(QApplication::palette()));
    EXPECT_GT(QApplication::palette().color(QPalette::Window).lightness(), 192);
}

TEST_F(AppearanceTest, AChoiceHoldsAgainstTheDesktopAndIsStored)
{
    plotix::chooseColourScheme(plotix::ColourScheme::Light);
    EXPECT_FALSE(plotix::isDark(QApplication::palette()));
    EXPECT_EQ(plotix::chosenColourScheme(), plotix::ColourScheme::Light);
    plotix::chooseColourScheme(plotix::ColourScheme::Dark);
    EXPECT_TRUE(plotix::isDark(QApplication::palette()));
}

TEST_F(AppearanceTest, TheRulesTakeTheirColoursFromTheLook)
{
    plotix::chooseColourScheme(plotix::ColourScheme::Light);
    const QString light = qApp->styleSheet();
    plotix::chooseColourScheme(plotix::ColourScheme::Dark);
    EXPECT_NE(qApp->styleSheet(), light);
    EXPECT_FALSE(light.contains(QLatin1Char('@')));
}

TEST_F(AppearanceTest, TextsAreLegibleInBothLooks)
{
    for (const auto scheme : {plotix::ColourScheme::Light, plotix::ColourScheme::Dark}) {
        plotix::chooseColourScheme(scheme);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            for (const auto& [text, ground] :
                 {std::pair(QPalette::WindowText, QPalette::Window), std::pair(QPalette::Text, QPalette::Base),
                  std::pair(QPalette::ButtonText, QPalette::Button),
                  std::pair(QPalette::PlaceholderText, QPalette::Base)})
                EXPECT_GT(std::abs(QApplication::palette().color(group, text).lightness() -
                                   QApplication::palette().color(group, ground).lightness()),
                          90);
    }
}

TEST_F(AppearanceTest, TheMenuShowsAndChangesTheChoice)
{
    QMenu menu;
    plotix::fillAppearanceMenu(&menu);
    EXPECT_TRUE(menu.actions().at(0)->isChecked());  // like the desktop
    menu.actions().at(1)->trigger();
    EXPECT_EQ(plotix::chosenColourScheme(), plotix::ColourScheme::Light);
    plotix::chooseColourScheme(plotix::ColourScheme::Dark);  // by another window's menu
    emit menu.aboutToShow();
    EXPECT_TRUE(menu.actions().at(2)->isChecked());
}

}  // namespace
