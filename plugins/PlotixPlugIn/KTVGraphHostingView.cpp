#include "plugins/PlotixPlugIn/KTVGraphHostingView.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

KTVGraphHostingView::KTVGraphHostingView(QWidget* parent) : CPTGraphHostingView(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void KTVGraphHostingView::keyPressEvent(QKeyEvent* event)
{
    const QString characters = event->text();
    if (characters.isEmpty() || characters.front() != QLatin1Char('r')) {
        CPTGraphHostingView::keyPressEvent(event);
        return;
    }
    event->accept();
    if (m_keyDelegate)
        m_keyDelegate->refreshPlot();
}

void KTVGraphHostingView::mouseReleaseEvent(QMouseEvent* event)
{
    CPTGraphHostingView::mouseReleaseEvent(event);
}
