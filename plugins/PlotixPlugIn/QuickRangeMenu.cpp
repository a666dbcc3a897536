#include "plugins/PlotixPlugIn/QuickRangeMenu.h"

#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

namespace {

using Controller = KTVDataClusterViewController;
using DateCreator = KTVNaturalLanguageDateCreator;

struct Operation {
    KTVQuickRange range;
    void (Controller::*action)(QObject* sender);
};

/// The controller's operations, which the items of their ranges send.
constexpr Operation kOperations[] = {
    {KTVQuickRange::Today, &Controller::setDateRangeToday},
    {KTVQuickRange::Last24Hours, &Controller::setDateRangeLast24Hours},
    {KTVQuickRange::Yesterday, &Controller::setDateRangeYesterday},
    {KTVQuickRange::ThisWeek, &Controller::setDateRangeThisWeek},
    {KTVQuickRange::LastWeek, &Controller::setDateRangeLastWeek},
    {KTVQuickRange::Last7Days, &Controller::setDateRangeLast7Days},
    {KTVQuickRange::ThisMonth, &Controller::setDateRangeThisMonth},
    {KTVQuickRange::LastMonth, &Controller::setDateRangeLastMonth},
    {KTVQuickRange::Last30Days, &Controller::setDateRangeLast30Days},
    {KTVQuickRange::ThisYear, &Controller::setDateRangeThisYear},
    {KTVQuickRange::LastYear, &Controller::setDateRangeLastYear},
    {KTVQuickRange::Last12Months, &Controller::setDateRangeLast12Months},
    {KTVQuickRange::AllTime, &Controller::setDateRangeAllTime},
};

void applyQuickRange(Controller& controller, void (*dateRange)(plotix::OptionalDate&, plotix::OptionalDate&))
{
    plotix::OptionalDate start;
    plotix::OptionalDate end;
    dateRange(start, end);
    controller.updateDates(start, end);
}

/// A range that came later than the operations has none, and is applied as they apply theirs.
void choose(Controller& controller, KTVQuickRange range, QObject* sender)
{
    for (const Operation& operation : kOperations)
        if (operation.range == range)
            return (controller.*operation.action)(sender);
    plotix::OptionalDate start;
    plotix::OptionalDate end;
    DateCreator::dateRangeForQuickRange(range, start, end);
    controller.updateDates(start, end);
}

}  // namespace

QMenu* makeQuickRangeMenu(KTVDataClusterViewController& controller, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    for (const QuickRange& row : kQuickRanges) {
        if (row.place == MenuPlace::StartsGroup)
            menu->addSeparator();
        QAction* action = menu->addAction(KTVBundle::mainBundle()->localizedString(QLatin1String(row.title)));
        QObject::connect(action, &QAction::triggered, &controller,
                         [&controller, action, range = row.range] { choose(controller, range, action); });
    }
    return menu;
}

void KTVDataClusterViewController::setDateRangeToday(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForToday);
}

void KTVDataClusterViewController::setDateRangeLast24Hours(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLast24Hours);
}

void KTVDataClusterViewController::setDateRangeYesterday(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForYesterday);
}

void KTVDataClusterViewController::setDateRangeThisWeek(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForThisWeek);
}

void KTVDataClusterViewController::setDateRangeLastWeek(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLastWeek);
}

void KTVDataClusterViewController::setDateRangeLast7Days(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLast7Days);
}

void KTVDataClusterViewController::setDateRangeThisMonth(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForThisMonth);
}

void KTVDataClusterViewController::setDateRangeLastMonth(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLastMonth);
}

void KTVDataClusterViewController::setDateRangeLast30Days(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLast30Days);
}

void KTVDataClusterViewController::setDateRangeThisYear(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForThisYear);
}

void KTVDataClusterViewController::setDateRangeLastYear(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLastYear);
}

void KTVDataClusterViewController::setDateRangeLast12Months(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForLast12Months);
}

void KTVDataClusterViewController::setDateRangeAllTime(QObject*)
{
    applyQuickRange(*this, DateCreator::dateRangeForAllTime);
}
