#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>

class QWidget;

namespace plotix {

/// `frame` made no larger than `available` and moved inside it, as little as possible. Pure; any thread.
QRect insideScreen(const QRect& frame, const QRect& available);

/// Keeps every window and dialog of the program inside its screen when it appears: a size stored on a larger screen,
/// or a usual one on a small or much magnified screen, would put its edges, and its buttons, out of reach.
///
/// While it lives it looks at windows just before they are shown; what is maximised or full screen is left alone.
/// Main thread only.
class ScreenFit : public QObject {
    Q_OBJECT
public:
    ScreenFit();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace plotix
