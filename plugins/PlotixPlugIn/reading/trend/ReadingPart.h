#pragma once

#include "plotkit/model/CPTPlotRange.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadTrend.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtGui/QAction>

#include <functional>
#include <vector>

class QEvent;
class QKeyEvent;
class QMenu;

/// One thing that a trend can do for its readers beyond the contract, such as lanes or a value line.
///
/// It does nothing until something is chosen: a trend without choices looks, and is archived, as it always did. The
/// trend's reader *owns* the parts and tells each what happens; a part *borrows* the trend, which outlives it. What
/// was chosen is a map of plain values, so that archive, undo, command line and web all say it the same way. Main
/// thread only.
namespace plotix {

class TableFigures;

class ReadingPart : public QObject {
    Q_OBJECT
public:
    explicit ReadingPart(ReadTrend& trend) : m_trend(trend) {}
    ~ReadingPart() override;

    /// The name under which choices are archived and reached. Stored: never changes.
    virtual QString key() const = 0;
    /// What was chosen; empty when nothing was, and then nothing is archived.
    virtual QVariantMap chosen() const = 0;
    /// Takes these choices instead of the present ones; an empty map is none. Unknown names, and values of another
    /// kind, are passed over.
    virtual void choose(const QVariantMap& choices) = 0;

    /// Ranges that the user's hands move and that are no choices: undone with the trend's, never archived.
    virtual QVariantMap ranges() const { return {}; }
    virtual void setRanges(const QVariantMap& /*ranges*/) {}

    // What the trend view tells. A part that does not care does nothing.
    virtual void viewLoaded() {}
    virtual void graphBuilt() {}                            ///< a new graph, still without plots
    virtual void graphReleased() {}                         ///< the graph is there for the last time
    virtual void plotsReplaced() {}                         ///< by those of new records; the fit comes next
    virtual void fitted() {}                                ///< by the trend, to everything
    virtual void linesChanged() {}                          ///< some are hidden or shown, or have another colour
    virtual void rangeSet(CPTCoordinate /*coordinate*/) {}  ///< of the graph's default plot space
    virtual void restyled() {}                              ///< axes and frame of the graph have another look
    virtual void markedSpanSet() {}
    virtual void clockSet() {}  ///< times are said by another zone, or in another form
    /// These records were read and are shown next: `show` is to be called when this part has read what it shows beside
    /// them.
    virtual void readBeside(const SpanRecords& /*present*/, const std::function<void()>& show) { show(); }
    virtual void readingCancelled() {}  ///< by the user
    /// The spans of records that this part shows beside those of a span.
    virtual std::vector<TimeSpan> spansBeside(const TimeSpan& /*span*/) const { return {}; }
    /// A key pressed in the graph that the contract leaves free; answers whether it was meant for this part.
    virtual bool keyPressed(const QKeyEvent& /*event*/) { return false; }
    /// What the pointer does over the graph while the view shows it: mouse buttons and moves with and without one, the
    /// wheel, a wish for a tool tip, and leaving. Answers whether it was meant for this part: then neither the parts
    /// before it nor the view see it.
    virtual bool pointerActed(QEvent& /*event*/) { return false; }

    /// How far what it draws just above the plots reaches, in points: titles of pictures stand clear of it.
    virtual double heightAbovePlots() const { return 0; }

    /// What people can do with it: owned by the part, the same on every call. A host shows them in its menus, grouped
    /// by `menuOf`, and the graph in its own.
    virtual std::vector<QAction*> actions() const { return {}; }
    /// Adds what people can do with these lines, known by their properties' keys, to a menu of theirs.
    virtual void addLineItems(QMenu& /*menu*/, const QStringList& /*keys*/) {}
    /// The same for the menu of the table's rows, where those of lines are a menu within.
    virtual void addRowItems(QMenu& /*menu*/, const QStringList& /*keys*/) {}

    /// What this part adds to the statistics table; null for those that add nothing. Owned by the part.
    virtual TableFigures* tableFigures() { return nullptr; }

signals:
    /// Something was chosen, by hand or by program.
    void chosenChanged();

protected:
    ReadTrend& trend() const { return m_trend; }

private:
    ReadTrend& m_trend;
};

/// The title of the menu an action belongs to, translated; empty: it stands by itself.
QString menuOf(const QAction& action);
void setMenuOf(QAction& action, const QString& title);

/// The bundle's text for a key; mark the key with QT_TRANSLATE_NOOP("Plotix", …).
QString localizedText(const char* key);

}  // namespace plotix
