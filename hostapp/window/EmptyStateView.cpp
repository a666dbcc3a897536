#include "hostapp/window/EmptyStateView.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

EmptyStateView::EmptyStateView(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_text(new QLabel(this)), m_buttons(new QHBoxLayout)
{
    QFont titleFont = font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    m_title->setFont(titleFont);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setTextFormat(Qt::PlainText);  // it may be a trend's
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(320);
    m_text->setMaximumWidth(460);
    m_text->setForegroundRole(QPalette::PlaceholderText);
    m_buttons->setSpacing(10);
    auto* row = new QHBoxLayout;  // an alignment in the column would reckon with lines as wide as the window
    row->addStretch(1);
    row->addWidget(m_text);
    row->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(14);
    column->addStretch(2);
    column->addWidget(m_title);
    column->addLayout(row);
    column->addLayout(m_buttons);
    column->addStretch(3);
}

void EmptyStateView::show(const QString& title, const QString& text, const QStringList& buttons)
{
    m_title->setText(title);
    m_text->setText(text);
    while (QLayoutItem* item = m_buttons->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_buttons->addStretch();
    for (int number = 0; number < buttons.size(); ++number) {
        auto* button = new QPushButton(buttons[number], this);
        button->setMinimumWidth(130);
        connect(button, &QPushButton::clicked, this, [this, number] { emit pressed(number); });
        m_buttons->addWidget(button);
    }
    m_buttons->addStretch();
    QWidget::show();
}

}  // namespace plotix
