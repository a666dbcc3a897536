#include "plugins/PlotixPlugIn/QuickRangeMenu.h"

#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

namespace {

using Controller = KTVDataClusterViewController;
using DateCreator = KTVNaturalLanguageDateCreator;

enum class Place { InGroup, StartsGroup };

struct QuickRangeItem {
    const char* title;
    void (Controller::*action)(QObject* sender);
    Place place;
};

constexpr QuickRangeItem kItems[] = {
    {QT_TRANSLATE_NOOP("Plotix", "Today"), &Controller::setDateRangeToday, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last 24 Hours"), &Controller::setDateRangeLast24Hours, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Yesterday"), &Controller::setDateRangeYesterday, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "This Week"), &Controller::setDateRangeThisWeek, Place::StartsGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last Week"), &Controller::setDateRangeLastWeek, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last 7 Days"), &Controller::setDateRangeLast7Days, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "This Month"), &Controller::setDateRangeThisMonth, Place::StartsGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last Month"), &Controller::setDateRangeLastMonth, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last 30 Days"), &Controller::setDateRangeLast30Days, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "This Year"), &Controller::setDateRangeThisYear, Place::StartsGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last Year"), &Controller::setDateRangeLastYear, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "Last 12 Months"), &Controller::setDateRangeLast12Months, Place::InGroup},
    {QT_TRANSLATE_NOOP("Plotix", "All Time"), &Controller::setDateRangeAllTime, Place::StartsGroup},
};
static_assert(std::size(kItems) == kQuickRangeCount);

void applyQuickRange(Controller& controller, void (*dateRange)(plotix::OptionalDate&, plotix::OptionalDate&))
{
    plotix::OptionalDate start;
    plotix::OptionalDate end;
    dateRange(start, end);
    controller.updateDates(start, end);
}

}  // namespace

QMenu* makeQuickRangeMenu(KTVDataClusterViewController& controller, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    for (const QuickRangeItem& item : kItems) {
        if (item.place == Place::StartsGroup)
            menu->addSeparator();
        QAction* action = menu->addAction(KTVBundle::mainBundle()->localizedString(QLatin1String(item.title)));
        QObject::connect(action, &QAction::triggered, &controller,
                         [&controller, action, &item] { (controller.*item.action)(action); });
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
