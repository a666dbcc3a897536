#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <map>
#include <optional>

class QWidget;

/// The modifier keys of the current event: those of the mouse, wheel, key or touch event that is being handled.
///
/// A menu may hold keys for the gestures of one window. Between events (records have arrived, a timer has fired)
/// nothing a menu holds counts, and the keys are those of the last event the program received; a program that is not in
/// front knows of none. What another program's windows receive never counts. Made once, on the main thread, inside the
/// QApplication, whose events it watches; main thread only.
namespace plotix {

class CurrentInput : public QObject {
    Q_OBJECT
public:
    CurrentInput();

    Qt::KeyboardModifiers modifiers() const;

    /// Keys that count as held in every event of `window`, until changed. *Weak*: they end with the window.
    void hold(QWidget* window, Qt::KeyboardModifiers modifiers);
    Qt::KeyboardModifiers held(const QWidget* window) const;

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct Handled {
        QPointer<QWidget> window;
        Qt::KeyboardModifiers modifiers;
    };
    std::optional<Handled> m_handled;  // empty between events
    std::map<const QWidget*, Qt::KeyboardModifiers> m_held;
};

}  // namespace plotix
