#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plotkit/model/CPTClock.h"
#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/host/KTVAmendments.h"
#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"
#include "plugins/PlotixPlugIn/host/KTVSiteClock.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QStringList>
#include <QtCore/QTimeZone>
#include <QtGui/QColor>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CPTGraphHostingView;
class QWidget;

/// What the parts of a trend's reading may know of it and ask of it. The trend view implements it and *owns* the
/// parts, which *borrow* it. Main thread only.
namespace plotix {

class ReadingPart;

/// A plotted line, as it is now. A value.
struct ReadLine {
    QString key;         ///< the property's, of added lines their own; identifies its plot and its column of records
    QString name;        ///< for people
    QString unit;        ///< the current one, as the host names it
    QString unitSymbol;  ///< as it is written, such as "°C"; may be empty
    QColor color;        ///< of its line
    bool isShown = true;
    /// Of a line that is drawn to be compared: the key of the line it stands beside; empty: a line of the trend's own.
    QString comparedKey = {};
    QString comparison = {};      ///< likewise: names the comparison among others of the line, such as "7d"
    QString comparisonName = {};  ///< likewise: for people, such as "a week earlier"
    /// Likewise: when what is drawn at a time was recorded.
    std::function<double(double drawn)> recordedAt = {};
    bool hasValues = true;  ///< likewise: false where nothing with a value was recorded then

    bool isCompared() const { return !comparedKey.isEmpty(); }
};

/// A line that a part adds to the trend: its records stand under its key, at the times where they are drawn.
struct AddedLine {
    ReadLine line;  ///< unit and being shown are those of the line it stands beside, the colour is its plot's
    CPTScatterPlotPtr plot;
    KTVRecordDictionaryPtr records;
};

/// Records that are shown, or shown next, and the span they were asked for.
struct SpanRecords {
    TimeSpan span;
    KTVRecordDictionaryPtr records;  ///< may be null
};

/// Reading records beside those of the trend: whoever reads keeps it, and may stop.
struct RecordsRead {
    std::atomic<bool> isStopped = false;
};

class ReadTrend {
public:
    virtual ~ReadTrend();

    /// Null until the first records have been shown.
    virtual CPTXYGraphPtr graph() const = 0;
    /// The records shown, as columns in double precision; null until there are any.
    virtual KTVRecordDictionaryPtr records() const = 0;
    /// Limits and notes of the agent; null where the host keeps none.
    virtual KTVAnnotations* annotations() const = 0;
    /// The keys of the trend's properties, whether they have a plot or not.
    virtual QStringList propertyNames() const = 0;
    /// The properties that have a plot, in the order of the plots; behind each the lines that it is compared with. What
    /// is said of lines counts for all of them, unless `isCompared` is asked.
    virtual std::vector<ReadLine> lines() const = 0;
    /// The records that hold a line's column under its key: those shown, or those of an added line. Null for none.
    virtual KTVRecordDictionaryPtr recordsOf(const QString& key) const = 0;
    /// Which of the records shown of a property came late or were corrected, in the order of time, where the host
    /// tells.
    virtual const std::vector<KTVAmendment>& amendmentsOf(const QString& key) const = 0;
    /// Shows these lines, behind the trend's own, instead of those added before. Tells all parts that plots were
    /// replaced. They go when the plots are replaced the next time.
    virtual void setAddedLines(std::vector<AddedLine> lines) = 0;
    /// Reads records of a span as the trend reads its own, which go on being shown; without keys those of all its
    /// properties. `done` is called once, on the main thread, unless the trend is gone by then: with null, or records
    /// without times, where there are none.
    virtual void readBeside(const QStringList& keys, const TimeSpan& span, const std::shared_ptr<RecordsRead>& read,
                            std::function<void(const KTVRecordDictionaryPtr& records)> done) = 0;
    /// The trend is busy, and its user can cancel, until this is told again.
    virtual void setBusy(bool isBusy) = 0;
    /// The clock by which its times are said, everywhere: the one place to ask. Setting it tells all parts.
    virtual CPTClock clock() const = 0;
    virtual void setClock(const CPTClock& clock) = 0;
    QTimeZone zone() const { return clock().zoneInUse(); }
    /// The clock of the place that the agent's site is about; null where the host keeps none.
    virtual KTVSiteClock* siteClock() const = 0;

    /// The view of the graph, and the whole view of the trend; null while the trend is not on a screen.
    virtual CPTGraphHostingView* graphView() const = 0;
    virtual QWidget* rootView() const = 0;

    /// The dates of the date panel; nothing when one is absent.
    virtual std::optional<TimeSpan> dates() const = 0;
    /// What the records shown were asked for; nothing before the first, and where nobody asked.
    virtual std::optional<TimeSpan> readSpan() const = 0;
    /// From the first to the last record that is stored; nothing where there are none, or the host does not tell.
    /// Quick.
    virtual std::optional<TimeSpan> recordedSpan() const = 0;
    /// Moves the graph to these times; the records stay as they are. Modifier keys mean nothing to it.
    virtual void showTimes(const TimeSpan& times) = 0;
    /// The same for the values of one of the graph's plot spaces.
    virtual void showValues(CPTXYPlotSpace& space, const CPTPlotRange& values) = 0;
    /// Whether ranges are set right now by the trend itself or its host, as while records are followed; not while a
    /// part asks for them, which it does for somebody.
    virtual bool movesByItself() const = 0;
    /// Whether modifier keys hold the ranges that are set right now: only while somebody moves the graph by hand.
    virtual bool heedsKeys() const = 0;
    /// Puts dates into the date panel and fetches their records, as Refresh does.
    virtual void readDates(const TimeSpan& dates) = 0;
    /// Fits times and values to the records shown, as the trend's own "fit" does.
    virtual void fit() = 0;

    /// Another part by its key; null when there is none.
    virtual ReadingPart* part(const QString& key) const = 0;
    /// The stretch between the marks A and B, if both are set. Kept for the parts: whoever sets it tells all.
    virtual std::optional<TimeSpan> markedSpan() const = 0;
    virtual void setMarkedSpan(const std::optional<TimeSpan>& span) = 0;
    /// To be called by whoever gave axes or frame another look.
    virtual void tellRestyled() = 0;
};

/// Where the parts of the graph stand in its view; nothing while there is no graph, or none on a screen.
std::optional<plotkit::GraphGeometry> shownGeometry(const ReadTrend& trend);

/// The line of this key; nothing when it has no plot.
/// Brings a time that is out of sight to the middle; one that is shown already moves nothing.
void bringIntoView(ReadTrend& trend, double time);

std::optional<ReadLine> lineWithKey(const ReadTrend& trend, const QString& key);

}  // namespace plotix
