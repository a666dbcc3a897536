#include "hostapp/window/CurrentInput.h"

#include <QtGui/QInputEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace plotix {

CurrentInput::CurrentInput()
{
    if (qApp)
        qApp->installEventFilter(this);
}

bool CurrentInput::eventFilter(QObject* receiver, QEvent* event)
{
    switch (event->type()) {
    // These come from the event loop alone, never from within the handling of another event: that one is over. The main
    // queue's tasks come as user events.
    case QEvent::Timer:
    case QEvent::MetaCall:
    case QEvent::User: m_handled.reset(); break;
    case QEvent::ShortcutOverride:  // a command's key is no gesture
        m_handled = Handled{nullptr, static_cast<QInputEvent*>(event)->modifiers()};
        break;
    default:
        if (event->isInputEvent() && receiver->isWidgetType())
            m_handled =
                Handled{static_cast<QWidget*>(receiver)->window(), static_cast<QInputEvent*>(event)->modifiers()};
    }
    return false;
}

Qt::KeyboardModifiers CurrentInput::modifiers() const
{
    if (m_handled)
        return m_handled->modifiers | held(m_handled->window);
    return QGuiApplication::applicationState() == Qt::ApplicationActive ? QGuiApplication::keyboardModifiers()
                                                                        : Qt::NoModifier;
}

void CurrentInput::hold(QWidget* window, Qt::KeyboardModifiers modifiers)
{
    if (!m_held.contains(window))
        connect(window, &QObject::destroyed, this, [this, window] { m_held.erase(window); });
    m_held[window] = modifiers;
}

Qt::KeyboardModifiers CurrentInput::held(const QWidget* window) const
{
    const auto found = m_held.find(window);
    return found == m_held.end() ? Qt::KeyboardModifiers(Qt::NoModifier) : found->second;
}

}  // namespace plotix
