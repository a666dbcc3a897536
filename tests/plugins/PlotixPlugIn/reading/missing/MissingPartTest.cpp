#include "plugins/PlotixPlugIn/reading/missing/MissingPart.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

namespace {

/// An hour of three lines, of which pressure has nothing recorded from minute 20 to 40.
class MissingPartTest : public ReadTrendFixture {
protected:
    void showOnlyPressure()
    {
        for (const int line : {0, 2})
            trend().graph()->allPlots()[static_cast<std::size_t>(line)]->setHidden(true);
        dynamic_cast<plotix::MissingPart&>(part("missing")).linesChanged();
    }
    void showInLanes() { trend().setReading({{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}}); }
    void choose(const QString& name) { trend().setReading({{"missing", QVariantMap{{name, true}}}}); }
    void chooseNothing() { trend().setReading({{"missing", QVariantMap()}}); }
    QImage picture() { return graphView().imageOfLayer(); }
    /// Whether the picture differs from that without a choice anywhere in the column of a minute.
    bool marks(const QImage& with, const QImage& without, double minuteCount)
    {
        const QRect column(qRound(at(minuteCount).x()), 0, 1, with.height());
        return with.copy(column) != without.copy(column);
    }
};

TEST_F(MissingPartTest, IsOffWithoutAChoiceAndWritesNoKey)
{
    EXPECT_FALSE(trend().reading().contains("missing"));
    EXPECT_TRUE(trend().graph()->layers().empty());
}

TEST_F(MissingPartTest, AStretchWithoutRecordsIsHatchedInItsLane)
{
    showInLanes();
    const QImage without = picture();
    choose("stretches");
    const QImage with = picture();
    EXPECT_TRUE(marks(with, without, 30));
    EXPECT_FALSE(marks(with, without, 10));
    EXPECT_FALSE(marks(with, without, 50));
}

TEST_F(MissingPartTest, OnOneScaleAStretchCountsWhereAllLinesMissIt)
{
    const QImage without = picture();
    choose("stretches");
    EXPECT_EQ(picture(), without);
    showOnlyPressure();
    const QImage with = picture();
    chooseNothing();
    EXPECT_TRUE(marks(with, picture(), 30));
}

TEST_F(MissingPartTest, TheStripTellsOfEachLineAtTheFootOfItsLane)
{
    choose("strip");
    const QImage image = picture();
    const auto at = [&](double minuteCount, double aboveFoot) {
        return image.pixelColor(qRound(this->at(minuteCount).x()), qRound(geometry().plotArea.bottom() - aboveFoot));
    };
    const QColor pressure = trend().graph()->allPlots()[1]->dataLineStyle().color;
    EXPECT_EQ(at(10, 5).rgb(), pressure.rgb());  // the second of three rows
    EXPECT_NE(at(30, 5).rgb(), pressure.rgb());
}

TEST_F(MissingPartTest, WhatHasNotBeenReadIsNotCalledMissing)
{
    showOnlyPressure();
    trend().graph()->defaultPlotSpace()->setXRange({minute(-60), 120 * kMinute});
    const QImage without = picture();
    choose("stretches");
    EXPECT_FALSE(marks(picture(), without, -30));
    EXPECT_TRUE(marks(picture(), without, 30));
}

TEST_F(MissingPartTest, ItsMenuItemsAreItsChoices)
{
    action("Quality Strip")->trigger();
    EXPECT_EQ(chosen("missing"), (QVariantMap{{"strip", true}}));
    action("Quality Strip")->trigger();
    EXPECT_FALSE(trend().reading().contains("missing"));
    EXPECT_TRUE(trend().graph()->layers().empty());
}

}  // namespace
