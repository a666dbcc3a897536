#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/SiteWindow.h"
#include "hostapp/window/computing/JoinDialog.h"
#include "plugins/PlotixPlugIn/host/KTVDragData.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtCore/QMimeData>
#include <QtCore/QTimer>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QRadioButton>

using plotix::Date;

// Another agent's property comes into a trend: by a drop, and from the menu of the list.

namespace {

/// A trend that keeps what can be changed of it.
class KeepingTrend : public KTVPlugIn {
    Q_OBJECT
public:
    static std::shared_ptr<KeepingTrend> make(const KTVPlugInModule::Arguments& arguments)
    {
        std::shared_ptr<KeepingTrend> trend(new KeepingTrend);
        return trend->initWithAgent(arguments.agent, arguments.siteWindowController) ? trend : nullptr;
    }
    Q_INVOKABLE QVariantMap changeable() const { return m_state; }
    Q_INVOKABLE void changeTo(const QVariantMap& state) { m_state = state; }
    QStringList keys() const { return m_state.value(QStringLiteral("properties")).toStringList(); }

private:
    QVariantMap m_state{{QStringLiteral("properties"), QStringList("airTemperature")}};
};

class TrendOfTwoSourcesTest : public testing::Test {
protected:
    TrendOfTwoSourcesTest() : station(site.addStation()), roof(site.document->addAgent(QStringLiteral("Roof")))
    {
        roof->addProperty(QStringLiteral("Air Temperature"), QStringLiteral("°C"));
        site.store(*roof, {1, 2, 3});
        window = std::make_unique<plotix::SiteWindow>(site.document, plotix::WindowServices{&module, &desktop, &help});
        window->show();
        trend = std::dynamic_pointer_cast<KeepingTrend>(
            window->controller().newTrend(station, {}, Date{0}, Date{10}, QStringLiteral("Day")));
        QCoreApplication::processEvents();
    }
    void TearDown() override
    {
        trend.reset();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Answers the question how the other source's records are joined, once it is asked.
    template <class Answer>
    void answerJoin(Answer answer)
    {
        QTimer::singleShot(0, window.get(), [this, answer] {
            auto* dialog = qobject_cast<plotix::JoinDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            ++timesAsked;
            answer(*dialog);
        });
    }
    static void accept(plotix::JoinDialog& dialog) { dialog.accept(); }
    void dropAndTakeStraightLines(const plotix::SiteAgent& agent, const QString& key)
    {
        drop(agent, key, [](plotix::JoinDialog& dialog) {
            QTest::keyClick(dialog.findChild<QRadioButton*>("joinStraight"), Qt::Key_Space);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }
    void drop(const plotix::SiteAgent& agent, const QString& key) { drop(agent, key, &accept); }
    /// Drops a property of an agent on the middle of the trend, as the window gets it.
    template <class Answer>
    void drop(const plotix::SiteAgent& agent, const QString& key, Answer answer)
    {
        dropAt(trend->view()->mapTo(window.get(), trend->view()->rect().center()), agent, key, answer);
    }
    /// The same on a row of the list of trends.
    void dropOnRow(int row, const plotix::SiteAgent& agent, const QString& key)
    {
        auto& list = *window->findChild<QListView*>("trendList");
        const QPoint inList = list.visualRect(list.model()->index(row, 0)).center();
        dropAt(list.viewport()->mapTo(window.get(), inList), agent, key, &accept);
    }
    template <class Answer>
    void dropAt(const QPoint& place, const plotix::SiteAgent& agent, const QString& key, Answer answer)
    {
        const auto data = mimeDataForPropertyNames(agent.uniqueIdentifier(), {key});
        QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(window.get(), &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(window.get(), &drop);
        answerJoin(answer);
        QCoreApplication::processEvents();
    }
    void chooseForFirstOf(const plotix::SiteAgent& agent)
    {
        auto& list = *window->findChild<plotix::PropertyListView*>("propertyList");
        const std::unique_ptr<QMenu> menu(list.makeMenuFor(agent.siteProperties().front()));
        for (QAction* action : menu->actions())
            if (action->text().remove('&') == "Add to the Trend in Front") {
                answerJoin(&accept);
                return action->trigger();
            }
        ADD_FAILURE() << "there is no such item";
    }
    QStringList names() const
    {
        QStringList names;
        for (const auto& property : station->siteProperties())
            names << property->name();
        return names;
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station, roof;
    ModuleOf<KeepingTrend> module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::unique_ptr<plotix::SiteWindow> window;
    std::shared_ptr<KeepingTrend> trend;
    int timesAsked = 0;
};

TEST_F(TrendOfTwoSourcesTest, ADroppedPropertyOfAnotherAgentBecomesOneOfTheTrends)
{
    drop(*roof, "airTemperature");
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure", "Air Temperature (Roof)"}));
    EXPECT_EQ(station->siteProperties().back()->description().formula->text, "Roof.\"Air Temperature\"");
    EXPECT_EQ(trend->keys(), QStringList({"airTemperature", station->siteProperties().back()->propertyName()}));
}

TEST_F(TrendOfTwoSourcesTest, IsOneStepThatIsUndoneAndDoneAgain)
{
    const int steps = window->undoStack().count();
    drop(*roof, "airTemperature");
    ASSERT_EQ(window->undoStack().count(), steps + 1);
    EXPECT_EQ(window->undoStack().undoText(), "Add “Air Temperature (Roof)” to the trend");
    window->undoStack().undo();
    EXPECT_EQ(names(), QStringList({"Air Temperature", "Pressure"}));
    EXPECT_EQ(trend->keys(), QStringList({"airTemperature"}));
    window->undoStack().redo();
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(trend->keys().size(), 2);
}

TEST_F(TrendOfTwoSourcesTest, TheMenuOfThePropertyDoesTheSame)
{
    chooseForFirstOf(*roof);
    EXPECT_EQ(names().back(), "Air Temperature (Roof)");
    EXPECT_EQ(trend->keys().size(), 2);
}

TEST_F(TrendOfTwoSourcesTest, ADropOnARowOfTheListIsForThatTrend)
{
    const KTVPlugInPtr other =
        window->controller().newTrend(station, {}, plotix::Date{0}, plotix::Date{10}, QStringLiteral("other"));
    ASSERT_NE(window->selectedPlugIn(), trend);
    dropOnRow(0, *roof, "airTemperature");
    EXPECT_EQ(window->selectedPlugIn(), trend);
    EXPECT_EQ(trend->keys().size(), 2);
    EXPECT_EQ(static_cast<KeepingTrend&>(*other).keys().size(), 1);
}

TEST_F(TrendOfTwoSourcesTest, TickedPropertiesOfOneNameComeIntoOneTrend)
{
    auto& list = window->propertyList();
    for (int agent = 0; agent < 2; ++agent)
        list.setData(list.index(0, 0, list.index(agent, 0)), Qt::Checked, Qt::CheckStateRole);
    const int before = window->controller().sourceList().rowCount();
    answerJoin(&accept);
    window->actions().newTrend->trigger();
    EXPECT_EQ(window->controller().sourceList().rowCount(), before + 1);
    EXPECT_EQ(names().back(), "Air Temperature (Roof)");
    EXPECT_NE(station->siteProperties().back()->color(), station->siteProperties().front()->color());
}

TEST_F(TrendOfTwoSourcesTest, TickedPropertiesOfOtherNamesMakeATrendForEachSource)
{
    auto& list = window->propertyList();
    list.setData(list.index(1, 0, list.index(0, 0)), Qt::Checked, Qt::CheckStateRole);
    list.setData(list.index(0, 0, list.index(1, 0)), Qt::Checked, Qt::CheckStateRole);
    const int before = window->controller().sourceList().rowCount();
    window->actions().newTrend->trigger();
    EXPECT_EQ(window->controller().sourceList().rowCount(), before + 2);
}

TEST_F(TrendOfTwoSourcesTest, HoldsItsLastValueUnlessAskedForLines)
{
    drop(*roof, "airTemperature");
    EXPECT_EQ(station->siteProperties().back()->description().formula->join, plotix::PropertyFormula::Join::HoldLast);
    window->undoStack().undo();
    dropAndTakeStraightLines(*roof, "airTemperature");
    EXPECT_EQ(station->siteProperties().back()->description().formula->join, plotix::PropertyFormula::Join::Straight);
    EXPECT_EQ(timesAsked, 2);
}

TEST_F(TrendOfTwoSourcesTest, NothingIsMadeWhenTheQuestionIsCancelled)
{
    const int steps = window->undoStack().count();
    drop(*roof, "airTemperature", [](plotix::JoinDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(timesAsked, 1);
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(window->undoStack().count(), steps);
}

TEST_F(TrendOfTwoSourcesTest, WhatIsThereAlreadyIsNotMadeAgainNorAskedFor)
{
    drop(*roof, "airTemperature");
    drop(*roof, "airTemperature");
    EXPECT_EQ(timesAsked, 1);
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(trend->keys().size(), 2);
}

TEST_F(TrendOfTwoSourcesTest, AnOwnPropertyIsShownAsItIs)
{
    drop(*station, "pressure");
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(trend->keys(), QStringList({"airTemperature", "pressure"}));
}

TEST_F(TrendOfTwoSourcesTest, OtherThingsAreNotTaken)
{
    QMimeData text;
    text.setText("airTemperature");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &text, Qt::LeftButton, {});
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

}  // namespace

#include "TrendOfTwoSourcesTest.moc"
