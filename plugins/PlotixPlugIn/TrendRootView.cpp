#include "plugins/PlotixPlugIn/TrendRootView.h"

void TrendRootView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit resized(event->oldSize(), event->size());
}
