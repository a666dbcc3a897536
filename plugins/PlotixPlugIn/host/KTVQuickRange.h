#pragma once

#include <QtCore/QtGlobal>

#include <iterator>

/// The named ranges: their identifiers, their titles and their order in menus. The host says which dates they mean.
///
/// A new range is a value and a row here; the compiler then demands its dates from the host. Values only; any thread.
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

enum class MenuPlace { InGroup, StartsGroup };

struct QuickRange {
    KTVQuickRange range;
    const char* identifier;  ///< on the command line. Scripts use it: never change
    const char* title;       ///< in menus, English
    MenuPlace place = MenuPlace::InGroup;
};

inline constexpr QuickRange kQuickRanges[] = {
    {KTVQuickRange::Today, "today", QT_TRANSLATE_NOOP("Plotix", "Today")},
    {KTVQuickRange::Last24Hours, "last24Hours", QT_TRANSLATE_NOOP("Plotix", "Last 24 Hours")},
    {KTVQuickRange::Yesterday, "yesterday", QT_TRANSLATE_NOOP("Plotix", "Yesterday")},
    {KTVQuickRange::ThisWeek, "thisWeek", QT_TRANSLATE_NOOP("Plotix", "This Week"), MenuPlace::StartsGroup},
    {KTVQuickRange::LastWeek, "lastWeek", QT_TRANSLATE_NOOP("Plotix", "Last Week")},
    {KTVQuickRange::Last7Days, "last7Days", QT_TRANSLATE_NOOP("Plotix", "Last 7 Days")},
    {KTVQuickRange::ThisMonth, "thisMonth", QT_TRANSLATE_NOOP("Plotix", "This Month"), MenuPlace::StartsGroup},
    {KTVQuickRange::LastMonth, "lastMonth", QT_TRANSLATE_NOOP("Plotix", "Last Month")},
    {KTVQuickRange::Last30Days, "last30Days", QT_TRANSLATE_NOOP("Plotix", "Last 30 Days")},
    {KTVQuickRange::ThisYear, "thisYear", QT_TRANSLATE_NOOP("Plotix", "This Year"), MenuPlace::StartsGroup},
    {KTVQuickRange::LastYear, "lastYear", QT_TRANSLATE_NOOP("Plotix", "Last Year")},
    {KTVQuickRange::Last12Months, "last12Months", QT_TRANSLATE_NOOP("Plotix", "Last 12 Months")},
    {KTVQuickRange::AllTime, "allTime", QT_TRANSLATE_NOOP("Plotix", "All Time"), MenuPlace::StartsGroup},
};

constexpr const QuickRange& quickRange(KTVQuickRange range)
{
    return kQuickRanges[static_cast<std::size_t>(range)];
}

/// Whether every row is where `quickRange` looks for it.
constexpr bool quickRangesAreInOrder()
{
    for (std::size_t index = 0; index < std::size(kQuickRanges); ++index)
        if (kQuickRanges[index].range != static_cast<KTVQuickRange>(index))
            return false;
    return true;
}
static_assert(quickRangesAreInOrder());

inline constexpr int kQuickRangeCount = static_cast<int>(std::size(kQuickRanges));
