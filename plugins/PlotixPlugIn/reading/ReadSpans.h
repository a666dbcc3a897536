#pragma once

#include "base/KeyedCoder.h"
#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/reading/SpanMarks.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <functional>
#include <optional>
#include <vector>

/// What a trend can do for its readers beyond the contract: one object that the trend view *owns* and tells what
/// happens, and that a host reaches by name. Nothing of it shows unless the host asks for it.
///
/// A trend has three spans. The *dates* are those of the date panel. The *drawn* span is the graph's x range. The
/// *read* span is what the records shown were asked for. They differ after a date was chosen (drawn is behind) and
/// after a pan (read is behind). Spans are seconds since 1970-01-01 UTC, from and to. Main thread only.
namespace plotix {

class ReadSpans : public QObject {
    Q_OBJECT
public:
    using Dates = std::function<std::optional<TimeSpan>()>;

    explicit ReadSpans(Dates dates) : m_dates(std::move(dates)) {}

    // What the trend view tells.
    void graphBuilt(const CPTXYGraphPtr& graph);
    void datesChosen();  ///< by the user; not those that follow the graph
    void drawnSpanSet();
    void recordsAsked(const TimeSpan& span);
    void recordsAnswered(const TimeSpan& span);  ///< well or not; every one that was asked, once
    /// The records of this span are plotted now. `held` runs from the first to the last of them; nothing: there are
    /// none.
    void recordsShown(const TimeSpan& span, const std::optional<TimeSpan>& held);

    const std::optional<TimeSpan>& readSpan() const { return m_read; }

    // What a host asks for. Everything is off at first.

    /// Whether the graph shows where it is behind, and an answer without records moves it all the same.
    Q_INVOKABLE void setSpanMarked(bool marked);
    /// Whether a refresh leaves the dates as they were asked for, instead of those of the first and the last record.
    Q_INVOKABLE void setSpanKept(bool kept);
    /// "drawn", "read", "held" and "asked", lists of two numbers, each missing when there is none; "asked" is the
    /// latest span whose answer is still to come. "datesLead": the dates were changed after the graph was last moved;
    /// "datesEdited": and whoever changes them has not paused yet.
    Q_INVOKABLE QVariantMap spans() const;
    /// Moves the dates to the drawn span, which they do not follow where it was cut.
    Q_INVOKABLE void moveDatesToDrawn();

signals:
    void spanMoved();  ///< one of the spans has changed, for whatever reason

private:
    std::optional<TimeSpan> drawnSpan() const;
    bool areDatesEdited() const;
    void updateMarks();

    Dates m_dates;
    std::weak_ptr<CPTXYGraph> m_graph;
    std::shared_ptr<SpanMarks> m_marks;
    std::vector<TimeSpan> m_asked;
    std::optional<TimeSpan> m_read, m_held, m_lastDrawn;
    std::optional<TimeSpan> m_knownDates;  // when the graph was last moved, or the dates were last chosen
    bool m_isMarked = false;
    bool m_isKept = false;
    bool m_datesLead = true;
};

}  // namespace plotix
