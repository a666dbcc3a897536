#pragma once

#include <QtCore/QtGlobal>

#include <array>

/// The named ranges: their identifiers, their titles and their order in menus. What they mean is the host's.
///
/// A new one is a row at its place here; the compiler then asks the host for its dates. Values only; any thread.
enum class KTVQuickRange {
    Today,
    Last24Hours,
    Yesterday,
    ThisWeek,
    LastWeek,
    Last7Days,
    ThisMonth,
    LastMonth,
    Last30Days,
    ThisYear,
    LastYear,
    Last12Months,
    AllTime
};

struct QuickRange {
    enum class Place { InGroup, StartsGroup };

    KTVQuickRange range;
    const char* identifier;  ///< on the command line. Scripts use it: never change
    const char* title;       ///< in menus, English
    Place place;             ///< in menus
};

inline constexpr std::array kQuickRanges{
    QuickRange{KTVQuickRange::Today, "today", QT_TRANSLATE_NOOP("Plotix", "Today"), QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::Last24Hours, "last24Hours", QT_TRANSLATE_NOOP("Plotix", "Last 24 Hours"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::Yesterday, "yesterday", QT_TRANSLATE_NOOP("Plotix", "Yesterday"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::ThisWeek, "thisWeek", QT_TRANSLATE_NOOP("Plotix", "This Week"),
               QuickRange::Place::StartsGroup},
    QuickRange{KTVQuickRange::LastWeek, "lastWeek", QT_TRANSLATE_NOOP("Plotix", "Last Week"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::Last7Days, "last7Days", QT_TRANSLATE_NOOP("Plotix", "Last 7 Days"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::ThisMonth, "thisMonth", QT_TRANSLATE_NOOP("Plotix", "This Month"),
               QuickRange::Place::StartsGroup},
    QuickRange{KTVQuickRange::LastMonth, "lastMonth", QT_TRANSLATE_NOOP("Plotix", "Last Month"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::Last30Days, "last30Days", QT_TRANSLATE_NOOP("Plotix", "Last 30 Days"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::ThisYear, "thisYear", QT_TRANSLATE_NOOP("Plotix", "This Year"),
               QuickRange::Place::StartsGroup},
    QuickRange{KTVQuickRange::LastYear, "lastYear", QT_TRANSLATE_NOOP("Plotix", "Last Year"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::Last12Months, "last12Months", QT_TRANSLATE_NOOP("Plotix", "Last 12 Months"),
               QuickRange::Place::InGroup},
    QuickRange{KTVQuickRange::AllTime, "allTime", QT_TRANSLATE_NOOP("Plotix", "All Time"),
               QuickRange::Place::StartsGroup},
};

constexpr const QuickRange& quickRange(KTVQuickRange range)
{
    return kQuickRanges[static_cast<std::size_t>(range)];
}

/// Whether every row stands where `quickRange` looks for it.
constexpr bool quickRangesAreInOrder()
{
    for (std::size_t index = 0; index < kQuickRanges.size(); ++index)
        if (kQuickRanges[index].range != static_cast<KTVQuickRange>(index))
            return false;
    return true;
}
static_assert(quickRangesAreInOrder());

inline constexpr int kQuickRangeCount = static_cast<int>(kQuickRanges.size());
