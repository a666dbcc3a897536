#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "tests/plugins/PlotixPlugIn/TrendViewFixture.h"

// The legend of a trend, the titles of its axes, the width of its lines and its ground: chosen by name and by menu,
// archived, in pictures, and gone without a trace.

namespace {

class TrendLegendTest : public TrendViewFixture {
protected:
    void openWithLabels(const QString& arrangement = QStringLiteral("one-scale"))
    {
        openTrendWithData();
        trend().setReading({{"readableLabels", true}, {"arrangement", QVariantMap{{"kind", arrangement}}}});
    }
    void choose(const QVariantMap& choices) { trend().setReading({{"legend", choices}}); }
    void chooseLooks(const QVariantMap& looks) { trend().setReading({{"looks", looks}}); }
    CPTXYGraph& graph() { return *trend().graph(); }
    const CPTLegend& legend() { return graph().legend(); }
    QStringList named()
    {
        QStringList texts;
        for (const CPTLegend::Entry& entry : legend().entries)
            texts << entry.text;
        return texts;
    }
    QStringList valueTitles()
    {
        QStringList titles;
        for (const CPTXYAxisPtr& axis : graph().axisSet()->axes())
            if (axis->coordinate() == CPTCoordinate::Y && !axis->isHidden())
                titles << axis->title().section(QChar(0x9c), 0, 0);  // a shorter form may follow
        return titles;
    }
    QString timeTitle() { return graph().axisSet()->firstAxis()->title(); }
    QImage picture(const QString& title = {}) { return trend().graphImageWithSize({600, 400}, 1, title); }
    QAction* action(const QString& text)
    {
        for (QAction* each : static_cast<plotix::TrendReader*>(trend().trendReader())->actions())
            if (each->text().remove(u'&') == text)
                return each;
        ADD_FAILURE() << "no action " << text.toStdString();
        return nullptr;
    }
};

TEST_F(TrendLegendTest, WithoutAChoiceThereIsNoneAndNothingIsArchived)
{
    openTrendWithData();
    const QImage before = picture();
    EXPECT_EQ(legend().place, CPTLegendPlace::None);
    choose({{"place", "below"}});
    EXPECT_NE(picture(), before);
    choose({});
    EXPECT_EQ(picture(), before);
    EXPECT_FALSE(archived().contains("reading"));
}

TEST_F(TrendLegendTest, ItNamesEveryLineWithItsUnit)
{
    openTrendWithData();
    choose({{"place", "right"}});
    EXPECT_EQ(legend().place, CPTLegendPlace::Right);
    EXPECT_EQ(named(), (QStringList{"Air Temperature (°C)", "Pressure (hPa)"}));
}

TEST_F(TrendLegendTest, ItIsArchivedAndReadBack)
{
    openTrendWithData();
    choose({{"place", "below"}, {"axisTitles", "values"}});
    const auto again = encodedAndDecoded();
    EXPECT_EQ(again->reading().value("legend").toMap(), (QVariantMap{{"place", "below"}, {"axisTitles", "values"}}));
}

TEST_F(TrendLegendTest, WhatItDoesNotKnowItPassesOver)
{
    openTrendWithData();
    choose({{"place", "above"}, {"axisTitles", 7}, {"colour", "red"}});
    EXPECT_FALSE(trend().reading().contains("legend"));
}

TEST_F(TrendLegendTest, TheMenuChoosesWhatIsChecked)
{
    openTrendWithData();
    action("Legend Below the Graph")->trigger();
    EXPECT_EQ(legend().place, CPTLegendPlace::Below);
    EXPECT_TRUE(action("Legend Below the Graph")->isChecked());
    action("No Legend")->trigger();
    EXPECT_EQ(legend().place, CPTLegendPlace::None);
}

TEST_F(TrendLegendTest, ALookGivesItsTextsColourAndSize)
{
    openTrendWithData();
    choose({{"place", "below"}});
    EXPECT_GT(legend().textStyle.color.lightness(), 200);
    chooseLooks({{"look", "paper"}, {"fontSize", 7.0}});
    EXPECT_LT(legend().textStyle.color.lightness(), 80);
    EXPECT_EQ(legend().textStyle.fontSize, 7);
    trend().setPlotForPropertyName("pressure", true);
    EXPECT_LT(legend().textStyle.color.lightness(), 80);
    chooseLooks({});
    EXPECT_GT(legend().textStyle.color.lightness(), 200);
}

TEST_F(TrendLegendTest, WhatCameWhileALookWasWornIsLightAgainOnTheDark)
{
    openWithLabels("lane-per-unit");
    chooseLooks({{"look", "paper"}});
    choose({{"place", "below"}});
    trend().fitAll(nullptr);
    chooseLooks({});
    EXPECT_GT(legend().textStyle.color.lightness(), 200);
    EXPECT_GT(graph().allPlotSpaces().back()->strip().titleTextStyle.color.lightness(), 200);
    EXPECT_GT(graph().axisSet()->axes().back()->labelTextStyle().color.lightness(), 200);
}

TEST_F(TrendLegendTest, TitlesOfValueAxesNameLanesAlongTheirAxes)
{
    openWithLabels("lane-per-unit");
    EXPECT_EQ(valueTitles(), (QStringList{"", ""}));
    choose({{"axisTitles", "values"}});
    EXPECT_EQ(valueTitles(), (QStringList{"Air Temperature (°C)", "Pressure (hPa)"}));
    EXPECT_EQ(timeTitle(), QString());
    EXPECT_TRUE(graph().allPlotSpaces().back()->strip().title.isEmpty());
    choose({});
    EXPECT_EQ(valueTitles(), (QStringList{"", ""}));
    EXPECT_EQ(timeTitle(), "Time");
    EXPECT_EQ(graph().allPlotSpaces().back()->strip().title, "Pressure (hPa)");
}

TEST_F(TrendLegendTest, HeadsOfLanesNeedNoKeysBesideALegend)
{
    openWithLabels("lane-per-unit");
    EXPECT_TRUE(graph().allPlotSpaces().back()->strip().hasKeys);
    choose({{"place", "below"}});
    EXPECT_FALSE(graph().allPlotSpaces().back()->strip().hasKeys);
}

TEST_F(TrendLegendTest, AHeadWithoutTitleAndKeysTakesNoRoom)
{
    openWithLabels("lane-per-unit");
    for (const char* key : {"airTemperature", "pressure"})
        property(key)->setUnit(QString());  // one lane of two lines, which have no name in common
    EXPECT_GT(graph().allPlotSpaces().back()->strip().headRoom, 10);
    choose({{"place", "below"}});
    EXPECT_LE(graph().allPlotSpaces().back()->strip().headRoom, 1) << "room for its border";
}

TEST_F(TrendLegendTest, OneScaleIsTitledAsAskedForAndGetsItsTitleBack)
{
    openWithLabels();
    trend().addProperties({});
    choose({{"axisTitles", "none"}});
    EXPECT_EQ(valueTitles(), QStringList{""});
    EXPECT_EQ(timeTitle(), QString());
    choose({{"axisTitles", "all"}});
    EXPECT_EQ(timeTitle(), "Time");
    choose({});
    EXPECT_EQ(valueTitles(), QStringList{"Value"});
}

TEST_F(TrendLegendTest, APictureWithoutTitlesOfAxesNamesNoSpan)
{
    openWithLabels();
    const QImage withSpan = picture();
    choose({{"axisTitles", "none"}});
    EXPECT_NE(picture(), withSpan);
    EXPECT_EQ(timeTitle(), QString());
}

TEST_F(TrendLegendTest, APicturesTitleIsSeenOnPaper)
{
    openWithLabels();
    chooseLooks({{"look", "paper"}});
    const QImage titled = picture("Weather");
    int dark = 0;
    for (int x = 0; x < titled.width(); ++x)
        for (int y = 0; y < 24; ++y)
            dark += titled.pixelColor(x, y).lightness() < 100 ? 1 : 0;
    EXPECT_GT(dark, 50);
}

TEST_F(TrendLegendTest, OnPaperTheGraphUsesTheWholePicture)
{
    openWithLabels();
    chooseLooks({{"look", "paper"}});
    EXPECT_EQ(picture().pixelColor(1, 1), QColor(Qt::white));
    EXPECT_LT(graph().padding().left, 5);
    chooseLooks({});
    EXPECT_EQ(graph().padding().left, 20);
    EXPECT_EQ(graph().plotAreaFrame().padding.left, 60);
}

TEST_F(TrendLegendTest, ATransparentGroundLeavesThePictureClearBetweenTheLines)
{
    openWithLabels();
    chooseLooks({{"look", "paper"}, {"ground", "transparent"}});
    const QImage clear = picture();
    EXPECT_EQ(clear.pixelColor(1, 1).alpha(), 0);
    EXPECT_EQ(trend().reading().value("looks").toMap().value("ground"), "transparent");
    action("Transparent Ground")->trigger();
    EXPECT_EQ(picture().pixelColor(1, 1), QColor(Qt::white));
}

TEST_F(TrendLegendTest, LinesAreThisManyTimesAsWide)
{
    openTrendWithData();
    chooseLooks({{"lineWidth", 2.0}});
    EXPECT_EQ(graph().allPlots()[0]->dataLineStyle().width, 6);
    action("Usual Thickness of Lines")->trigger();
    EXPECT_EQ(graph().allPlots()[0]->dataLineStyle().width, 3);
    EXPECT_FALSE(trend().reading().contains("looks"));
}

TEST_F(TrendLegendTest, LinesAndTextsOfASmallFigureAreAlikeFine)
{
    openTrendWithData();
    chooseLooks({{"look", "paper"}});
    const double usual = graph().allPlots()[0]->dataLineStyle().width;
    chooseLooks({{"look", "paper"}, {"fontSize", 7.0}});
    EXPECT_NEAR(graph().allPlots()[0]->dataLineStyle().width, usual * 7 / 12, 1e-9);
}

}  // namespace
