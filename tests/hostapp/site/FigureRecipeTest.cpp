#include "hostapp/site/FigureRecipe.h"

#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include <gtest/gtest.h>

namespace plotix {

namespace {

class FigureRecipeTest : public testing::Test {
protected:
    FigureRecipeTest()
    {
        view.siteName = QStringLiteral("Werk <Süd> & \"Nord\"");
        view.siteFile = "plant.plotix";
        view.trend = "Supply & return";
        view.agent = "Boiler";
        view.properties = QStringList{"supply", "return"};
        view.from = Date{1'400'000'000.25};
        view.to = Date{1'400'086'400};
        view.reading = {{"brokenLines", true}, {"looks", QVariantMap{{"look", "paper"}, {"fontSize", 7.5}}}};
    }
    static QByteArray pdf()
    {
        QByteArray data;
        QBuffer buffer(&data);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        QPainter(&writer).drawLine(0, 0, 100, 100);
        return data;
    }
    static QByteArray png()
    {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::red);
        return pngOfImage(image);
    }
    static QByteArray svg() { return "<?xml version=\"1.0\"?>\n<svg>\n<defs>\n</defs>\n</svg>\n"; }

    ShownView view;
};

TEST_F(FigureRecipeTest, WhatIsWrittenIsRead)
{
    EXPECT_EQ(viewInRecipe(recipeOf(view)), view);
}

TEST_F(FigureRecipeTest, EveryKindOfFileCarriesIt)
{
    for (const auto& [kind, file] : {std::pair(FileKind::Png, png()), {FileKind::Pdf, pdf()}, {FileKind::Svg, svg()}}) {
        EXPECT_FALSE(viewInFigure(file));
        EXPECT_EQ(viewInFigure(withRecipe(kind, file, recipeOf(view))), view) << int(kind);
    }
}

TEST_F(FigureRecipeTest, ThePictureIsTheSame)
{
    const QByteArray with = withRecipe(FileKind::Png, png(), recipeOf(view));
    EXPECT_EQ(QImage::fromData(with), QImage::fromData(png()));
    EXPECT_EQ(QImage::fromData(with).text("plotix").toUtf8(), recipeOf(view));
}

TEST_F(FigureRecipeTest, APdfKeepsItsBytesAndGetsAnUpdateBehindThem)
{
    const QByteArray plain = pdf();
    const QByteArray with = withRecipe(FileKind::Pdf, plain, recipeOf(view));
    EXPECT_TRUE(with.startsWith(plain));
    const qsizetype table = with.mid(with.lastIndexOf("startxref") + 10).split('\n').first().toLongLong();
    EXPECT_EQ(with.mid(table, 4), "xref");
    EXPECT_TRUE(with.mid(table).contains("/Prev "));
}

TEST_F(FigureRecipeTest, NoFolderIsInIt)
{
    EXPECT_FALSE(recipeOf(view).contains('/'));
}

TEST_F(FigureRecipeTest, WhatIsNoneOrOfALaterFormIsNotRead)
{
    EXPECT_FALSE(viewInRecipe("{}"));
    EXPECT_FALSE(viewInRecipe("no recipe"));
    EXPECT_FALSE(viewInRecipe(recipeOf(view).replace("\"plotixFigure\":1", "\"plotixFigure\":2")));
    EXPECT_FALSE(viewInFigure({}));
    EXPECT_EQ(withRecipe(FileKind::Png, "no picture", recipeOf(view)), "no picture");
    EXPECT_EQ(withRecipe(FileKind::Pdf, "%PDF-1.4 cut off", recipeOf(view)), "%PDF-1.4 cut off");
}

TEST_F(FigureRecipeTest, AFileThatIsCutOffIsNotRead)
{
    const QByteArray whole = withRecipe(FileKind::Png, png(), recipeOf(view));
    for (const qsizetype length : {qsizetype(9), whole.size() - 200, whole.size() - 13})
        EXPECT_FALSE(viewInFigure(whole.left(length))) << length;
}

}  // namespace

}  // namespace plotix
