#pragma once

#include <QtGui/QResizeEvent>
#include <QtWidgets/QWidget>

/// The trend view's root view. It reports its resizes, since its parts are placed by geometry and not by a layout.
///
/// A layout would undo the details panel's animation at the next resize. The plug-in *owns* it. Main thread only.
class TrendRootView : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

signals:
    /// Sent after every resize; the old size is the one before it, also for the first resize.
    void resized(const QSize& oldSize, const QSize& newSize);

protected:
    void resizeEvent(QResizeEvent* event) override;
};
