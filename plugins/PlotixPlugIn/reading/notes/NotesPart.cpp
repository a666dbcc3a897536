#include "plugins/PlotixPlugIn/reading/notes/NotesPart.h"

#include "plotkit/widget/CPTGraphHostingView.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace plotix {

namespace {

const QString kShown = QStringLiteral("shown");  // stored: never change

}  // namespace

NotesPart::NotesPart(ReadTrend& trend) : ReadingPart(trend)
{
    makeActions();
    updateActions();
}

NotesPart::~NotesPart() = default;

QVariantMap NotesPart::chosen() const
{
    return m_isShown ? QVariantMap() : QVariantMap{{kShown, false}};
}

void NotesPart::choose(const QVariantMap& choices)
{
    const QVariant shown = choices.value(kShown);
    setShown(shown.metaType() != QMetaType::fromType<bool>() || shown.toBool());
}

void NotesPart::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    refresh();
    emit chosenChanged();
}

// A trend off the screen has no view, but a graph.
void NotesPart::listen()
{
    KTVAnnotations* annotations = trend().annotations();
    if (annotations == m_annotations)
        return;
    m_annotations = annotations;
    connect(annotations, &KTVAnnotations::changed, this, &NotesPart::refresh);
}

void NotesPart::viewLoaded()
{
    listen();
    updateActions();
}

void NotesPart::graphBuilt()
{
    listen();
    refresh();
}

std::vector<NumberedNote> NotesPart::notes() const
{
    const KTVAnnotations* annotations = trend().annotations();
    return annotations ? numberedNotes(annotations->notes(), trend().propertyNames()) : std::vector<NumberedNote>();
}

QVariantList NotesPart::footnotes() const
{
    QVariantList footnotes;
    if (!m_isShown)
        return footnotes;
    std::optional<TimeSpan> shown = trend().dates();
    if (const CPTXYGraphPtr graph = trend().graph()) {
        const CPTPlotRange& range = graph->plotSpace().xRange();
        shown = TimeSpan{range.minLimit(), range.maxLimit()};
    }
    for (const NumberedNote& note : notesIn(notes(), shown))
        footnotes << footnoteOf(note, trend().clock());
    return footnotes;
}

void NotesPart::refresh()
{
    updateActions();
    const std::vector<NumberedNote> all = notes();
    if (!m_isShown || all.empty())
        return m_layer.remove();
    attach();
    if (m_layer)
        m_layer->show(all, m_current);
}

// The layer takes room from the plots, so it is there only while there are notes.
void NotesPart::attach()
{
    const CPTXYGraphPtr graph = trend().graph();
    // The readout of the value line must stay readable over the flags.
    if (graph &&
        m_layer.put(graph, PartLayer<NotesLayer>::Place::Beneath, [] { return std::make_shared<NotesLayer>(); }))
        m_layer->show(notes(), m_current);
}

std::optional<double> NotesPart::standing() const
{
    const ReadingPart* line = trend().part(QStringLiteral("valueLine"));
    const QVariant time = line ? line->property("time") : QVariant();
    if (time.isValid())
        return time.toDouble();
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return std::nullopt;
    const CPTPlotRange& range = graph->plotSpace().xRange();
    return range.location + range.length / 2;
}

void NotesPart::addHere()
{
    if (const auto time = standing(); time && m_annotations)
        m_annotations->addNote(*time, *time, {});
}

void NotesPart::addMarked()
{
    if (const auto span = trend().markedSpan(); span && m_annotations)
        m_annotations->addNote(span->from, span->to, {});
}

// From where the value line stands, so that notes are found between whatever else is looked at.
void NotesPart::goToNext(int direction)
{
    const std::vector<NumberedNote> all = notes();
    const auto here = standing();
    if (!here)
        return;
    const NumberedNote* next = nullptr;
    for (const NumberedNote& each : all) {
        const bool isBeyond = direction > 0 ? each.note.from > *here : each.note.from < *here;
        const bool isNearer =
            !next || (direction > 0 ? each.note.from < next->note.from : each.note.from >= next->note.from);
        if (isBeyond && isNearer)
            next = &each;
    }
    if (next)
        makeCurrent(*next);
}

void NotesPart::makeCurrent(const NumberedNote& note)
{
    m_current = note.note.identifier;
    if (const CPTXYGraphPtr graph = trend().graph()) {
        const CPTPlotRange range = graph->plotSpace().xRange();
        if (note.note.from < range.minLimit() || note.note.from > range.maxLimit())
            trend().showTimes({note.note.from - range.length / 2, note.note.from + range.length / 2});
    }
    if (ReadingPart* line = trend().part(QStringLiteral("valueLine"))) {
        QVariantMap choices = line->chosen();
        choices.insert(QStringLiteral("held"), note.note.from);
        line->choose(choices);
    }
    refresh();
    if (CPTGraphHostingView* view = trend().graphView())
        view->setAccessibleDescription(spokenText({note}, trend().clock()));
    const auto where = shownGeometry(trend());
    if (!where || !m_layer)
        return;
    for (const NoteFlag& flag : m_layer->flags(*where))
        if (std::any_of(flag.notes.begin(), flag.notes.end(),
                        [&](const NumberedNote& each) { return each.note.identifier == m_current; }))
            tell(flag);
}

void NotesPart::openCurrent()
{
    if (m_annotations && m_current != 0)
        m_annotations->openNote(m_current);
}

}  // namespace plotix
