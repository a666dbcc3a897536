#include "plugins/PlotixPlugIn/reading/missing/MissingPart.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <set>

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
    EXPECT_TRUE(trend().graph()->layers().empty());
}

TEST_F(MissingPartTest, WhatWasSwitchedOffStaysOffForAHostThatTurnsItOn)
{
    action("Quality Strip")->trigger();
    action("Quality Strip")->trigger();
    EXPECT_EQ(chosen("missing"), (QVariantMap{{"strip", false}}));
    chooseNothing();
    EXPECT_FALSE(trend().reading().contains("missing"));
}

/// Temperature came late from minute 10 to 20, a minute after each record was due at first and an hour at last, and was
/// corrected at minute 50.
class AmendedTrendTest : public MissingPartTest {
protected:
    void SetUp() override
    {
        MissingPartTest::SetUp();
        host().agent()->setAmendments(
            "airTemperature", {{KTVAmendment::Kind::Late, minute(10), minute(20), minute(11), minute(80)},
                               {KTVAmendment::Kind::Corrected, minute(50), minute(50), minute(90), minute(90)}});
        refreshFor(kFrom, kTo);
        answer(minutes());
        drain();
    }
    /// How many columns of pixels the sign of one record takes in grey.
    int widthOfSign(KTVAmendment::Kind kind)
    {
        constexpr int kRow = 11, kStandsOut = 40;
        const auto shown = [this](const std::vector<KTVAmendment>& amendments) {
            host().agent()->setAmendments("airTemperature", amendments);
            readAgain();
            return picture().convertToFormat(QImage::Format_Grayscale8);
        };
        const QImage without = shown({}), with = shown({{kind, minute(30), minute(30), minute(90), minute(90)}});
        const int left = qRound(at(30).x()) - kRow / 2;
        const int top = qRound(geometry().plotArea.top()) + 2 + (kind == KTVAmendment::Kind::Late ? 0 : kRow);
        std::set<int> columns;
        for (int y = top; y < top + kRow; ++y)
            for (int x = left; x < left + kRow; ++x)
                if (std::abs(qGray(with.pixel(x, y)) - qGray(without.pixel(x, y))) > kStandsOut)
                    columns.insert(x);
        return static_cast<int>(columns.size());
    }
    /// Answers the records that are shown then.
    std::weak_ptr<KTVRecordDictionary> readAgain()
    {
        const KTVRecordDictionaryPtr records = minutes().build();
        refreshFor(kFrom, kTo);
        answer(records);
        drain();
        return records;
    }
    void chooseLateBy(double seconds)
    {
        trend().setReading({{"missing", QVariantMap{{"amended", true}, {"lateBy", seconds}}}});
    }
};

TEST_F(AmendedTrendTest, AReportCountsThemWhereTheyAreShown)
{
    const auto titles = [this] { return trend().reportContents().value("figureTitles").toStringList(); };
    const auto told = [this] {
        return trend().reportContents().value("rows").toList().front().toMap().value("figures").toStringList();
    };
    EXPECT_TRUE(titles().isEmpty());
    choose("stretches");
    EXPECT_EQ(titles(), QStringList{"Quality"});
    EXPECT_EQ(told(), QStringList{"–"});
    choose("amended");
    EXPECT_EQ(told(), (QStringList{"11 late, 1 corrected"}));
    chooseLateBy(1800);
    EXPECT_EQ(told(), (QStringList{"6 late, 1 corrected"}));
}

TEST_F(AmendedTrendTest, LateAndCorrectedAreMarked)
{
    const QImage without = picture();
    choose("amended");
    const QImage with = picture();
    EXPECT_TRUE(marks(with, without, 15));
    EXPECT_TRUE(marks(with, without, 50));
    EXPECT_FALSE(marks(with, without, 5));
    EXPECT_FALSE(marks(with, without, 40));
}

TEST_F(AmendedTrendTest, ADotAndACrossAreToldApartWithoutColours)
{
    choose("amended");
    const int dot = widthOfSign(KTVAmendment::Kind::Late);
    EXPECT_GT(dot, 0);
    EXPECT_GE(widthOfSign(KTVAmendment::Kind::Corrected), dot + 2);
}

TEST_F(AmendedTrendTest, OnlyTheirLaneIsMarked)
{
    showInLanes();
    const QImage without = picture();
    trend().setReading(
        {{"arrangement", QVariantMap{{"kind", "lane-per-property"}}}, {"missing", QVariantMap{{"amended", true}}}});
    const QImage with = picture();
    const QRect lowerHalf(0, with.height() / 2, with.width(), with.height() / 2);
    EXPECT_TRUE(marks(with, without, 15));
    EXPECT_EQ(with.copy(lowerHalf), without.copy(lowerHalf));
}

TEST_F(AmendedTrendTest, WhatIsLateByLessThanChosenIsNotMarked)
{
    const QImage without = picture();
    chooseLateBy(30 * 60);
    const QImage with = picture();
    EXPECT_FALSE(marks(with, without, 11));
    EXPECT_TRUE(marks(with, without, 19));
    EXPECT_TRUE(marks(with, without, 50));
}

TEST_F(AmendedTrendTest, TheStripTellsOfThem)
{
    choose("strip");
    const QImage with = picture();
    host().agent()->setAmendments("airTemperature", {});
    refreshFor(kFrom, kTo);
    answer(minutes());
    drain();
    const QImage without = picture();
    EXPECT_TRUE(marks(with, without, 10));
    EXPECT_TRUE(marks(with, without, 50));
    EXPECT_FALSE(marks(with, without, 40));
}

TEST_F(AmendedTrendTest, TheReadoutHeedsTheDelayAtOnce)
{
    trend().setReading({{"valueLine", QVariantMap{{"held", minute(11)}}}});
    EXPECT_TRUE(graphView().accessibleDescription().contains("arrived late"));
    chooseLateBy(30 * 60);
    EXPECT_FALSE(graphView().accessibleDescription().contains("arrived late"));
}

TEST_F(AmendedTrendTest, AreAskedForOnceForTheRecordsAndOnlyWhereTheyAreTold)
{
    readAgain();
    picture();
    EXPECT_EQ(host().agent()->timesAskedForAmendments(), 0);
    choose("amended");
    picture();
    trend().setReading({{"valueLine", QVariantMap{{"held", minute(11)}}}});
    picture();
    EXPECT_EQ(host().agent()->timesAskedForAmendments(), 3) << "of three lines";
}

TEST_F(AmendedTrendTest, RecordsThatAreShownNoMoreAreLetGo)
{
    choose("amended");
    const std::weak_ptr<KTVRecordDictionary> before = readAgain();
    picture();
    chooseNothing();
    EXPECT_FALSE(before.expired());
    readAgain();
    EXPECT_TRUE(before.expired());
}

TEST_F(AmendedTrendTest, TheDelayIsChosenInTheMenu)
{
    action("By More than an Hour")->trigger();
    EXPECT_EQ(chosen("missing"), (QVariantMap{{"lateBy", 3600.0}}));
    EXPECT_FALSE(action("By Any Time")->isChecked());
    action("By Any Time")->trigger();
    EXPECT_FALSE(trend().reading().contains("missing"));
}

}  // namespace
