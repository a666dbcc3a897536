#include "hostapp/window/ExportPictureDialog.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteDetailsDialog.h"

#include <QtCore/QSettings>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
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

TEST(SiteDetailsDialogTest, ItTakesAZoneAsPeopleWriteItAndNoOther)
{
    plotix::SiteDetailsDialog dialog(QStringLiteral("Plant"), QString(), QTimeZone("Asia/Kathmandu"));
    QLineEdit* field = dialog.findChildren<QLineEdit*>().last();
    const QPushButton* accept = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_EQ(dialog.zone(), QTimeZone("Asia/Kathmandu"));
    field->setText("europe/berlin");
    EXPECT_EQ(dialog.zone(), QTimeZone("Europe/Berlin"));
    field->setText("Atlantis");
    EXPECT_FALSE(accept->isEnabled());
    field->clear();
    EXPECT_FALSE(dialog.zone().isValid());
    EXPECT_TRUE(accept->isEnabled());
}

TEST(SiteDetailsDialogTest, ASiteKeepsAName)
{
    plotix::SiteDetailsDialog dialog(QStringLiteral("Plant"), QString(), QTimeZone());
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
    ExportPictureDialogTest() { forget(); }
    ~ExportPictureDialogTest() override { forget(); }

    static void forget()
    {
        QSettings().remove(QStringLiteral("ExportPicture"));
        QSettings().remove(QStringLiteral("FigurePresets"));
    }

    using Dialog = plotix::ExportPictureDialog;
    using What = plotix::TrendPicture::What;
    using Unit = plotix::FigureSettings::Unit;
    static bool canExport(Dialog& dialog) { return buttonNamed(dialog, QStringLiteral("Export…"))->isEnabled(); }
};

TEST_F(ExportPictureDialogTest, KeepsSizeDensityAndTitleInReason)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setSettings({.width = 640, .height = 1'000'000, .unit = Unit::Points, .dotsPerInch = 1});
    EXPECT_EQ(dialog.picture().size, QSizeF(640, 32'767));
    EXPECT_EQ(dialog.picture().density, 0.5);
    EXPECT_EQ(dialog.picture().title, QStringLiteral("Week"));
}

TEST_F(ExportPictureDialogTest, BeginsAsLargeAsGraphsUsuallyAre)
{
    const Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    EXPECT_EQ(dialog.picture().size, QSizeF(plotix::kUsualGraphSize));
    EXPECT_EQ(dialog.picture().density, 2);
    EXPECT_TRUE(dialog.picture().reading.isEmpty());
}

TEST_F(ExportPictureDialogTest, BeginsWithWhatWasAcceptedLast)
{
    const plotix::FigureSettings wanted{85, 60, Unit::Millimetres, 600, "paper", 7, "below", "values", 0.8, true};
    Dialog first(QStringLiteral("Week"), Dialog::Table::Offered);
    first.setWhat(What::GraphAndTable);
    first.setFormat(plotix::FileKind::Pdf);
    first.setSettings(wanted);
    first.accept();
    const Dialog second(QStringLiteral("Month"), Dialog::Table::Offered);
    EXPECT_EQ(second.picture().what, What::GraphAndTable);
    EXPECT_EQ(second.picture().format, plotix::FileKind::Pdf);
    EXPECT_EQ(second.settings(), wanted);
    EXPECT_EQ(second.picture().title, QStringLiteral("Month"));
}

TEST_F(ExportPictureDialogTest, WhatWasCancelledIsForgotten)
{
    Dialog first(QStringLiteral("Week"), Dialog::Table::Offered);
    first.setSettings({.width = 800, .height = 500});
    first.reject();
    EXPECT_EQ(Dialog(QStringLiteral("Week"), Dialog::Table::Offered).picture().size, QSizeF(plotix::kUsualGraphSize));
}

TEST_F(ExportPictureDialogTest, AViewWithoutFiguresHasNoTable)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::NotOffered);
    dialog.setWhat(What::GraphAndTable);
    EXPECT_EQ(dialog.picture().what, What::Graph);
}

TEST_F(ExportPictureDialogTest, APageWithItsTableIsNoDrawing)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setFormat(plotix::FileKind::Svg);
    EXPECT_EQ(dialog.picture().format, plotix::FileKind::Svg);
    dialog.setWhat(What::GraphAndTable);
    EXPECT_EQ(dialog.picture().format, plotix::FileKind::Pdf);
}

TEST_F(ExportPictureDialogTest, MorePixelsThanCanBeDrawnAreRefusedBeforeAnythingIs)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setSettings({.width = 16'000, .height = 10'000, .unit = Unit::Points, .dotsPerInch = 600});
    EXPECT_FALSE(canExport(dialog));
    dialog.setFormat(plotix::FileKind::Pdf);
    EXPECT_TRUE(canExport(dialog));
}

TEST_F(ExportPictureDialogTest, PixelsAreReckonedByTheDensity)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setSettings({.width = 1200, .height = 600, .unit = Unit::Pixels, .dotsPerInch = 144});
    EXPECT_EQ(dialog.picture().size, QSizeF(600, 300));
    EXPECT_EQ(dialog.picture().size * dialog.picture().density, QSizeF(1200, 600));
}

TEST_F(ExportPictureDialogTest, AHeldValueLineIsLeftOutWhereThatIsChosen)
{
    const QVariantMap own{{"valueLine", QVariantMap{{"shown", true}, {"held", 60.0}}}};
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered, nullptr, {own, {}});
    dialog.setSettings({});
    EXPECT_FALSE(dialog.picture().reading.contains("valueLine"));
    dialog.setSettings({.valueLine = "none"});
    EXPECT_EQ(dialog.picture().reading.value("valueLine").toMap(), (QVariantMap{{"shown", true}}));
    EXPECT_EQ(dialog.settings().valueLine, "none");
}

TEST_F(ExportPictureDialogTest, ChoicesGoBesideThoseOfTheTrend)
{
    const QVariantMap own{{"looks", QVariantMap{{"look", "paper"}, {"marks", "apart"}}}};
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered, nullptr, {own, {}});
    dialog.setSettings({.look = "dark", .fontSize = 9, .legend = "right"});
    EXPECT_EQ(dialog.picture().reading, (QVariantMap{{"looks", QVariantMap{{"marks", "apart"}, {"fontSize", 9.0}}},
                                                     {"legend", QVariantMap{{"place", "right"}}}}));
}

TEST_F(ExportPictureDialogTest, ChoicesAreSavedByNameAndDeleted)
{
    const plotix::FigureSettings wanted{120, 80, Unit::Millimetres, 200, "light"};
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    dialog.setSettings(wanted);
    EXPECT_FALSE(dialog.saveAs(QStringLiteral("slide")));
    EXPECT_TRUE(dialog.saveAs(QStringLiteral(" Poster ")));
    EXPECT_EQ(plotix::figurePresetNamed(QStringLiteral("Poster")), wanted);
    buttonNamed(dialog, QStringLiteral("Delete"))->click();
    EXPECT_FALSE(plotix::figurePresetNamed(QStringLiteral("Poster")));
}

TEST_F(ExportPictureDialogTest, OursCannotBeDeletedAndAreChosenByKeyboard)
{
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered);
    EXPECT_FALSE(buttonNamed(dialog, QStringLiteral("Delete"))->isEnabled());
    auto* presets = dialog.findChildren<QComboBox*>().at(1);
    dialog.show();
    presets->setFocus();
    QTest::keyClick(presets, Qt::Key_Down);
    EXPECT_EQ(dialog.settings(), plotix::figurePresetNamed(QStringLiteral("paper-column")));
    EXPECT_FALSE(buttonNamed(dialog, QStringLiteral("Delete"))->isEnabled());
}

TEST_F(ExportPictureDialogTest, ThePreviewHasTheShapeOfThePicture)
{
    QList<QSizeF> drawn;
    const auto draw = [&drawn](const plotix::TrendPicture& picture) {
        drawn << picture.size * picture.density;
        QImage image((picture.size * picture.density).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::red);
        return image;
    };
    Dialog dialog(QStringLiteral("Week"), Dialog::Table::Offered, nullptr, {{}, draw});
    dialog.setSettings({.width = 85, .height = 60});
    dialog.show();
    QTRY_VERIFY(!drawn.isEmpty());
    EXPECT_NEAR(drawn.back().width() / drawn.back().height(), 85.0 / 60, 1e-6);
    EXPECT_LE(drawn.back().width(), 420.5 * dialog.devicePixelRatioF());
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
