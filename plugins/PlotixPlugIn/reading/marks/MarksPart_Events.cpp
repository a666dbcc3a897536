// Pointer, keys and actions of the marks.
//
// Rules of this file:
//  1. Only a press on a flag is taken from the graph, with the moves and the release that follow it.
//  2. Every key has an action. The shortcuts of the actions are shown in menus only: the keys count in the focused
//     graph, where keyPressed() gets them.

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/marks/MarksWindow.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

namespace plotix {

namespace {

constexpr double kReach = 3;  // points: a record so near to a dragged flag takes it

}  // namespace

QAction* MarksPart::addAction(const char* text, const QKeySequence& keys, std::function<void()> act)
{
    auto* action = new QAction(localizedText(text), this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "Mar&ks")));
    connect(action, &QAction::triggered, this, std::move(act));
    m_actions.push_back(action);
    return action;
}

void MarksPart::makeActions()
{
    m_onGraph = {
        addAction(QT_TRANSLATE_NOOP("Plotix", "Set Mark &A Here"), Qt::Key_A, [this] { setMarkHere(Mark::A); }),
        addAction(QT_TRANSLATE_NOOP("Plotix", "Set Mark &B Here"), Qt::Key_B, [this] { setMarkHere(Mark::B); }),
        addAction(QT_TRANSLATE_NOOP("Plotix", "&Marks and Differences…"), Qt::Key_D, [this] { showWindow(); })};
    m_onOne = {addAction(QT_TRANSLATE_NOOP("Plotix", "Move Mark to &Next Record"), Qt::CTRL | Qt::Key_Period,
                         [this] { moveMark(Move::Record, 1); }),
               addAction(QT_TRANSLATE_NOOP("Plotix", "Move Mark to &Previous Record"), Qt::CTRL | Qt::Key_Comma,
                         [this] { moveMark(Move::Record, -1); }),
               addAction(QT_TRANSLATE_NOOP("Plotix", "&Remove Marks"), Qt::Key_X, [this] { removeMarks(); })};
    m_onBoth = {addAction(QT_TRANSLATE_NOOP("Plotix", "&Fit to Marks"), Qt::Key_F, [this] { fitToMarks(); }),
                addAction(QT_TRANSLATE_NOOP("Plotix", "&Dates from Marks"), {}, [this] { datesFromMarks(); }),
                addAction(QT_TRANSLATE_NOOP("Plotix", "&Copy Range"), {}, [this] { copyRange(); })};
}

void MarksPart::updateActions()
{
    const bool hasGraph = trend().graph() && trend().graphView();
    for (QAction* action : m_onGraph)
        action->setEnabled(hasGraph);
    for (QAction* action : m_onOne)
        action->setEnabled(hasGraph && (m_marks.a || m_marks.b));
    for (QAction* action : m_onBoth)
        action->setEnabled(hasGraph && m_marks.areBoth());
}

// Without the value line, which our host turns on, the keys belong to nobody: then a trend is as it always was.
bool MarksPart::keyPressed(const QKeyEvent& event)
{
    const ReadingPart* line = trend().part(QStringLiteral("valueLine"));
    const bool isWanted = m_marks.a || m_marks.b || (line && line->chosen().value(QStringLiteral("shown")).toBool());
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (!isWanted || !shownGeometry(trend()))
        return false;
    if (modifiers & Qt::ControlModifier) {
        const bool isLater = event.key() == Qt::Key_Period || event.key() == Qt::Key_Colon;
        const bool isEarlier = event.key() == Qt::Key_Comma || event.key() == Qt::Key_Semicolon;
        if ((!isLater && !isEarlier) || (!m_marks.a && !m_marks.b))
            return false;
        moveMark(modifiers & Qt::ShiftModifier ? Move::Pixel : Move::Record, isLater ? 1 : -1);
        return true;
    }
    if (modifiers != Qt::NoModifier)
        return false;
    for (QAction* action : m_actions)
        if (action->isEnabled() && action->shortcut() == QKeySequence(event.key())) {
            action->trigger();
            return true;
        }
    return false;
}

bool MarksPart::pointerActed(QEvent& event)
{
    const auto mouse = [&event] { return static_cast<QMouseEvent*>(&event); };
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        if (mouse()->button() == Qt::LeftButton && pressed(mouse()->position()))
            return true;
        break;
    case QEvent::MouseMove:
        if (m_dragged) {
            dragTo(mouse()->position());
            return true;
        }
        hover(mouse()->position());
        break;
    case QEvent::MouseButtonRelease:
        if (m_dragged) {
            m_dragged.reset();
            hover(mouse()->position());
            return true;
        }
        break;
    default: break;
    }
    return false;
}

bool MarksPart::pressed(const QPointF& point)
{
    const auto where = shownGeometry(trend());
    m_dragged = where ? flagAt(*where, m_marks, m_current, point) : std::nullopt;
    if (m_dragged)
        setMark(*m_dragged, *m_dragged == Mark::A ? m_marks.a : m_marks.b);
    return m_dragged.has_value();
}

void MarksPart::dragTo(const QPointF& point)
{
    const auto where = shownGeometry(trend());
    if (!where || !m_dragged)
        return;
    const auto times = where->xMappingOf(where->graph.plotSpace());
    const double time =
        plotkit::valueForCoordinate(times, std::clamp(point.x(), where->plotArea.left(), where->plotArea.right()));
    setMark(*m_dragged, timeOfRecordNear(m_lines.shown(), time, kReach * plotkit::valuePerUnit(times)));
}

void MarksPart::hover(const QPointF& point)
{
    CPTGraphHostingView* view = trend().graphView();
    const auto where = m_marks.a || m_marks.b ? shownGeometry(trend()) : std::nullopt;
    const bool isOverFlag = where && flagAt(*where, m_marks, m_current, point);
    if (!view || isOverFlag == m_showsGrip)
        return;
    m_showsGrip = isOverFlag;
    if (isOverFlag)
        view->setCursor(Qt::SizeHorCursor);
    else
        view->unsetCursor();
}

void MarksPart::showWindow()
{
    if (!m_window)
        m_window = new MarksWindow(*this, trend().rootView());
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

}  // namespace plotix
