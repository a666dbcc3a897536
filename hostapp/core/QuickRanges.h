#pragma once

#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

#include <QtCore/QLocale>
#include <QtCore/QString>
#include <QtCore/QTimeZone>

#include <functional>
#include <optional>
#include <utility>

/// The thirteen named ranges, calendar-true in one zone and locale. Main thread only.
///
/// Days, weeks, months and years run from their first moment to the first moment of the next, so that a day is 23, 24
/// or 25 hours long; a day whose midnight is skipped begins at its first moment. Weeks begin on the locale's first day.
///   Today, Yesterday, ThisWeek, LastWeek, ThisMonth, LastMonth, ThisYear, LastYear: whole calendar spans.
///   Last24Hours: 86,400 seconds up to now.
///   Last7Days, Last30Days, Last12Months: from the same time of day that many calendar days or months ago up to now;
///     a day that month does not have becomes its last.
///   AllTime: what `allTime` answers; nothing when there are no records.
namespace plotix {

class QuickRanges : public KTVNaturalLanguageDateCreator, public KTVZonedDateCreator {
public:
    using Clock = std::function<Date()>;
    /// First and last record of everything open, or nothing.
    using AllTime = std::function<std::optional<std::pair<Date, Date>>()>;

    struct Setting {
        Clock clock;      ///< the system's when empty
        QTimeZone zone;   ///< the system's when invalid
        QLocale locale;   ///< decides the first day of the week; the default locale unless set
        AllTime allTime;  ///< nothing when empty
    };

    QuickRanges();
    explicit QuickRanges(Setting setting);

    void dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const override;
    void dateRangeIn(const QTimeZone& zone, KTVQuickRange range, OptionalDate& start, OptionalDate& end) const override;

private:
    Setting m_setting;
};

/// The range's name on the command line: "today", "last24Hours", … "allTime". Stable: scripts use it.
QString quickRangeName(KTVQuickRange range);

/// Reads a name, whatever its case; nothing for an unknown one.
std::optional<KTVQuickRange> quickRangeNamed(const QString& name);

/// The range's title in menus, such as "Last 7 Days".
QString quickRangeTitle(KTVQuickRange range);

}  // namespace plotix
