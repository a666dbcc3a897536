// Pointer, keys and actions of the notes.
//
// Rules of this file:
//  1. Only a press on a flag is taken from the graph, with its release and its double click.
//  2. Every key has an action. The shortcuts of the actions are shown in menus only: the keys count in the focused
//     graph, where keyPressed() gets them.

#include "plotkit/widget/CPTGraphHostingView.h"
#include "plugins/PlotixPlugIn/reading/notes/NotesPart.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QToolTip>

#include <algorithm>

namespace plotix {

QAction* NotesPart::addAction(const char* text, const QKeySequence& keys, std::function<void()> act)
{
    auto* action = new QAction(localizedText(text), this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "L&imits and Notes")));
    connect(action, &QAction::triggered, this, std::move(act));
    m_actions.push_back(action);
    return action;
}

void NotesPart::makeActions()
{
    m_showAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Show &Notes"), {}, [this] { setShown(!m_isShown); });
    m_showAction->setCheckable(true);
    m_addAction = addAction(QT_TRANSLATE_NOOP("Plotix", "&Add Note Here…"), Qt::Key_I, [this] { addHere(); });
    m_addMarkedAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Add Note from A to &B…"), Qt::Key_I | Qt::SHIFT,
                                  [this] { addMarked(); });
    m_goActions = {
        addAction(QT_TRANSLATE_NOOP("Plotix", "N&ext Note"), Qt::Key_H, [this] { goToNext(1); }),
        addAction(QT_TRANSLATE_NOOP("Plotix", "&Previous Note"), Qt::Key_H | Qt::SHIFT, [this] { goToNext(-1); })};
    m_listAction = addAction(QT_TRANSLATE_NOOP("Plotix", "Lis&t of Notes…"), {}, [this] {
        if (m_annotations)
            m_annotations->showNotes();
    });
}

void NotesPart::updateActions()
{
    const bool canEdit = m_annotations && m_annotations->canEdit() && trend().graph();
    m_showAction->setChecked(m_isShown);
    m_showAction->setEnabled(m_annotations);
    m_addAction->setEnabled(canEdit);
    m_addMarkedAction->setEnabled(canEdit && trend().markedSpan());
    m_listAction->setEnabled(m_annotations);
    for (QAction* action : m_goActions)
        action->setEnabled(trend().graph() && m_annotations);
}

// Without a host that keeps notes the keys belong to nobody: then a trend is as it always was.
bool NotesPart::keyPressed(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool withShift = modifiers == Qt::ShiftModifier;
    if (!m_annotations || !shownGeometry(trend()) || (modifiers != Qt::NoModifier && !withShift))
        return false;
    if ((event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) && m_current != 0) {
        openCurrent();
        return true;
    }
    const QKeySequence pressed(
        QKeyCombination(withShift ? Qt::ShiftModifier : Qt::NoModifier, static_cast<Qt::Key>(event.key())));
    for (QAction* action : m_actions)
        if (action->isEnabled() && !action->shortcut().isEmpty() && action->shortcut() == pressed) {
            action->trigger();
            return true;
        }
    return false;
}

bool NotesPart::pointerActed(QEvent& event)
{
    if (!m_annotations)
        return false;
    const auto mouse = [&event] { return static_cast<QMouseEvent*>(&event); };
    switch (event.type()) {
    case QEvent::MouseMove: hover(mouse()->position()); break;
    case QEvent::ToolTip: {
        auto* help = static_cast<QHelpEvent*>(&event);
        if (!flagAt(help->pos()))
            break;
        return true;  // its text is shown already
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        if (mouse()->button() == Qt::LeftButton && flagAt(mouse()->position()))
            return true;
        break;
    case QEvent::MouseButtonDblClick:
        if (const NoteFlag* flag = flagAt(mouse()->position())) {
            m_current = flag->notes.front().note.identifier;
            refresh();
            openCurrent();
            return true;
        }
        break;
    default: break;
    }
    return false;
}

const NoteFlag* NotesPart::flagAt(const QPointF& point)
{
    const auto where = m_layer ? shownGeometry(trend()) : std::nullopt;
    const bool isAbovePlots = where && point.y() < where->plotArea.top();  // most moves of the pointer are not
    m_flags = isAbovePlots ? m_layer->flags(*where) : std::vector<NoteFlag>();
    const auto found =
        std::find_if(m_flags.begin(), m_flags.end(), [&](const NoteFlag& flag) { return flag.place.contains(point); });
    return found == m_flags.end() ? nullptr : &*found;
}

void NotesPart::hover(const QPointF& point)
{
    CPTGraphHostingView* view = trend().graphView();
    const NoteFlag* flag = flagAt(point);
    if (!view || (flag != nullptr) == m_isOverFlag)
        return;
    m_isOverFlag = flag != nullptr;
    if (flag) {
        view->setCursor(Qt::PointingHandCursor);
        tell(*flag);
    } else {
        view->unsetCursor();
        QToolTip::hideText();
    }
}

void NotesPart::tell(const NoteFlag& flag)
{
    CPTGraphHostingView* view = trend().graphView();
    if (!view || !view->isVisible())
        return;
    const QString text = spokenText(flag.notes, trend().clock()).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QToolTip::showText(view->mapToGlobal(flag.place.bottomLeft().toPoint()), QStringLiteral("<p>%1</p>").arg(text),
                       view);
}

}  // namespace plotix
