#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <gtest/gtest.h>

namespace {

using plotix::FollowSpan;

/// A view that shows what it is told to.
class RangedTrend : public KTVPlugIn {
    Q_OBJECT
public:
    static std::shared_ptr<RangedTrend> make(const KTVPlugInModule::Arguments& arguments)
    {
        std::shared_ptr<RangedTrend> trend(new RangedTrend);
        return trend->initWithAgent(arguments.agent, arguments.siteWindowController) ? trend : nullptr;
    }
    Q_INVOKABLE QVariantList shownRange() const { return shown; }
    Q_INVOKABLE void showRange(double from, double to) { shown = {from, to}; }

    QVariantList shown{1000.0, 1600.0};
};

class FollowSpansTest : public testing::Test {
protected:
    void SetUp() override
    {
        plotix::WindowServices services;
        services.module = &module;
        services.userInterface = &desktop;
        services.helpManager = &help;
        const auto station = site.addStation();
        window = std::make_unique<plotix::SiteWindow>(site.document, services);
        trend = window->controller().newTrend(station, {}, plotix::Date{0}, plotix::Date{10}, QStringLiteral("Day"));
        window->show();
    }
    QAction* span(FollowSpan wanted) const
    {
        for (QAction* action : window->actions().followSpans->actions())
            if (action->data().toString() == plotix::followSpanName(wanted))
                return action;
        return nullptr;
    }
    std::optional<FollowSpan> followed() const { return window->controller().follower().followedSpan(trend.get()); }

    ScratchSite site;
    ModuleOf<RangedTrend> module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::unique_ptr<plotix::SiteWindow> window;
    KTVPlugInPtr trend;
};

TEST_F(FollowSpansTest, ASpanOfTheMenuIsFollowed)
{
    span(FollowSpan::LastHour)->trigger();
    EXPECT_EQ(followed(), FollowSpan::LastHour);
    EXPECT_TRUE(window->actions().follow->isChecked());
    EXPECT_TRUE(span(FollowSpan::LastHour)->isChecked());
    const QVariantList shown = dynamic_cast<RangedTrend&>(*trend).shown;
    EXPECT_NEAR(shown[1].toDouble() - shown[0].toDouble(), 3600, 1e-3);
}

TEST_F(FollowSpansTest, AnotherSpanTakesItsPlaceAndFollowEndsIt)
{
    span(FollowSpan::LastHour)->trigger();
    span(FollowSpan::Today)->trigger();
    EXPECT_EQ(followed(), FollowSpan::Today);
    EXPECT_FALSE(span(FollowSpan::LastHour)->isChecked());
    window->actions().follow->trigger();
    EXPECT_FALSE(followed());
    EXPECT_FALSE(span(FollowSpan::Today)->isChecked());
}

TEST_F(FollowSpansTest, TheSameSpanOnceMoreEndsFollowing)
{
    span(FollowSpan::LastDay)->trigger();
    span(FollowSpan::LastDay)->trigger();
    EXPECT_FALSE(followed());
}

TEST_F(FollowSpansTest, TheWindowRemembersTheSpan)
{
    span(FollowSpan::Today)->trigger();
    window->storeNow();
    EXPECT_EQ(plotix::readWindowState(*site.document).followSpans.begin()->second, QStringLiteral("today"));
}

TEST_F(FollowSpansTest, WithoutATrendTheSpansAreGreyed)
{
    window->controller().removePlugIn(trend);
    EXPECT_FALSE(span(FollowSpan::Today)->isEnabled());
    EXPECT_EQ(span(FollowSpan::Today)->toolTip(), QStringLiteral("Select a trend first."));
}

}  // namespace

#include "FollowSpansTest.moc"
