#include "hostapp/window/GatheringToolbar.h"

#include <QtWidgets/QLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

namespace plotix {

GatheringToolbar::GatheringToolbar(const QString& title, QWidget* parent)
    : QToolBar(title, parent), m_button(new QToolButton(this))
{
    setMovable(false);
    setIconSize({20, 20});
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setContextMenuPolicy(Qt::PreventContextMenu);  // it cannot be hidden, so none is offered
    m_button->setObjectName(QStringLiteral("gatheringButton"));
    m_button->setText(tr("New Trend"));
    m_button->setToolTip(tr("Choose where the measurements of a new trend come from."));
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setPopupMode(QToolButton::InstantPopup);
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->setMenu(new QMenu(m_button));
    m_buttonAction = addWidget(m_button);
    removeAction(m_buttonAction);
}

void GatheringToolbar::setItems(const QList<QAction*>& items)
{
    for (QAction* old : m_items) {
        removeAction(old);
        m_button->menu()->removeAction(old);
        old->deleteLater();
    }
    m_items = items;
    for (QAction* item : m_items)
        item->setParent(this);
    if (!m_items.isEmpty())
        m_button->setIcon(m_items.first()->icon());
    spread();
    setVisible(!m_items.isEmpty());
    gatherIfNeeded();
}

void GatheringToolbar::spread()
{
    removeAction(m_buttonAction);
    m_gathered = false;
    m_spreadWidth = 0;
    const int gap = style()->pixelMetric(QStyle::PM_ToolBarItemSpacing, nullptr, this);
    for (QAction* item : m_items) {
        m_button->menu()->removeAction(item);
        addAction(item);
        QWidget* button = widgetForAction(item);
        button->setFocusPolicy(Qt::TabFocus);  // for those who use no mouse
        m_spreadWidth += button->sizeHint().width() + gap;
    }
}

void GatheringToolbar::gather()
{
    for (QAction* item : m_items) {
        removeAction(item);
        m_button->menu()->addAction(item);
    }
    addAction(m_buttonAction);
    m_buttonAction->setVisible(true);
    m_gathered = true;
}

void GatheringToolbar::resizeEvent(QResizeEvent* event)
{
    QToolBar::resizeEvent(event);
    gatherIfNeeded();
}

void GatheringToolbar::showEvent(QShowEvent* event)
{
    QToolBar::showEvent(event);
    gatherIfNeeded();
}

void GatheringToolbar::gatherIfNeeded()
{
    if (!isVisible())
        return;  // its width says nothing yet
    const QMargins margins = layout()->contentsMargins();
    const bool fits = m_items.size() < 2 || m_spreadWidth + margins.left() + margins.right() <= width();
    if (fits && m_gathered)
        spread();
    else if (!fits && !m_gathered)
        gather();
}

}  // namespace plotix
