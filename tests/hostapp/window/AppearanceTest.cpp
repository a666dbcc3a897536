#include "hostapp/window/Appearance.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

namespace {

/// The look is the whole application's: each test leaves it as it found it.
class AppearanceTest : public testing::Test {
protected:
    ~AppearanceTest() override
    {
        qApp->setStyleSheet(QString());
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(m_palette);
    }

private:
    const QPalette m_palette = QApplication::palette();
};

TEST_F(AppearanceTest, RulesComeWithTheProgram)
{
    plotix::applyAppearance(*qApp);
    EXPECT_TRUE(qApp->styleSheet().contains(QStringLiteral("QMenuBar::item:selected")));
    EXPECT_TRUE(qApp->styleSheet().contains(QStringLiteral("QStatusBar")));
}

TEST_F(AppearanceTest, WindowsAreDark)
{
    plotix::applyAppearance(*qApp);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 64);
    EXPECT_GT(QApplication::palette().color(QPalette::WindowText).lightness(), 192);
}

}  // namespace
