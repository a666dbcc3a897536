#pragma once

#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/host/KTVAnnotations.h"
#include "plugins/PlotixPlugIn/host/KTVRecordDictionary.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QString>
#include <QtGui/QColor>

#include <optional>
#include <vector>

class CPTGraphHostingView;
class QWidget;

/// What the parts of a trend's reading may know of it and ask of it. The trend view implements it and *owns* the
/// parts, which *borrow* it. Main thread only.
namespace plotix {

class ReadingPart;

/// A plotted property, as it is now. A value.
struct ReadLine {
    QString key;         ///< the property's; identifies its plot and its column of records
    QString name;        ///< for people
    QString unit;        ///< the current one, as the host names it
    QString unitSymbol;  ///< as it is written, such as "°C"; may be empty
    QColor color;        ///< of its line
    bool isShown = true;
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
    /// The properties that have a plot, in the order of the plots.
    virtual std::vector<ReadLine> lines() const = 0;

    /// The view of the graph, and the whole view of the trend; null while the trend is not on a screen.
    virtual CPTGraphHostingView* graphView() const = 0;
    virtual QWidget* rootView() const = 0;

    /// The dates of the date panel; nothing when one is absent.
    virtual std::optional<TimeSpan> dates() const = 0;
    /// What the records shown were asked for; nothing before the first, and where nobody asked.
    virtual std::optional<TimeSpan> readSpan() const = 0;
    /// Moves the graph to these times; the records stay as they are. Modifier keys mean nothing to it.
    virtual void showTimes(const TimeSpan& times) = 0;
    /// The same for the values of one of the graph's plot spaces.
    virtual void showValues(CPTXYPlotSpace& space, const CPTPlotRange& values) = 0;
    /// Whether ranges are set right now by the trend itself or its host, as while records are followed.
    virtual bool movesByItself() const = 0;
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

/// The line of this key; nothing when it has no plot.
std::optional<ReadLine> lineWithKey(const ReadTrend& trend, const QString& key);

}  // namespace plotix
