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

/// By the clock of the panel.
void applyQuickRange(Controller& controller, KTVQuickRange range)
{
    plotix::OptionalDate start;
    plotix::OptionalDate end;
    DateCreator::dateRangeForQuickRange(range, controller.clock().zone, start, end);
    controller.updateDates(start, end);
}

/// A range that came later than the operations has none, and is applied as they apply theirs.
void choose(Controller& controller, KTVQuickRange range, QObject* sender)
{
    for (const Operation& operation : kOperations)
        if (operation.range == range)
            return (controller.*operation.action)(sender);
    applyQuickRange(controller, range);
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
    applyQuickRange(*this, KTVQuickRange::Today);
}

void KTVDataClusterViewController::setDateRangeLast24Hours(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::Last24Hours);
}

void KTVDataClusterViewController::setDateRangeYesterday(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::Yesterday);
}

void KTVDataClusterViewController::setDateRangeThisWeek(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::ThisWeek);
}

void KTVDataClusterViewController::setDateRangeLastWeek(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::LastWeek);
}

void KTVDataClusterViewController::setDateRangeLast7Days(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::Last7Days);
}

void KTVDataClusterViewController::setDateRangeThisMonth(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::ThisMonth);
}

void KTVDataClusterViewController::setDateRangeLastMonth(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::LastMonth);
}

void KTVDataClusterViewController::setDateRangeLast30Days(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::Last30Days);
}

void KTVDataClusterViewController::setDateRangeThisYear(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::ThisYear);
}

void KTVDataClusterViewController::setDateRangeLastYear(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::LastYear);
}

void KTVDataClusterViewController::setDateRangeLast12Months(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::Last12Months);
}

void KTVDataClusterViewController::setDateRangeAllTime(QObject*)
{
    applyQuickRange(*this, KTVQuickRange::AllTime);
}
