#include "plugins/PlotixPlugIn/reading/ReadSpans.h"

#include <algorithm>

namespace plotix {

namespace {

CPTPlotRange rangeOf(const TimeSpan& span)
{
    return {span.from, span.to - span.from};
}

void put(QVariantMap& map, const QString& key, const std::optional<TimeSpan>& span)
{
    if (span)
        map.insert(key, QVariantList{span->from, span->to});
}

}  // namespace

void ReadSpans::graphBuilt(const CPTXYGraphPtr& graph)
{
    m_graph = graph;
    m_lastDrawn = drawnSpan();
    updateMarks();
}

std::optional<TimeSpan> ReadSpans::drawnSpan() const
{
    const CPTXYGraphPtr graph = m_graph.lock();
    if (!graph)
        return std::nullopt;
    const CPTPlotRange& range = graph->plotSpace().xRange();
    return TimeSpan{range.minLimit(), range.maxLimit()};
}

void ReadSpans::datesChosen()
{
    m_datesLead = true;
    m_knownDates = m_dates();
    updateMarks();
    emit spanMoved();
}

// Typing tells nothing until it pauses: until then the dates alone show that they are no longer those of the graph.
bool ReadSpans::areDatesEdited() const
{
    return m_knownDates && m_dates() != m_knownDates;
}

void ReadSpans::drawnSpanSet()
{
    const std::optional<TimeSpan> drawn = drawnSpan();
    m_knownDates = m_dates();
    if (drawn == m_lastDrawn)
        return;
    m_lastDrawn = drawn;
    m_datesLead = false;
    updateMarks();
    emit spanMoved();
}

void ReadSpans::recordsAsked(const TimeSpan& span)
{
    m_asked.push_back(span);
    if (m_dates() == span) {
        m_knownDates = span;
        m_datesLead = true;
    }
}

void ReadSpans::recordsAnswered(const TimeSpan& span)
{
    const auto found = std::find(m_asked.begin(), m_asked.end(), span);
    if (found != m_asked.end())
        m_asked.erase(found);
    updateMarks();
    emit spanMoved();
}

void ReadSpans::recordsShown(const TimeSpan& span, const std::optional<TimeSpan>& held)
{
    m_read = span;
    m_held = held;
    const CPTXYGraphPtr graph = m_graph.lock();
    // Without a plot there is no fit, and the graph would go on showing the axis of another time.
    const bool isUnfitted = graph && graph->allPlots().empty();
    if (graph && (m_isKept || (m_isMarked && isUnfitted)))
        graph->defaultPlotSpace()->setXRange(rangeOf(span));
    updateMarks();  // a graph that stands where it stood shows what was read all the same
}

void ReadSpans::setSpanMarked(bool marked)
{
    m_isMarked = marked;
    updateMarks();
}

void ReadSpans::setSpanKept(bool kept)
{
    m_isKept = kept;
}

QVariantMap ReadSpans::spans() const
{
    QVariantMap map;
    put(map, QStringLiteral("drawn"), drawnSpan());
    put(map, QStringLiteral("read"), m_read);
    put(map, QStringLiteral("held"), m_held);
    if (!m_asked.empty())
        put(map, QStringLiteral("asked"), m_asked.back());
    map.insert(QStringLiteral("datesLead"), m_datesLead || areDatesEdited());
    map.insert(QStringLiteral("datesEdited"), areDatesEdited());
    return map;
}

void ReadSpans::moveDatesToDrawn()
{
    // Proposed once more: a range that was cut moved no date, the same range as a proposal of its own does.
    if (const CPTXYGraphPtr graph = m_graph.lock())
        graph->defaultPlotSpace()->setXRange(CPTPlotRange(graph->plotSpace().xRange()));
    updateMarks();
}

void ReadSpans::updateMarks()
{
    const CPTXYGraphPtr graph = m_graph.lock();
    if (!graph)
        return;
    if (m_isMarked && !m_marks) {
        m_marks = std::make_shared<SpanMarks>();
        graph->addLayer(m_marks);
    } else if (!m_isMarked && m_marks) {
        graph->removeLayer(m_marks);
        m_marks.reset();
    }
    if (m_marks)
        m_marks->show(m_read, m_datesLead ? m_dates() : std::nullopt);
}

}  // namespace plotix
