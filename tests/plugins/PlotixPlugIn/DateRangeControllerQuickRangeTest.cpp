#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtWidgets/QMenu>

namespace {

using Controller = KTVDataClusterViewController;

struct QuickRangeRow {
    const char* title;
    void (Controller::*action)(QObject* sender);
    KTVQuickRange range;
};

const QuickRangeRow kRows[] = {
    {"Today", &Controller::setDateRangeToday, KTVQuickRange::Today},
    {"Last 24 Hours", &Controller::setDateRangeLast24Hours, KTVQuickRange::Last24Hours},
    {"Yesterday", &Controller::setDateRangeYesterday, KTVQuickRange::Yesterday},
    {"This Week", &Controller::setDateRangeThisWeek, KTVQuickRange::ThisWeek},
    {"Last Week", &Controller::setDateRangeLastWeek, KTVQuickRange::LastWeek},
    {"Last 7 Days", &Controller::setDateRangeLast7Days, KTVQuickRange::Last7Days},
    {"This Month", &Controller::setDateRangeThisMonth, KTVQuickRange::ThisMonth},
    {"Last Month", &Controller::setDateRangeLastMonth, KTVQuickRange::LastMonth},
    {"Last 30 Days", &Controller::setDateRangeLast30Days, KTVQuickRange::Last30Days},
    {"This Year", &Controller::setDateRangeThisYear, KTVQuickRange::ThisYear},
    {"Last Year", &Controller::setDateRangeLastYear, KTVQuickRange::LastYear},
    {"Last 12 Months", &Controller::setDateRangeLast12Months, KTVQuickRange::Last12Months},
    {"All Time", &Controller::setDateRangeAllTime, KTVQuickRange::AllTime},
};

class DateRangeControllerQuickRange : public DateRangeControllerTest {
protected:
    QList<QAction*> items() const
    {
        QList<QAction*> items;
        for (QAction* action : controller->quickDatePopupButton()->menu()->actions())
            if (!action->isSeparator())
                items.append(action);
        return items;
    }
};

TEST_F(DateRangeControllerQuickRange, EachActionAppliesItsOwnRange)
{
    for (const QuickRangeRow& row : kRows) {
        delegate.calls.clear();
        dateCreator.asked.clear();
        (controller.get()->*row.action)(nullptr);
        EXPECT_EQ(dateCreator.asked, std::vector{row.range}) << row.title;
        const double start = static_cast<int>(row.range) * 1000.0;
        EXPECT_EQ(controller->fromDateValue(), plotix::Date{start}) << row.title;
        EXPECT_EQ(controller->toDateValue(), plotix::Date{start + 500}) << row.title;
        EXPECT_EQ(delegate.calls, QStringList("dateChanged")) << row.title;
    }
    EXPECT_TRUE(dateCreator.startedEmpty);
}

TEST_F(DateRangeControllerQuickRange, ThePopUpListsThemInOrderAndSendsThem)
{
    ASSERT_EQ(items().size(), kQuickRangeCount);
    for (int index = 0; index < kQuickRangeCount; ++index) {
        EXPECT_EQ(items()[index]->text(), kRows[index].title);
        items()[index]->trigger();
        EXPECT_EQ(dateCreator.asked.back(), kRows[index].range);
    }
}

TEST_F(DateRangeControllerQuickRange, ThePopUpGroupsThem)
{
    QStringList groups;
    for (const QAction* action : controller->quickDatePopupButton()->menu()->actions())
        if (action->isSeparator())
            groups.append("-");
        else if (groups.isEmpty() || groups.last() == "-")
            groups.append(action->text());
    EXPECT_EQ(groups, (QStringList{"Today", "-", "This Week", "-", "This Month", "-", "This Year", "-", "All Time"}));
}

TEST_F(DateRangeControllerQuickRange, ARangeWithoutDatesLeavesThePickersAndStillTellsTheDelegate)
{
    dateCreator.answers = false;
    controller->setFromDateValue(plotix::Date{7});
    controller->setDateRangeAllTime(nullptr);
    EXPECT_EQ(controller->fromDateValue(), plotix::Date{7});
    EXPECT_EQ(delegate.calls, QStringList("dateChanged"));
}

TEST_F(DateRangeControllerQuickRange, AQuickRangeStartsNoDelay)
{
    controller->setDateRangeToday(nullptr);
    EXPECT_EQ(controller->dateChangeDelayTimer(), nullptr);
}

}  // namespace
