#include "hostapp/window/ExportPictureDialog.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteDetailsDialog.h"

#include <QtCore/QSettings>
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

/// Over settings that nothing was stored in.
class ExportPictureDialogTest : public testing::Test {
protected:
    ExportPictureDialogTest() { QSettings().remove(QStringLiteral("ExportPicture")); }
    ~ExportPictureDialogTest() override { QSettings().remove(QStringLiteral("ExportPicture")); }

    using Dialog = plotix::ExportPictureDialog;
    using What = plotix::TrendPicture::What;
    static bool canExport(Dialog& dialog) { return buttonNamed(dialog, QStringLiteral("Export…"))->isEnabled(); }
};

TEST_F(ExportPictureDialogTest, KeepsSizeDensityAndTitleInReason)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setPicture({.size = {640, 1'000'000}, .density = 0, .title = {}});
    EXPECT_EQ(dialog.picture().size, QSize(640, 16'384));
    EXPECT_EQ(dialog.picture().density, 0.5);
    EXPECT_EQ(dialog.picture().title, QStringLiteral("Week"));
}

TEST_F(ExportPictureDialogTest, BeginsWithWhatWasAcceptedLast)
{
    Dialog first(QStringLiteral("Week"), Dialog::Table::Offered);
    first.setPicture({What::GraphAndTable, plotix::FileKind::Pdf, {800, 500}, 3, {}});
    first.accept();
    const Dialog second(QStringLiteral("Month"), Dialog::Table::Offered);
    EXPECT_EQ(second.picture().what, What::GraphAndTable);
    EXPECT_EQ(second.picture().format, plotix::FileKind::Pdf);
    EXPECT_EQ(second.picture().size, QSize(800, 500));
    EXPECT_EQ(second.picture().density, 3);
    EXPECT_EQ(second.picture().title, QStringLiteral("Month"));
}

TEST_F(ExportPictureDialogTest, WhatWasCancelledIsForgotten)
{
    Dialog first(QStringLiteral("Week"), Dialog::Table::Offered);
    first.setPicture({.size = {800, 500}, .title = {}});
    first.reject();
    EXPECT_EQ(Dialog(QStringLiteral("Week"), Dialog::Table::Offered).picture().size, plotix::kUsualGraphSize);
}

TEST_F(ExportPictureDialogTest, AViewWithoutFiguresHasNoTable)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::NotOffered);
    dialog.setPicture({.what = What::GraphAndTable, .title = {}});
    EXPECT_EQ(dialog.picture().what, What::Graph);
}

TEST_F(ExportPictureDialogTest, MorePixelsThanCanBeDrawnAreRefusedBeforeAnythingIs)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setPicture({.size = {16'000, 10'000}, .density = 8, .title = {}});
    EXPECT_FALSE(canExport(dialog));
    dialog.setPicture({.format = plotix::FileKind::Pdf, .size = {16'000, 10'000}, .density = 8, .title = {}});
    EXPECT_TRUE(canExport(dialog));
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
