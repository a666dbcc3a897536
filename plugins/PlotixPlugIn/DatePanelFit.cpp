#include "plugins/PlotixPlugIn/DatePanelFit.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

DatePanelFit::DatePanelFit(QWidget* panel, std::vector<QWidget*> labels, QPushButton* quickRange)
    : QObject(panel),
      m_panel(panel),
      m_labels(std::move(labels)),
      m_quickRange(quickRange),
      m_quickRangeText(quickRange->text())
{
    panel->installEventFilter(this);
}

bool DatePanelFit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panel && event->type() == QEvent::Resize)
        fit();
    return QObject::eventFilter(watched, event);
}

int DatePanelFit::comfortableWidth() const
{
    const QMargins margins = m_panel->layout()->contentsMargins();
    int width = margins.left() + margins.right() - m_panel->layout()->spacing();
    for (int index = 0; index < m_panel->layout()->count(); ++index) {
        const QWidget* widget = m_panel->layout()->itemAt(index)->widget();
        width += m_panel->layout()->spacing();
        if (widget)
            width += std::max(widget->minimumSizeHint().width(), widget->minimumWidth());
    }
    if (m_isNarrow)
        width += m_quickRange->fontMetrics().horizontalAdvance(m_quickRangeText);
    return width;
}

void DatePanelFit::fit()
{
    const bool narrow = m_panel->width() < comfortableWidth();
    if (narrow == m_isNarrow)
        return;
    m_isNarrow = narrow;
    for (QWidget* label : m_labels)
        label->setVisible(!narrow);
    m_quickRange->setText(narrow ? QString() : m_quickRangeText);
}
