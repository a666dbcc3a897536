#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVHostExport.h"
#include "plugins/PlotixPlugIn/host/KTVQuickRange.h"

#include <QtCore/QTimeZone>

/// Computes start and end of named ranges; by the calendar of the user's zone and locale. The host *owns* the single
/// creator. Main thread only.
///
/// A range the host cannot give leaves start and end as they were.
class KTVHOST_EXPORT KTVNaturalLanguageDateCreator {
public:
    using OptionalDate = plotix::OptionalDate;

    virtual ~KTVNaturalLanguageDateCreator();
    virtual void dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const = 0;

    /// Asks the installed date creator. Each operation below does the same for one range.
    static void dateRangeForQuickRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end);

    /// By the calendar of a zone, if it is a valid one and the creator knows other zones than the user's.
    static void dateRangeForQuickRange(KTVQuickRange range, const QTimeZone& zone, OptionalDate& start,
                                       OptionalDate& end);

    static void dateRangeForToday(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLast24Hours(OptionalDate& start, OptionalDate& end);
    static void dateRangeForYesterday(OptionalDate& start, OptionalDate& end);
    static void dateRangeForThisWeek(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLastWeek(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLast7Days(OptionalDate& start, OptionalDate& end);
    static void dateRangeForThisMonth(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLastMonth(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLast30Days(OptionalDate& start, OptionalDate& end);
    static void dateRangeForThisYear(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLastYear(OptionalDate& start, OptionalDate& end);
    static void dateRangeForLast12Months(OptionalDate& start, OptionalDate& end);
    static void dateRangeForAllTime(OptionalDate& start, OptionalDate& end);
};

/// A date creator that knows other zones than the user's: a host's creator is one beside the other if it likes.
class KTVHOST_EXPORT KTVZonedDateCreator {
public:
    virtual ~KTVZonedDateCreator();
    virtual void dateRangeIn(const QTimeZone& zone, KTVQuickRange range, plotix::OptionalDate& start,
                             plotix::OptionalDate& end) const = 0;
};
