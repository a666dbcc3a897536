#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

KTVNaturalLanguageDateCreator::~KTVNaturalLanguageDateCreator() = default;
KTVZonedDateCreator::~KTVZonedDateCreator() = default;

void KTVNaturalLanguageDateCreator::dateRangeForQuickRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end)
{
    KTVHostServices::installed().dateCreator->dateRange(range, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForQuickRange(KTVQuickRange range, const QTimeZone& zone,
                                                           OptionalDate& start, OptionalDate& end)
{
    const auto* zoned = dynamic_cast<const KTVZonedDateCreator*>(KTVHostServices::installed().dateCreator);
    if (zoned && zone.isValid())
        zoned->dateRangeIn(zone, range, start, end);
    else
        dateRangeForQuickRange(range, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForToday(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Today, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLast24Hours(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Last24Hours, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForYesterday(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Yesterday, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForThisWeek(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::ThisWeek, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLastWeek(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::LastWeek, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLast7Days(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Last7Days, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForThisMonth(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::ThisMonth, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLastMonth(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::LastMonth, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLast30Days(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Last30Days, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForThisYear(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::ThisYear, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLastYear(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::LastYear, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForLast12Months(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::Last12Months, start, end);
}

void KTVNaturalLanguageDateCreator::dateRangeForAllTime(OptionalDate& start, OptionalDate& end)
{
    dateRangeForQuickRange(KTVQuickRange::AllTime, start, end);
}
