#include "plugins/PlotixPlugIn/reading/notes/NotesPart.h"

#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"

// The notes of a trend on a screen: flags, keys, footnotes, what the host is asked for.

namespace {

using plotix::NoteFlag;

class NotesPartTest : public ReadTrendFixture {
protected:
    void SetUp() override
    {
        host().agent()->annotate();
        ReadTrendFixture::SetUp();
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}}}});
    }
    fakehost::FakeAnnotations& annotations() { return host().agent()->annotate(); }
    plotix::NotesPart& notes() { return dynamic_cast<plotix::NotesPart&>(part("notes")); }
    static KTVNote note(qint64 identifier, double from, double to, const char* text)
    {
        return {identifier, minute(from), minute(to), "Ada", text, true, {}};
    }
    void setNotes() { annotations().setNotes({note(7, 40, 50, "storm"), note(3, 10, 10, "pump replaced")}); }
    std::vector<NoteFlag> flags()
    {
        const plotkit::GraphGeometry where = geometry();
        for (const CPTGraphLayerPtr& layer : trend().graph()->layers())
            if (const auto* own = dynamic_cast<const plotix::NotesLayer*>(layer.get()))
                return own->flags(where);
        return {};
    }
    QStringList flagTexts()
    {
        QStringList texts;
        for (const NoteFlag& flag : flags())
            texts << flag.text();
        return texts;
    }
    QImage picture() { return trend().graphImageWithSize({800, 500}, 1, QString()); }
    double standing()
    {
        const QVariant time = part("valueLine").property("time");
        return time.isValid() ? (time.toDouble() - kFrom) / kMinute : -1;
    }
    QStringList footnoteTexts()
    {
        QStringList texts;
        for (const QVariant& told : trend().footnotes())
            texts << told.toMap().value("number").toString() + ' ' + told.toMap().value("text").toString();
        return texts;
    }
};

TEST_F(NotesPartTest, WithoutNotesTheGraphIsAsItWas)
{
    const QImage before = picture();
    const QRectF area = geometry().plotArea;
    setNotes();
    EXPECT_NE(picture(), before);
    EXPECT_GT(geometry().plotArea.top(), area.top()) << "the flags have room of their own";
    annotations().setNotes({});
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(geometry().plotArea, area);
}

TEST_F(NotesPartTest, FlagsStandAtTheirTimesAbovePlotsNumberedByTime)
{
    setNotes();
    ASSERT_EQ(flagTexts(), QStringList({"1", "2"}));
    EXPECT_NEAR(flags()[0].place.left(), at(10).x(), 0.01);
    EXPECT_NEAR(flags()[1].place.left(), at(40).x(), 0.01);
    EXPECT_LT(flags()[0].place.bottom(), geometry().plotArea.top());
    EXPECT_EQ(flags()[0].notes.front().note.text, "pump replaced");
}

TEST_F(NotesPartTest, FlagsThatWouldLieUponEachOtherAreOne)
{
    annotations().setNotes({note(1, 10, 10, "a"), note(2, 10.2, 10.2, "b"), note(3, 10.4, 10.4, "c")});
    EXPECT_EQ(flagTexts(), QStringList("1–3"));
}

TEST_F(NotesPartTest, ASpanThatBeganEarlierHasItsFlagAtTheEdge)
{
    annotations().setNotes({note(1, -30, 20, "since before"), note(2, -20, -10, "over")});
    ASSERT_EQ(flagTexts(), QStringList("1"));
    EXPECT_NEAR(flags()[0].place.left(), geometry().plotArea.left(), 0.01);
}

TEST_F(NotesPartTest, NotesAboutOtherPropertiesAreNotTold)
{
    KTVNote about = note(1, 10, 10, "other");
    about.isAboutAll = false;
    about.propertyNames = {"humidity"};
    KTVNote ours = about;
    ours.propertyNames = {"humidity", "wind"};
    ours.text = "ours";
    annotations().setNotes({about, ours});
    EXPECT_EQ(footnoteTexts(), QStringList("1 ours"));
}

TEST_F(NotesPartTest, FootnotesAreThoseOfTheTimesShownWithTheNumbersOfTheirFlags)
{
    setNotes();
    EXPECT_EQ(footnoteTexts(), QStringList({"1 pump replaced", "2 storm"}));
    trend().graph()->defaultPlotSpace()->setXRange({minute(45), 10 * kMinute});
    EXPECT_EQ(footnoteTexts(), QStringList("2 storm"));
    EXPECT_EQ(trend().reportContents().value("notes").toList().size(), 1);
    EXPECT_TRUE(trend().htmlContentForPrinting()->contains("<b>2</b>"));
}

TEST_F(NotesPartTest, TheyAreHiddenByChoice)
{
    const QImage without = picture();
    setNotes();
    action("Show Notes")->trigger();
    EXPECT_EQ(chosen("notes"), (QVariantMap{{"shown", false}}));
    EXPECT_EQ(picture(), without);
    EXPECT_TRUE(footnoteTexts().isEmpty());
    action("Show Notes")->trigger();
    EXPECT_NE(picture(), without);
}

TEST_F(NotesPartTest, KeysLeadFromNoteToNoteAndOpenIt)
{
    setNotes();
    trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(5)}}}});
    press(Qt::Key_H);
    EXPECT_DOUBLE_EQ(standing(), 10);
    EXPECT_TRUE(graphView().accessibleDescription().contains("pump replaced"));
    press(Qt::Key_H);
    EXPECT_DOUBLE_EQ(standing(), 40);
    press(Qt::Key_Return);
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_DOUBLE_EQ(standing(), 10);
    EXPECT_EQ(annotations().asked, QStringList("note 7"));
}

TEST_F(NotesPartTest, ANoteIsWrittenWhereTheValueLineStandsOrAboutTheMarkedSpan)
{
    trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", minute(5)}}}});
    press(Qt::Key_I);
    EXPECT_FALSE(action("Add Note from A to B…")->isEnabled());
    trend().setReading({{"marks", QVariantMap{{"a", minute(30)}, {"b", minute(20)}}}});
    press(Qt::Key_I, Qt::ShiftModifier);
    ASSERT_EQ(annotations().spansAsked.size(), 2U);
    EXPECT_EQ(annotations().spansAsked[0], std::pair(minute(5), minute(5)));
    EXPECT_EQ(annotations().spansAsked[1], std::pair(minute(20), minute(30)));
}

TEST_F(NotesPartTest, ADoubleClickOnAFlagOpensItAndAClickTakesNothingElse)
{
    setNotes();
    const QPointF flag = flags()[1].place.center();
    click(flag);
    EXPECT_EQ(standing(), -1);
    QTest::mouseDClick(&graphView(), Qt::LeftButton, {}, flag.toPoint());
    EXPECT_EQ(annotations().asked, QStringList("note 7"));
}

TEST_F(NotesPartTest, TheListIsTheHosts)
{
    action("List of Notes…")->trigger();
    EXPECT_EQ(annotations().asked, QStringList("notes"));
}

class TrendWithoutAnnotationsTest : public ReadTrendFixture {};

TEST_F(TrendWithoutAnnotationsTest, NothingOfThemIsThereAndTheKeysAreNobodys)
{
    EXPECT_TRUE(trend().footnotes().isEmpty());
    EXPECT_FALSE(action("Add Note Here…")->isEnabled());
    EXPECT_FALSE(action("Show Limits")->isEnabled());
    EXPECT_FALSE(trend().reportContents().contains("notes"));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_I, Qt::NoModifier);
    EXPECT_FALSE(dynamic_cast<plotix::NotesPart&>(part("notes")).keyPressed(key));
}

}  // namespace
