#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

// The value line of a trend on a screen: pointer, click, keys, actions, archive, pictures.

namespace {

class LinePartTest : public ReadTrendFixture {
protected:
    void SetUp() override
    {
        ReadTrendFixture::SetUp();
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}}}});
    }
    void holdAt(double minuteCount)
    {
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(minuteCount)}}}});
    }
    /// In minutes since the beginning; −1: the line stands nowhere.
    double standing()
    {
        const QVariant time = part("valueLine").property("time");
        return time.isValid() ? (time.toDouble() - kFrom) / kMinute : -1;
    }
    /// As hands do it: the second press is the double click.
    void doubleClick(const QPointF& place)
    {
        click(place);
        QTest::mouseDClick(&graphView(), Qt::LeftButton, {}, place.toPoint());
        QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, place.toPoint());
    }
    bool isHeld() { return chosen("valueLine").contains("held"); }
    QString spoken() { return graphView().accessibleDescription(); }
    /// How wide what the held line adds to a picture is, its texts being of this size.
    int addedWidth(double fontSize)
    {
        const auto picture = [this] { return trend().graphImageWithSize({900, 500}, 1, {}); };
        trend().setReading({{"looks", QVariantMap{{"fontSize", fontSize}}}, {"valueLine", QVariantMap{}}});
        const QImage before = picture();
        holdAt(30);
        return boundsOfDifference(before, picture()).width();
    }
    static QRect boundsOfDifference(const QImage& one, const QImage& other)
    {
        QRect bounds;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x)
                if (one.pixel(x, y) != other.pixel(x, y))
                    bounds |= QRect(x, y, 1, 1);
        return bounds;
    }
};

TEST_F(LinePartTest, FollowsThePointerAndStandsOnTheRecordBesideIt)
{
    moveTo(at(10) + QPointF(1, 0));
    EXPECT_DOUBLE_EQ(standing(), 10);
    moveTo(at(10.5));
    EXPECT_NEAR(standing(), 10.5, 0.1);
    moveTo({1, 1});
    EXPECT_EQ(standing(), -1);
}

TEST_F(LinePartTest, IsGoneWhenThePointerHasLeft)
{
    moveTo(at(10));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&graphView(), &leave);
    EXPECT_EQ(standing(), -1);
}

TEST_F(LinePartTest, MovingItPaintsNoPlotAgain)
{
    moveTo(at(10));
    graphView().grab();
    const QImage before = graphView().grab().toImage();
    struct Counting : CPTPlotDelegate {
        void didFinishDrawing(CPTScatterPlot*) override { ++drawn; }
        int drawn = 0;
    } counting;
    for (const CPTScatterPlotPtr& plot : trend().graph()->allPlots())
        plot->setDelegate(&counting);
    moveTo(at(30));
    EXPECT_NE(graphView().grab().toImage(), before);
    EXPECT_EQ(counting.drawn, 0);
    for (const CPTScatterPlotPtr& plot : trend().graph()->allPlots())
        plot->setDelegate(&trend());
}

TEST_F(LinePartTest, AClickHoldsItAndASecondOneLetsItGo)
{
    click(at(10));
    EXPECT_TRUE(isHeld());
    moveTo(at(30));
    EXPECT_DOUBLE_EQ(standing(), 10);
    click(at(30));
    EXPECT_FALSE(isHeld());
}

TEST_F(LinePartTest, ADragIsNoClick)
{
    const QPointF place = at(10);
    QTest::mousePress(&graphView(), Qt::LeftButton, {}, place.toPoint());
    moveTo(place + QPointF(40, 0), Qt::LeftButton);
    QTest::mouseRelease(&graphView(), Qt::LeftButton, {}, (place + QPointF(40, 0)).toPoint());
    EXPECT_FALSE(isHeld());
    EXPECT_NE(trend().graph()->plotSpace().xRange().location, kFrom) << "the drag pans as ever";
}

TEST_F(LinePartTest, ADoubleClickHoldsNothing)
{
    doubleClick(at(10));
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(standing(), -1);
}

TEST_F(LinePartTest, ADoubleClickBesideThePlotsLetsNothingGo)
{
    click(at(10));
    doubleClick({2, 2});
    EXPECT_TRUE(isHeld());
}

TEST_F(LinePartTest, EscapeLetsItGo)
{
    holdAt(10);
    press(Qt::Key_Escape);
    EXPECT_FALSE(isHeld());
}

TEST_F(LinePartTest, KeysMoveItRecordByRecordAndPixelByPixel)
{
    holdAt(10.5);
    press(Qt::Key_Period);
    EXPECT_DOUBLE_EQ(standing(), 11);
    press(Qt::Key_Comma);
    press(Qt::Key_Comma);
    EXPECT_DOUBLE_EQ(standing(), 9);
    press(Qt::Key_Colon, Qt::ShiftModifier);
    EXPECT_NEAR(at(standing()).x() - at(9).x(), 1, 1e-3);
    press(Qt::Key_Less, Qt::ShiftModifier);
    EXPECT_NEAR(standing(), 9, 1e-3);
}

TEST_F(LinePartTest, WithoutALineKeysBeginInTheMiddle)
{
    press(Qt::Key_Space);
    EXPECT_DOUBLE_EQ(standing(), 30);
    press(Qt::Key_Space);
    EXPECT_FALSE(isHeld());
}

TEST_F(LinePartTest, WigglesOfANoisyLineAreNoMaxima)
{
    holdAt(5);
    press(Qt::Key_L);
    press(Qt::Key_L);  // along pressure, which goes up and down by one
    trend().graph()->defaultPlotSpace()->setYRange({970, 60});
    press(Qt::Key_M);
    EXPECT_DOUBLE_EQ(standing(), 5);
    trend().graph()->defaultPlotSpace()->setYRange({995, 10});
    press(Qt::Key_M);
    EXPECT_GT(standing(), 5);
}

TEST_F(LinePartTest, KeysMoveItToGapsAndExtremesAndBackToAValue)
{
    holdAt(5);
    press(Qt::Key_G);
    EXPECT_DOUBLE_EQ(standing(), 20);
    press(Qt::Key_L);
    press(Qt::Key_L);  // along pressure
    press(Qt::Key_M, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(standing(), 20) << "of a line that looks flat";
    trend().graph()->defaultPlotSpace()->setYRange({995, 10});
    press(Qt::Key_M, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(standing(), 19);
    press(Qt::Key_BracketLeft);
    EXPECT_DOUBLE_EQ(standing(), 18);
    press(Qt::Key_V);
    EXPECT_DOUBLE_EQ(standing(), 19) << "where it rises above the value it had";
    press(Qt::Key_V);
    EXPECT_DOUBLE_EQ(standing(), 20) << "and where it comes back to it";
}

TEST_F(LinePartTest, AStepOutOfThePictureBringsThePictureAlong)
{
    trend().graph()->defaultPlotSpace()->setXRange({minute(0), 10 * kMinute});
    holdAt(5);
    press(Qt::Key_G);
    EXPECT_DOUBLE_EQ(standing(), 20);
    EXPECT_TRUE(geometry().plotArea.contains(at(20)));
}

TEST_F(LinePartTest, OffItTakesNoKeyAndNoClick)
{
    trend().setReading({{"valueLine", QVariantMap()}});
    click(at(10));
    press(Qt::Key_Space);
    press(Qt::Key_Period);
    moveTo(at(10));
    EXPECT_EQ(standing(), -1);
    EXPECT_TRUE(chosen("valueLine").isEmpty());
}

TEST_F(LinePartTest, WhatIsReadIsSpoken)
{
    const QString before = spoken();
    holdAt(10);
    press(Qt::Key_Period);
    EXPECT_TRUE(spoken().contains("12:11")) << spoken().toStdString();
    EXPECT_TRUE(spoken().contains("Air Temperature: 11 °C.")) << spoken().toStdString();
    press(Qt::Key_Escape);
    EXPECT_EQ(spoken(), before);
}

TEST_F(LinePartTest, OtherRecordsAreSpokenWhenTheyAreShown)
{
    holdAt(10);
    EXPECT_TRUE(spoken().contains("Pressure: 1,000 hPa")) << spoken().toStdString();
    answerRefresh(recordsAt({kFrom, minute(10), kTo}).column("pressure", {1, 2, 3}));
    EXPECT_TRUE(spoken().contains("Pressure: 2 hPa")) << spoken().toStdString();
}

TEST_F(LinePartTest, UndoingTakesBackWhatIsSpoken)
{
    const QString spokenBefore = spoken();
    const QVariantMap before = trend().changeable();
    click(at(10));
    EXPECT_NE(spoken(), spokenBefore);
    trend().changeTo(before);
    EXPECT_EQ(spoken(), spokenBefore);
}

TEST_F(LinePartTest, GapsAreSaidAndCopied)
{
    holdAt(30);
    action("Copy Values at the Line")->trigger();
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.contains("Air Temperature\t30 °C\n")) << copied.toStdString();
    EXPECT_TRUE(copied.contains("Pressure\tnot recorded\n")) << copied.toStdString();
}

TEST_F(LinePartTest, HiddenLinesAreNotRead)
{
    holdAt(30);
    trend().setPlotForPropertyName("pressure", true);
    action("Copy Values at the Line")->trigger();
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains("Pressure"));
}

TEST_F(LinePartTest, ATypedTimeIsGoneTo)
{
    holdAt(30);
    action("Go to Time…")->trigger();
    auto* dialog = trend().view()->findChild<QDialog*>();
    ASSERT_TRUE(dialog);
    dialog->findChild<QLineEdit*>()->setText("12:14");
    QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_DOUBLE_EQ(standing(), 14);
}

TEST_F(LinePartTest, ATimeOutsideAllRecordsIsNoneToGoToButTheirNearestEndIs)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{minute(0)}, {minute(60)}});
    action("Go to Time…")->trigger();
    auto* field = trend().view()->findChild<QDialog*>()->findChild<QLineEdit*>();
    field->setText("now");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(standing(), 60);
}

TEST_F(LinePartTest, RecordsOfATimeThatWereNotReadYetAreRead)
{
    host().archiveManager().setRecordedSpan(KTVArchiveManager::Span{{minute(0)}, {minute(6000)}});
    const int before = fetchCount();
    static_cast<plotix::LinePart&>(part("valueLine")).goTo(minute(3000));
    ASSERT_EQ(fetchCount(), before + 1);
    EXPECT_DOUBLE_EQ(standing(), 3000);
}

TEST_F(LinePartTest, WhatIsTheGreatestOfItsLineSaysSo)
{
    holdAt(60);
    EXPECT_TRUE(spoken().contains("Air Temperature: 60 °C, maximum.")) << spoken().toStdString();
    EXPECT_TRUE(spoken().contains("Wind: 5 m/s.")) << "it is the same everywhere: " << spoken().toStdString();
    holdAt(0);
    EXPECT_TRUE(spoken().contains("Air Temperature: 0 °C, minimum.")) << spoken().toStdString();
    holdAt(30);
    EXPECT_FALSE(spoken().contains("imum")) << spoken().toStdString();
}

TEST_F(LinePartTest, WhatIsTheGreatestInViewSaysThatToo)
{
    trend().graph()->defaultPlotSpace()->setXRange({minute(0), 30 * kMinute});
    holdAt(30);
    EXPECT_TRUE(spoken().contains("Air Temperature: 30 °C, maximum in view.")) << spoken().toStdString();
}

TEST_F(LinePartTest, TheMaximumOfEachLineIsInTheMenu)
{
    QMenu& menu = *action("Go to Maximum of")->menu();
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 3);
    EXPECT_EQ(menu.actions().at(0)->text(), "Air Temperature");
    menu.actions().at(0)->trigger();
    EXPECT_DOUBLE_EQ(standing(), 60);
    EXPECT_TRUE(spoken().contains("Air Temperature: 60 °C, maximum.")) << spoken().toStdString();
}

TEST_F(LinePartTest, EveryActionStandsInAMenuAndDoesWhatItsKeyDoes)
{
    holdAt(10);
    for (const QAction* each : static_cast<plotix::TrendReader*>(trend().trendReader())->actions())
        EXPECT_FALSE(plotix::menuOf(*each).isEmpty());
    action("Next Record")->trigger();
    EXPECT_DOUBLE_EQ(standing(), 11);
    action("Hold the Value Line")->trigger();
    EXPECT_FALSE(isHeld());
}

TEST_F(LinePartTest, PicturesShowItOnlyWhileItIsHeld)
{
    const auto picture = [this] { return trend().graphImageWithSize({600, 300}, 1, {}); };
    const QImage before = picture();
    moveTo(at(10));
    EXPECT_EQ(picture(), before);
    click(at(10));
    EXPECT_NE(picture(), before);
}

TEST_F(LinePartTest, IsArchivedAndCanBeUndone)
{
    const QVariantMap before = trend().changeable();
    click(at(10));
    const auto copy = encodedAndDecoded();
    EXPECT_EQ(copy->reading().value("valueLine").toMap().value("held").toDouble(), minute(10));
    trend().changeTo(before);
    EXPECT_FALSE(isHeld());
    EXPECT_TRUE(chosen("valueLine").value("shown").toBool());
}

TEST_F(LinePartTest, IsHeldAtATimeThatWentThroughText)
{
    const QVariantMap choices{{"valueLine", QVariantMap{{"held", minute(10)}}},
                              {"marks", QVariantMap{{"a", minute(20)}}}};
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(choices)).toJson();
    trend().setReading(QJsonDocument::fromJson(text).object().toVariantMap());
    EXPECT_DOUBLE_EQ(standing(), 10);
    EXPECT_EQ(chosen("marks").value("a").toDouble(), minute(20));
}

TEST_F(LinePartTest, WhoTurnsItOffFindsItOffAgain)
{
    action("Value Line at the Pointer")->trigger();
    EXPECT_EQ(chosen("valueLine"), (QVariantMap{{"shown", false}}));
}

TEST_F(LinePartTest, ATrendWithoutItArchivesNothingOfIt)
{
    trend().setReading({{"valueLine", QVariantMap()}});
    EXPECT_FALSE(trend().reading().contains("valueLine"));
    EXPECT_TRUE(trend().graph()->layers().empty());
}

TEST_F(LinePartTest, TheReadoutIsAsLargeAsTheGraphsTexts)
{
    const int usual = addedWidth(12);
    EXPECT_NEAR(addedWidth(6), usual / 2, 10);
    EXPECT_NEAR(addedWidth(18), usual * 3 / 2, 10);
}

TEST_F(LinePartTest, StandsAtTheMaximumThatOneHasGoneTo)
{
    trend().setReading({{"statistics", QVariantMap{{"offered", true}}}});
    const CPTPlotRange before = trend().graph()->defaultPlotSpace()->xRange();
    action("Go to Maximum")->trigger();
    EXPECT_DOUBLE_EQ(standing(), 60);
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(trend().graph()->defaultPlotSpace()->xRange(), before) << "it was in sight";
}

}  // namespace
