#include "hostapp/window/TrendHistory.h"

#include "hostapp/window/PropertyHistory.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtGui/QUndoStack>
#include <QtTest/QTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

namespace {

/// A trend whose state its buttons change: "add" takes in a property, "zoom" moves the range.
class ChangeableTrend : public KTVPlugIn {
    Q_OBJECT
public:
    Q_INVOKABLE QVariantMap changeable() const { return m_state; }
    Q_INVOKABLE void changeTo(const QVariantMap& state) { m_state = state; }

    QStringList keys() const { return m_state.value(QStringLiteral("properties")).toStringList(); }
    double start() const { return m_state.value(QStringLiteral("times")).toList().value(0).toDouble(); }
    void add() { m_state[QStringLiteral("properties")] = keys() << QStringLiteral("more"); }
    void put(const QString& part, double time)
    {
        QVariantMap reading = m_state[QStringLiteral("reading")].toMap();
        reading.insert(part, QVariantMap{{QStringLiteral("held"), time}});
        m_state[QStringLiteral("reading")] = reading;
    }
    bool isHeld() const { return !m_state.value(QStringLiteral("reading")).toMap().isEmpty(); }
    void zoom() { m_state[QStringLiteral("times")] = QVariantList{start() + 1, 100.0}; }

private:
    QVariantMap m_state{{QStringLiteral("properties"), QStringList("first")},
                        {QStringLiteral("times"), QVariantList{0.0, 100.0}}};
};

class TrendHistoryTest : public testing::Test {
protected:
    TrendHistoryTest()
    {
        QObject::connect(&add, &QPushButton::clicked, trend.get(), &ChangeableTrend::add);
        QObject::connect(&zoom, &QPushButton::clicked, trend.get(), &ChangeableTrend::zoom);
        window.show();
        add.show();
        zoom.show();
    }
    void click(QPushButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
    void rest() { QTest::qWait(500); }
    void undo()
    {
        stack.undo();
        QCoreApplication::processEvents();
    }

    /// As a key in the trend does it.
    void move(const QString& part, double time)
    {
        QTest::keyPress(&window, Qt::Key_Period);
        trend->put(part, time);
        QTest::keyRelease(&window, Qt::Key_Period);
        rest();
    }

    const std::shared_ptr<ChangeableTrend> trend = std::make_shared<ChangeableTrend>();
    QUndoStack stack;
    QWidget window;
    QPushButton add{&window}, zoom{&window};
    bool followed = false;
    plotix::TrendHistory history{stack, [this] { return std::vector<KTVPlugInPtr>{trend}; },
                                 [this](const KTVPlugIn*) { return followed; },
                                 [this](const QWidget* widget) { return widget->window() == &window; }};
};

TEST_F(TrendHistoryTest, AChangeByHandIsUndoneAndDoneAgain)
{
    click(add);
    rest();
    ASSERT_EQ(stack.count(), 1);
    undo();
    EXPECT_EQ(trend->keys(), QStringList("first"));
    stack.redo();
    QCoreApplication::processEvents();
    EXPECT_EQ(trend->keys(), (QStringList{"first", "more"}));
}

TEST_F(TrendHistoryTest, StepsOfOneZoomAreOneCommand)
{
    for (int step = 0; step < 5; ++step)
        click(zoom);
    rest();
    EXPECT_EQ(stack.count(), 1);
    EXPECT_EQ(trend->start(), 5);
    undo();
    EXPECT_EQ(trend->start(), 0);
}

TEST_F(TrendHistoryTest, AWalkOfTheValueLineIsOneCommandHoweverLongItTakes)
{
    move(QStringLiteral("valueLine"), 1);
    QTest::qWait(1'300);
    move(QStringLiteral("valueLine"), 2);
    ASSERT_EQ(stack.count(), 1);
    EXPECT_EQ(stack.text(0), "Move Value Line");
    undo();
    EXPECT_FALSE(trend->isHeld());
}

TEST_F(TrendHistoryTest, ValueLineAndMarksAreMovedApart)
{
    move(QStringLiteral("valueLine"), 1);
    move(QStringLiteral("marks"), 1);
    ASSERT_EQ(stack.count(), 2);
    EXPECT_EQ(stack.text(1), "Move Marks");
}

TEST_F(TrendHistoryTest, AMenuThatNobodyOwnsChangesTheWindowInFront)
{
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QMenu menu;
    QObject::connect(menu.addAction(QStringLiteral("Dashes")), &QAction::triggered,
                     [this] { trend->put(QStringLiteral("looks"), 1); });
    menu.popup(QPoint());
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    rest();
    ASSERT_EQ(stack.count(), 1);
    EXPECT_EQ(stack.text(0), "Change Look");
}

TEST_F(TrendHistoryTest, AZoomAndAnotherChangeAreTwo)
{
    click(zoom);
    click(add);
    rest();
    EXPECT_EQ(stack.count(), 2);
}

TEST_F(TrendHistoryTest, WhatChangesByItselfIsNoCommand)
{
    trend->zoom();
    trend->add();
    click(zoom);
    rest();
    ASSERT_EQ(stack.count(), 1);
    undo();
    EXPECT_EQ(trend->keys(), (QStringList{"first", "more"}));
    EXPECT_EQ(trend->start(), 1);
}

TEST_F(TrendHistoryTest, TheRangeOfAFollowedTrendIsNoCommand)
{
    followed = true;
    click(zoom);
    rest();
    EXPECT_EQ(stack.count(), 0);
}

TEST_F(TrendHistoryTest, UndoingIsNoChangeOfItsOwn)
{
    click(add);
    rest();
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    undo();
    rest();
    EXPECT_EQ(stack.count(), 1);
    EXPECT_TRUE(stack.canRedo());
}

TEST_F(TrendHistoryTest, UndoRightAfterAChangeTakesThatChangeBack)
{
    click(add);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);  // what the key is bound to comes after it
    ASSERT_EQ(stack.count(), 1);
    undo();
    EXPECT_EQ(trend->keys(), QStringList("first"));
}

class PropertyHistoryTest : public testing::Test {
protected:
    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station = site.addStation();
    QUndoStack stack;
    plotix::PropertyHistory history{site.document, stack};
    plotix::SiteProperty& property() { return *station->siteProperties()[0]; }
};

TEST_F(PropertyHistoryTest, AUnitIsUndoneAndDoneAgain)
{
    const QString before = property().unit();
    property().setUnit(QStringLiteral("°F"));
    stack.undo();
    EXPECT_EQ(property().unit(), before);
    stack.redo();
    EXPECT_EQ(property().unit(), QStringLiteral("°F"));
    EXPECT_EQ(stack.count(), 1);
}

TEST_F(PropertyHistoryTest, AColourIsUndone)
{
    const QColor before = property().color();
    property().setColor(Qt::magenta);
    stack.undo();
    EXPECT_EQ(property().color(), before);
}

TEST_F(PropertyHistoryTest, TheSameUnitAgainIsNoCommand)
{
    property().setUnit(property().unit());
    EXPECT_EQ(stack.count(), 0);
}

TEST_F(PropertyHistoryTest, APropertyAddedLaterCountsToo)
{
    const auto added = station->addProperty(QStringLiteral("Depth"), QStringLiteral("m"));
    added->setUnit(QStringLiteral("cm"));
    EXPECT_EQ(stack.count(), 1);
}

}  // namespace

#include "TrendHistoryTest.moc"
