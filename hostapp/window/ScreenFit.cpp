#include "hostapp/window/ScreenFit.h"

#include <QtCore/QEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <algorithm>

namespace plotix {

namespace {

constexpr int kThinBorder = 2;  // points; what a desktop draws left, right and below

/// What the desktop draws around the window. It is known only while the window is on the screen; before that it is
/// guessed to be a title bar and thin borders.
QMargins frameOf(const QWidget& window)
{
    const QRect inside = window.geometry();
    const QRect outside = window.frameGeometry();
    if (inside != outside)
        return {inside.left() - outside.left(), inside.top() - outside.top(), outside.right() - inside.right(),
                outside.bottom() - inside.bottom()};
    return {kThinBorder, window.style()->pixelMetric(QStyle::PM_TitleBarHeight), kThinBorder, kThinBorder};
}

bool isPlainWindow(const QWidget& widget)
{
    const Qt::WindowType type = widget.windowType();
    return widget.isWindow() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet) &&
           !widget.isMaximized() && !widget.isFullScreen();
}

void fit(QWidget& window)
{
    const QRect available = window.screen()->availableGeometry();
    const QMargins frame = frameOf(window);
    const QRect wanted = window.geometry().marginsAdded(frame);
    const QRect fitting = insideScreen(wanted, available);
    if (window.testAttribute(Qt::WA_Moved) && fitting != wanted)
        window.setGeometry(fitting.marginsRemoved(frame));
    else if (fitting.size() != wanted.size())
        window.resize(fitting.marginsRemoved(frame).size());  // the desktop places it
}

}  // namespace

QRect insideScreen(const QRect& frame, const QRect& available)
{
    QRect fitting(frame.topLeft(), frame.size().boundedTo(available.size()));
    fitting.moveLeft(std::max(available.left(), std::min(fitting.left(), available.right() + 1 - fitting.width())));
    fitting.moveTop(std::max(available.top(), std::min(fitting.top(), available.bottom() + 1 - fitting.height())));
    return fitting;
}

ScreenFit::ScreenFit()
{
    qApp->installEventFilter(this);
}

bool ScreenFit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && !event->spontaneous() && watched->isWidgetType())
        if (QWidget& widget = static_cast<QWidget&>(*watched); isPlainWindow(widget))
            fit(widget);
    return QObject::eventFilter(watched, event);
}

}  // namespace plotix
