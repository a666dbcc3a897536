#include "hostapp/window/ExportImageDialog.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteDetailsDialog.h"

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

namespace {

QPushButton* buttonNamed(QWidget& dialog, const QString& text)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text().remove(QLatin1Char('&')) == text)
            return button;
    return nullptr;
}

TEST(SiteDetailsDialogTest, ASiteKeepsAName)
{
    plotix::SiteDetailsDialog dialog(QStringLiteral("Plant"), QString());
    auto* name = dialog.findChild<QLineEdit*>();
    name->setText(QStringLiteral("  "));
    EXPECT_FALSE(buttonNamed(dialog, QStringLiteral("OK"))->isEnabled());
    name->setText(QStringLiteral(" Plant 2 "));
    EXPECT_TRUE(buttonNamed(dialog, QStringLiteral("OK"))->isEnabled());
    EXPECT_EQ(dialog.name(), QStringLiteral("Plant 2"));
    EXPECT_TRUE(dialog.location().isEmpty());
}

TEST(ExportImageDialogTest, KeepsSizeDensityAndTitleInReason)
{
    plotix::ExportImageDialog dialog(QStringLiteral("Week"));
    dialog.setSize({640, 1'000'000});
    dialog.setDensity(0);
    EXPECT_EQ(dialog.size(), QSize(640, 16'384));
    EXPECT_EQ(dialog.density(), 0.5);
    EXPECT_EQ(dialog.title(), QStringLiteral("Week"));
}

TEST(HelpTest, AnchorOpensTheHelpWindow)
{
    plotix::HelpManager help;
    help.openHelpAnchor(QStringLiteral("trend"));
    ASSERT_NE(help.window(), nullptr);
    EXPECT_TRUE(help.window()->isVisible());
    EXPECT_TRUE(help.window()->plainText().contains(QStringLiteral("Alt")));
    plotix::HelpWindow* first = help.window();
    help.openHelpAnchor(QStringLiteral("trend"));
    EXPECT_EQ(help.window(), first);
}

TEST(HelpTest, EveryAnchorHasAPageOfItsOwn)
{
    QStringList pages;
    for (const QString& anchor : plotix::helpAnchors())
        pages << plotix::helpPage(anchor);
    EXPECT_GE(pages.size(), 10);
    pages.removeDuplicates();
    EXPECT_EQ(pages.size(), plotix::helpAnchors().size());
    EXPECT_EQ(plotix::helpPage(QStringLiteral("nobody wrote this")), plotix::helpPage(plotix::helpAnchors().first()));
}

TEST(HelpTest, LinksLeadToPagesThatAreThere)
{
    for (const QString& anchor : plotix::helpAnchors()) {
        const QStringList parts = plotix::helpPage(anchor).split(QStringLiteral("help:"));
        for (const QString& link : parts.mid(1))
            EXPECT_TRUE(plotix::helpAnchors().contains(link.section(QLatin1Char('"'), 0, 0))) << link.toStdString();
    }
}

TEST(HelpTest, SearchFindsTheNextPlaceAndStartsOver)
{
    plotix::HelpWindow window;
    window.showPage(QStringLiteral("dates"));
    EXPECT_EQ(window.shownAnchor(), QStringLiteral("dates"));
    EXPECT_TRUE(window.find(QStringLiteral("Yesterday")));
    EXPECT_TRUE(window.find(QStringLiteral("Yesterday")));
    EXPECT_FALSE(window.find(QStringLiteral("no such words at all")));
}

}  // namespace
